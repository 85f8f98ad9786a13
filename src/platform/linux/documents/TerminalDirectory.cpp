#include "platform/linux/documents/TerminalDirectory.h"

#include "base/Text.h"
#include "platform/linux/documents/DocumentTitle.h"
#include "platform/linux/documents/OpenFiles.h"
#include "platform/linux/process/Proc.h"
#include "platform/linux/system/XdgPaths.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <sys/stat.h>
#include <utility>
#include <vector>

namespace quorvane::platform {
namespace {

namespace fs = std::filesystem;

struct Tab {
    fs::path directory;
    std::pair<std::int64_t, std::int64_t> lastRead;  ///< seconds and nanoseconds

    /// 2: the title names its whole path, 1: its last part.
    [[nodiscard]] int agreement(std::string_view title) const {
        const auto& path = directory.native();
        const auto home = XdgPaths::home().native();
        const bool isBelowHome = home.size() > 1 && path.starts_with(home + "/");
        if (DocumentTitle::names(title, path)) return 2;
        if (isBelowHome && DocumentTitle::names(title, std::string("~").append(path, home.size()))) return 2;
        if (path == home && DocumentTitle::names(title, "~")) return 1;
        return DocumentTitle::names(title, directory.filename().native()) ? 1 : 0;
    }
};

/// The kernel notes this only every 8 s, so it is not more than a tie-break.
std::pair<std::int64_t, std::int64_t> lastReadFrom(unsigned terminal) {
    const auto number = Proc::pseudoTerminal(terminal);
    struct stat status {};
    if (!number || stat(("/dev/pts/" + std::to_string(*number)).c_str(), &status) != 0) return {};
    return {status.st_atim.tv_sec, status.st_atim.tv_nsec};
}

fs::path directoryInTitle(std::string_view title) {
    const auto colon = title.rfind(':');
    if (colon != std::string_view::npos) title.remove_prefix(colon + 1);
    for (const auto& path : DocumentTitle::paths(text::trimmed(title), XdgPaths::home().native()))
        if (OpenFiles::isFolder(path)) return path;
    return {};
}

}  // namespace

fs::path terminalDirectory(pid_t pid, std::string_view title) {
    if (pid <= 0) return directoryInTitle(title);
    std::vector<Tab> tabs;
    for (const auto child : Proc::children(pid)) {
        const auto shell = Proc::status(child);
        if (!shell || shell->session != child || shell->terminal == 0 || shell->state == 'Z') continue;
        // What another user's program does, as with sudo, is hidden from us; the shell's own directory is not.
        auto directory = shell->foreground > 0 ? Proc::workingDirectory(shell->foreground) : fs::path();
        if (directory.empty()) directory = Proc::workingDirectory(child);
        if (!directory.empty())
            tabs.push_back({.directory = std::move(directory), .lastRead = lastReadFrom(shell->terminal)});
    }
    const auto best = std::max_element(tabs.begin(), tabs.end(), [&](const Tab& a, const Tab& b) {
        return std::pair(a.agreement(title), a.lastRead) < std::pair(b.agreement(title), b.lastRead);
    });
    return best != tabs.end() ? best->directory : fs::path();
}

}  // namespace quorvane::platform
