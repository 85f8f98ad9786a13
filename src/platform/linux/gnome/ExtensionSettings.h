#pragma once

#include "platform/linux/loop/Deadline.h"

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

/// Which extensions of GNOME Shell are to be on, in the user's settings. The program gsettings reads and writes them,
/// so that this holds without a shell, too. From any thread.
namespace quorvane::platform::ExtensionSettings {

/// The items of a list of texts as gsettings prints it, with the quotes around each: `['a', "it's"]`. None if it isn't
/// one.
[[nodiscard]] std::optional<std::vector<std::string>> items(std::string_view list);

/// The settings can't be read or written; `what()` says in one line why.
class Error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Is this one to be on? And are extensions on at all? Throws `Error`, as the rest does.
[[nodiscard]] bool isEnabled(const std::string& uuid, const Deadline& deadline);
[[nodiscard]] bool areOn(const Deadline& deadline);

/// Has it on from now on, or off and out of the lists.
void enable(const std::string& uuid, const Deadline& deadline);
void forget(const std::string& uuid, const Deadline& deadline);

}  // namespace quorvane::platform::ExtensionSettings
