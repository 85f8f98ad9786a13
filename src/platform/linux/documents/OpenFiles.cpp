#include "platform/linux/documents/OpenFiles.h"

#include "platform/linux/documents/DocumentTitle.h"
#include "platform/linux/process/Proc.h"

#include <QString>
#include <QUrl>
#include <algorithm>
#include <system_error>
#include <unistd.h>

namespace quorvane::platform::OpenFiles {
namespace {

namespace fs = std::filesystem;

fs::path longestNamed(std::vector<fs::path> paths, std::string_view title) {
    std::stable_sort(paths.begin(), paths.end(), [](const auto& a, const auto& b) {
        return a.filename().native().size() > b.filename().native().size();
    });
    for (const auto& path : paths)
        if (DocumentTitle::names(title, path.filename().native()) && isFile(path)) return path;
    return {};
}

}  // namespace

bool isFile(const fs::path& path) {
    std::error_code error;
    return fs::is_regular_file(path, error);
}

bool isFolder(const fs::path& path) {
    std::error_code error;
    return fs::is_directory(path, error);
}

fs::path namedByTitle(pid_t pid, std::string_view title) {
    return longestNamed(Proc::openPaths(pid), title);
}

std::vector<fs::path> arguments(pid_t pid) {
    const auto directory = Proc::workingDirectory(pid);
    std::vector<fs::path> paths;
    auto parts = Proc::arguments(pid);
    for (std::size_t i = 1; i < parts.size(); ++i) {
        if (parts[i].empty() || parts[i].starts_with('-')) continue;
        fs::path path = parts[i];
        if (parts[i].starts_with("file://")) path = QUrl(QString::fromStdString(parts[i])).toLocalFile().toStdString();
        path = (directory / path).lexically_normal();
        std::error_code error;
        if (path.is_absolute() && fs::exists(path, error)) paths.push_back(std::move(path));
    }
    return paths;
}

fs::path argument(pid_t pid, std::string_view title, bool titleTellsName) {
    auto files = arguments(pid);
    std::erase_if(files, [](const auto& path) { return !isFile(path); });
    if (auto named = longestNamed(files, title); !named.empty() || titleTellsName) return named;
    // The script that an interpreter runs is no document.
    std::erase_if(files, [](const auto& path) { return access(path.c_str(), X_OK) == 0; });
    return files.size() == 1 ? files.front() : fs::path();
}

}  // namespace quorvane::platform::OpenFiles
