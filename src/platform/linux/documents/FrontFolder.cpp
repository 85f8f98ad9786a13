#include "platform/linux/documents/FrontFolder.h"

#include "platform/linux/documents/DocumentTitle.h"
#include "platform/linux/documents/OpenFiles.h"
#include "platform/linux/process/Proc.h"
#include "platform/linux/system/XdgPaths.h"

#include <QDBusArgument>
#include <QMap>
#include <QStandardPaths>
#include <QUrl>
#include <algorithm>

namespace quorvane::platform {
namespace {

namespace fs = std::filesystem;
using FoldersByWindow = QMap<QString, QStringList>;

constexpr int mostFolders = 256;

fs::path folderOf(const QString& uri) {
    const auto path = QUrl(uri).toLocalFile();
    return path.size() > 1 && path.endsWith(u'/') ? path.chopped(1).toStdString() : path.toStdString();
}

fs::path folderNamed(std::string_view name, const std::vector<fs::path>& folders) {
    for (const auto& folder : folders)
        if (!name.empty() && folder.filename().native() == name && OpenFiles::isFolder(folder)) return folder;
    return {};
}

/// Which key is the window's is not known here, so the window in front is the one whose folder the title names. With
/// one folder in all there is no doubt, whatever the title calls it, if it is the window's process that publishes it.
fs::path publishedFolder(SessionBusQuestions& bus, pid_t pid, const std::string& name) {
    const auto service = QStringLiteral("org.freedesktop.FileManager1");
    if (pid > 0 && bus.processOf(service) != pid) return {};
    const auto published = bus.property(service, QStringLiteral("/org/freedesktop/FileManager1"), service,
                                        QStringLiteral("OpenWindowsWithLocations"));
    if (published.typeId() != qMetaTypeId<QDBusArgument>()) return {};
    const auto argument = published.value<QDBusArgument>();
    if (argument.currentSignature() != u"a{sas}") return {};
    std::vector<fs::path> folders;
    for (const auto& tabs : qdbus_cast<FoldersByWindow>(argument))
        for (const auto& uri : tabs.first(std::min<qsizetype>(tabs.size(), mostFolders)))
            if (auto folder = folderOf(uri); OpenFiles::isFolder(folder)) folders.push_back(std::move(folder));
    if (pid > 0 && folders.size() == 1) return folders.front();
    return folderNamed(name, folders);
}

std::vector<fs::path> knownFolders() {
    const auto home = XdgPaths::home();
    std::vector<fs::path> folders{home};
    for (const auto location :
         {QStandardPaths::DesktopLocation, QStandardPaths::DocumentsLocation, QStandardPaths::DownloadLocation,
          QStandardPaths::MusicLocation, QStandardPaths::PicturesLocation, QStandardPaths::MoviesLocation})
        folders.emplace_back(QStandardPaths::writableLocation(location).toStdString());
    return folders;
}

/// The title's first part, with which the window is named after its folder: "Downloads - Thunar", "Downloads".
std::string folderNameIn(std::string_view title, const std::vector<std::string>& applicationNames) {
    auto name = DocumentTitle::documentName(title, applicationNames);
    return name.empty() ? std::string(title) : name;
}

}  // namespace

fs::path frontFolder(SessionBusQuestions& bus, pid_t pid, std::string_view title,
                     const std::vector<std::string>& applicationNames) {
    auto home = XdgPaths::home();
    const auto name = folderNameIn(title, applicationNames);
    if (auto folder = publishedFolder(bus, pid, name); !folder.empty()) return folder;
    for (const auto& path : DocumentTitle::paths(title, home.native()))
        if (OpenFiles::isFolder(path)) return path;
    for (const auto& folders : {Proc::openPaths(pid), OpenFiles::arguments(pid), knownFolders()})
        if (auto folder = folderNamed(name, folders); !folder.empty()) return folder;
    if (name == "Home") return home;
    if (name == "File System") return "/";
    const auto belowHome = home / name;
    const bool isOnePart = !name.empty() && !name.starts_with('.') && name.find('/') == std::string::npos;
    return isOnePart && OpenFiles::isFolder(belowHome) ? belowHome : fs::path();
}

}  // namespace quorvane::platform
