#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace quorvane::platform {

/// Which bundle identifier stands for which desktop-file id or window class. It is read from JSON: an object whose keys
/// are bundle identifiers and whose values are lists of those names. Case does not matter in the names.
class IdentityTable {
public:
    /// The table that comes with the program: resources/identities.json.
    [[nodiscard]] static IdentityTable builtIn();

    /// Adds a table; where both know a name, the added one counts. What is wrong with it, in one line, is returned, and
    /// then nothing is added.
    std::optional<std::string> extend(std::string_view json);

    [[nodiscard]] std::optional<std::string> bundleIdentifier(std::string_view name) const;

private:
    std::map<std::string, std::string, std::less<>> bundleIdentifiers_;  ///< by name in lower case
};

}  // namespace quorvane::platform
