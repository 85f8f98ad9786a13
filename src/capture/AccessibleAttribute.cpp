#include "capture/AccessibleAttribute.h"

#include <utility>

namespace quorvane::AccessibleAttribute {
namespace {

using platform::AccessibleElement;

constexpr std::size_t longestText = 65'536;  // bytes: no title or address is longer, but a whole document may come

template <class Kind>
std::optional<Kind> read(platform::Accessibility& accessibility, const AccessibleElement& element,
                         std::string_view name) {
    auto value = accessibility.attribute(element, name);
    auto* const expected = value ? std::get_if<Kind>(&*value) : nullptr;
    return expected ? std::optional(std::move(*expected)) : std::nullopt;
}

}  // namespace

std::optional<std::string> text(platform::Accessibility& accessibility, const AccessibleElement& element,
                                std::string_view name) {
    auto value = read<platform::AccessibleText>(accessibility, element, name);
    return value && value->text.size() <= longestText ? std::optional(std::move(value->text)) : std::nullopt;
}

std::optional<AccessibleElement> element(platform::Accessibility& accessibility, const AccessibleElement& element,
                                         std::string_view name) {
    return read<AccessibleElement>(accessibility, element, name);
}

std::vector<AccessibleElement> elements(platform::Accessibility& accessibility, const AccessibleElement& element,
                                        std::string_view name) {
    return read<std::vector<AccessibleElement>>(accessibility, element, name)
        .value_or(std::vector<AccessibleElement>());
}

}  // namespace quorvane::AccessibleAttribute
