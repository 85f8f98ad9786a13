#include "platform/linux/desktop/IdentityTable.h"

#include "base/Json.h"
#include "base/Text.h"

#include <cassert>

namespace quorvane::platform {

extern const char* const identitiesJson;  // generated from resources/identities.json

namespace {

using Names = std::map<std::string, std::string, std::less<>>;

constexpr const char* documentsKey = "documents";
constexpr const char* notAnObject = "it is not an object with bundle identifiers as keys";

/// Adds the names of one bundle identifier; what is wrong with them comes back.
std::optional<std::string> readNames(const std::string& bundleIdentifier, const Json& names, Names& added) {
    if (!names.is_array()) return "the value of \"" + bundleIdentifier + "\" is not a list of names";
    for (const auto& name : names) {
        if (!name.is_string()) return "the list of \"" + bundleIdentifier + "\" has an entry that is not a text";
        added.insert_or_assign(text::lowercased(name.get<std::string>()), bundleIdentifier);
    }
    return std::nullopt;
}

std::optional<std::string> readAll(const Json& object, Names& added) {
    if (!object.is_object()) return std::string("the value of \"") + documentsKey + "\" is not an object";
    for (const auto& [bundleIdentifier, names] : object.items())
        if (auto problem = readNames(bundleIdentifier, names, added)) return problem;
    return std::nullopt;
}

std::optional<std::string> valueAt(const Names& names, std::string_view name) {
    const auto found = names.find(text::lowercased(name));
    return found == names.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace

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
    if (!parsed->is_object()) return notAnObject;
    Names identifiers;
    Names models;
    for (const auto& [key, value] : parsed->items()) {
        auto problem = key == documentsKey ? readAll(value, models) : readNames(key, value, identifiers);
        if (problem) return problem;
    }
    identifiers.merge(bundleIdentifiers_);
    bundleIdentifiers_ = std::move(identifiers);
    models.merge(documentModels_);
    documentModels_ = std::move(models);
    return std::nullopt;
}

std::optional<std::string> IdentityTable::bundleIdentifier(std::string_view name) const {
    return valueAt(bundleIdentifiers_, name);
}

std::vector<std::string> IdentityTable::names(std::string_view bundleIdentifier) const {
    std::vector<std::string> names;
    for (const auto& [name, identifier] : bundleIdentifiers_)
        if (bundleIdentifier == identifier || bundleIdentifier.starts_with(identifier + ".")) names.push_back(name);
    return names;
}

std::optional<std::string> IdentityTable::documentModel(std::string_view bundleIdentifier) const {
    return valueAt(documentModels_, bundleIdentifier);
}

}  // namespace quorvane::platform
