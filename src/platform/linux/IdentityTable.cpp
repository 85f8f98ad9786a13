#include "platform/linux/IdentityTable.h"

#include "base/Json.h"
#include "base/Text.h"

#include <cassert>

namespace quorvane::platform {

extern const char* const identitiesJson;  // generated from resources/identities.json

IdentityTable IdentityTable::builtIn() {
    IdentityTable table;
    [[maybe_unused]] const auto problem = table.extend(identitiesJson);
    assert(!problem);
    return table;
}

std::optional<std::string> IdentityTable::extend(std::string_view json) {
    std::string error;
    const auto parsed = parseJson(json, &error);
    if (!parsed) return error;
    if (!parsed->is_object()) return "it is not an object with bundle identifiers as keys";
    std::map<std::string, std::string, std::less<>> added;
    for (const auto& [bundleIdentifier, names] : parsed->items()) {
        if (!names.is_array()) return "the value of \"" + bundleIdentifier + "\" is not a list of names";
        for (const auto& name : names) {
            if (!name.is_string()) return "the list of \"" + bundleIdentifier + "\" has an entry that is not a text";
            added.insert_or_assign(text::lowercased(name.get<std::string>()), bundleIdentifier);
        }
    }
    added.merge(bundleIdentifiers_);
    bundleIdentifiers_ = std::move(added);
    return std::nullopt;
}

std::optional<std::string> IdentityTable::bundleIdentifier(std::string_view name) const {
    const auto found = bundleIdentifiers_.find(text::lowercased(name));
    if (found == bundleIdentifiers_.end()) return std::nullopt;
    return found->second;
}

}  // namespace quorvane::platform
