#include "platform/linux/desktop/InstalledEntries.h"

#include "platform/linux/system/WholeFile.h"

#include <algorithm>
#include <set>
#include <string>
#include <system_error>

namespace quorvane::platform {
namespace {

namespace fs = std::filesystem;

/// "kde/org.kde.kate.desktop" is "kde-org.kde.kate".
std::string idOfFile(fs::path relative) {
    auto id = relative.replace_extension().generic_string();
    std::replace(id.begin(), id.end(), '/', '-');
    return id;
}

/// Adds what lies below one directory; `seen` are the ids that count no more.
void read(const fs::path& applications, std::set<std::string>& seen, InstalledEntries& found) {
    constexpr int deepest = 3;  // a symbolic link may lead back up
    constexpr auto options =
        fs::directory_options::follow_directory_symlink | fs::directory_options::skip_permission_denied;
    const auto locales = desktopEntryLocales();
    std::error_code error;
    auto files = fs::recursive_directory_iterator(applications, options, error);
    for (; !error && files != fs::recursive_directory_iterator(); files.increment(error)) {
        const auto& path = files->path();
        if (std::error_code ignored; files->is_directory(ignored)) {
            if (files.depth() >= deepest) files.disable_recursion_pending();
            found.directories.push_back(path);
        } else if (path.extension() == ".desktop") {
            auto id = idOfFile(path.lexically_relative(applications));
            if (!seen.insert(id).second) continue;
            auto entry = parseDesktopEntry(wholeFile(path).value_or(""), locales);
            if (!entry) continue;
            entry->id = std::move(id);
            found.entries.push_back(*std::move(entry));
        }
    }
}

}  // namespace

InstalledEntries installedEntries(const std::vector<fs::path>& dataDirectories) {
    InstalledEntries found;
    std::set<std::string> seen;
    for (const auto& data : dataDirectories) {
        const auto applications = data / "applications";
        if (std::error_code error; fs::is_directory(applications, error)) {
            found.directories.push_back(applications);
            read(applications, seen, found);
        } else {
            found.directories.push_back(data);  // until the directory appears
        }
    }
    // Directory order is arbitrary; where several entries would match, the answer must not be.
    std::sort(found.entries.begin(), found.entries.end(), [](const auto& a, const auto& b) { return a.id < b.id; });
    return found;
}

}  // namespace quorvane::platform
