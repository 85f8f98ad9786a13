#include "platform/linux/system/XdgPaths.h"

#include "base/Environment.h"
#include "base/Text.h"

#include <array>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quorvane::platform::XdgPaths {
namespace {

using std::filesystem::path;

constexpr const char* folderName = "quorvane";

path absolutePathIn(const char* variable) {
    const auto value = environment(variable);
    return value.starts_with('/') ? path(value) : path();
}

path pathIn(const char* variable, const char* belowHome) {
    const auto set = absolutePathIn(variable);
    return set.empty() ? home() / belowHome : set;
}

}  // namespace

path home() {
    if (auto set = absolutePathIn("HOME"); !set.empty()) return set;
    passwd entry{};
    passwd* found = nullptr;
    std::array<char, 4096> buffer{};
    if (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) == 0 && found && found->pw_dir)
        return found->pw_dir;
    return "/";
}

path dataHome() {
    return pathIn("XDG_DATA_HOME", ".local/share");
}
path configHome() {
    return pathIn("XDG_CONFIG_HOME", ".config");
}
path stateHome() {
    return pathIn("XDG_STATE_HOME", ".local/state");
}

std::vector<path> dataDirectories() {
    std::vector<path> directories{dataHome()};
    const auto set = environment("XDG_DATA_DIRS");
    for (const auto& directory : text::split(set.empty() ? "/usr/local/share:/usr/share" : set, ':'))
        if (directory.starts_with('/')) directories.emplace_back(directory);
    return directories;
}

path applicationData() {
    return dataHome() / folderName;
}
path applicationConfig() {
    return configHome() / folderName;
}
path applicationState() {
    return stateHome() / folderName;
}

bool createPrivately(const path& directory) {
    std::error_code error;
    if (std::filesystem::is_directory(directory, error)) return true;
    if (directory.has_parent_path() && directory.parent_path() != directory &&
        !createPrivately(directory.parent_path()))
        return false;
    return mkdir(directory.c_str(), 0700) == 0 || std::filesystem::is_directory(directory, error);
}

}  // namespace quorvane::platform::XdgPaths
