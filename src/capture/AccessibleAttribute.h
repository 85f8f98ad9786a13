#pragma once

#include "platform/Accessibility.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Attributes of elements, read as what the reader expects. What is of another kind counts as missing.
namespace quorvane::AccessibleAttribute {

/// A text or a URL; it may be empty. None if there is no such attribute, or if it is longer than 64 KiB.
[[nodiscard]] std::optional<std::string> text(platform::Accessibility& accessibility,
                                              const platform::AccessibleElement& element, std::string_view name);

[[nodiscard]] std::optional<platform::AccessibleElement>
element(platform::Accessibility& accessibility, const platform::AccessibleElement& element, std::string_view name);

/// Empty if there is no such attribute.
[[nodiscard]] std::vector<platform::AccessibleElement>
elements(platform::Accessibility& accessibility, const platform::AccessibleElement& element, std::string_view name);

}  // namespace quorvane::AccessibleAttribute
