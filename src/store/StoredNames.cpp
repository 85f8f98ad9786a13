#include "store/StoredNames.h"

#include "base/Text.h"

#include <algorithm>
#include <span>

namespace quorvane::StoredNames {
namespace {

std::string shownName(std::span<const Name> names, std::string_view stored, const Localization& localization) {
    const auto found = std::ranges::find(names, stored, &Name::stored);
    return found == names.end() ? std::string(stored) : localization.text(found->shown);
}

std::string storedName(std::span<const Name> names, std::string_view typed, const Localization& localization) {
    const std::string wanted = text::folded(typed);
    const auto found = std::ranges::find_if(
        names, [&](const Name& name) { return text::folded(localization.text(name.shown)) == wanted; });
    return std::string(found == names.end() ? typed : found->stored);
}

}  // namespace

std::string shownCategory(std::string_view stored, const Localization& localization) {
    return shownName(categories, stored, localization);
}

std::string shownTag(std::string_view stored, const Localization& localization) {
    return shownName(tags, stored, localization);
}

std::string shownApp(std::string_view stored, const Localization& localization) {
    return stored == unknownApp ? localization.text("unknown_app") : std::string(stored);
}

std::string storedCategory(std::string_view typed, const Localization& localization) {
    return storedName(categories, typed, localization);
}

std::string storedTag(std::string_view typed, const Localization& localization) {
    return storedName(tags, typed, localization);
}

}  // namespace quorvane::StoredNames
