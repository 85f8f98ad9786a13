#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane::platform {

/// Which bundle identifier stands for which desktop-file id or window class. It is read from JSON: an object whose keys
/// are bundle identifiers and whose values are lists of those names. Case does not matter in the names. Under the key
/// "documents" an object of the same form says which applications work on documents as a well-known one does, or show
/// pages, without being it: they are asked for their document or page in its way.
class IdentityTable {
public:
    /// The table that comes with the program: resources/identities.json.
    [[nodiscard]] static IdentityTable builtIn();

    /// Adds a table; where both know a name, the added one counts. What is wrong with it, in one line, is returned, and
    /// then nothing is added.
    std::optional<std::string> extend(std::string_view json);

    [[nodiscard]] std::optional<std::string> bundleIdentifier(std::string_view name) const;

    /// The names, in lower case, that stand for this bundle identifier or for one with which it begins: a program of a
    /// suite is known by the suite's names too.
    [[nodiscard]] std::vector<std::string> names(std::string_view bundleIdentifier) const;

    /// The well-known application in whose way the one with this bundle identifier is asked for its document or page;
    /// none for itself.
    [[nodiscard]] std::optional<std::string> documentModel(std::string_view bundleIdentifier) const;

private:
    using Names = std::map<std::string, std::string, std::less<>>;  ///< bundle identifiers by name in lower case

    Names bundleIdentifiers_;
    Names documentModels_;
};

}  // namespace quorvane::platform
