#pragma once

#include <filesystem>
#include <vector>

/// Where this user's files belong: the XDG variables, else their defaults below the home directory. A relative path in
/// a variable counts as unset. Read from the environment at each call; nothing is created.
namespace quorvane::platform::XdgPaths {

/// HOME, else what the user database says, else "/".
[[nodiscard]] std::filesystem::path home();

[[nodiscard]] std::filesystem::path dataHome();    ///< "~/.local/share"
[[nodiscard]] std::filesystem::path configHome();  ///< "~/.config"
[[nodiscard]] std::filesystem::path stateHome();   ///< "~/.local/state"

/// `dataHome()` and then the directories of the system, the more important first.
[[nodiscard]] std::vector<std::filesystem::path> dataDirectories();

[[nodiscard]] std::filesystem::path applicationData();    ///< the store and what belongs to it
[[nodiscard]] std::filesystem::path applicationConfig();  ///< user defaults and tables that the user writes
[[nodiscard]] std::filesystem::path applicationState();   ///< what may get lost: spools, captures

/// The directory and its missing parents, private to the user (0700) where they are made here. False if it can't be.
bool createPrivately(const std::filesystem::path& directory);

}  // namespace quorvane::platform::XdgPaths
