#include "platform/linux/documents/RecentDocuments.h"

#include "platform/linux/documents/DocumentTitle.h"
#include "platform/linux/documents/OpenFiles.h"
#include "platform/linux/system/WholeFile.h"
#include "platform/linux/system/XdgPaths.h"

#include <QByteArray>
#include <QFileInfo>
#include <QUrl>
#include <QXmlStreamReader>
#include <algorithm>

namespace quorvane::platform::RecentDocuments {
namespace {

constexpr std::size_t mostBytes = std::size_t{8} << 20;

struct Bookmark {
    QString path;
    QString name;
    QString modified;  ///< UTC in one form, so that text order is time order
};

bool isOneOf(const std::vector<std::string>& programs, const QString& command) {
    const auto text = command.toStdString();
    return std::any_of(programs.begin(), programs.end(),
                       [&](const auto& program) { return DocumentTitle::names(text, program); });
}

}  // namespace

std::vector<std::string> namedByTitle(std::string_view xbel, std::string_view title,
                                      const std::vector<std::string>& programs) {
    std::vector<Bookmark> found;
    QXmlStreamReader xml(QByteArray::fromRawData(xbel.data(), static_cast<qsizetype>(xbel.size())));
    xml.setNamespaceProcessing(false);
    Bookmark bookmark;
    bool isNamed = false;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement) continue;
        const auto attributes = xml.attributes();
        if (xml.name() == u"bookmark") {
            bookmark = {.path = QUrl(attributes.value(QLatin1String("href")).toString()).toLocalFile()};
            bookmark.name = QFileInfo(bookmark.path).fileName();
            isNamed = DocumentTitle::names(title, bookmark.name.toStdString());
        } else if (isNamed && xml.qualifiedName() == u"bookmark:application" &&
                   isOneOf(programs, attributes.value(QLatin1String("exec")).toString())) {
            bookmark.modified = attributes.value(QLatin1String("modified")).toString();
            found.push_back(bookmark);
        }
    }
    std::stable_sort(found.begin(), found.end(), [](const Bookmark& a, const Bookmark& b) {
        return a.name.size() != b.name.size() ? a.name.size() > b.name.size() : a.modified > b.modified;
    });
    std::vector<std::string> paths;
    paths.reserve(found.size());
    for (const auto& each : found)
        paths.push_back(each.path.toStdString());
    return paths;
}

std::filesystem::path fileNamedByTitle(std::string_view title, const std::vector<std::string>& programs) {
    const auto xbel = beginningOfFile(XdgPaths::dataHome() / "recently-used.xbel", mostBytes);
    // Most programs do not take part; for those the list need not be read in earnest.
    const auto occurs = [&](const std::string& program) { return xbel->find(program) != std::string::npos; };
    if (!xbel || std::none_of(programs.begin(), programs.end(), occurs)) return {};
    for (const auto& path : namedByTitle(*xbel, title, programs))
        if (OpenFiles::isFile(path)) return path;
    return {};
}

}  // namespace quorvane::platform::RecentDocuments
