#include "capture/AccessibilityWindowHelper.h"

#include "capture/AccessibleAttribute.h"

namespace quorvane::AccessibilityWindowHelper {
namespace {

using platform::AccessibleElement;
using platform::AccessibleName::windowRole;

/// Steps from the focused element to its parents; windows seldom nest that deep, and a tree may have a circle.
constexpr int maximumSteps = 8;

/// The element itself or the nearest one around it that is a window.
std::optional<AccessibleElement> windowAround(platform::Accessibility& accessibility, AccessibleElement element) {
    for (int steps = 0;; ++steps) {
        if (AccessibleAttribute::text(accessibility, element, platform::AccessibleName::role) == windowRole)
            return element;
        if (steps == maximumSteps) return std::nullopt;
        auto parent = AccessibleAttribute::element(accessibility, element, platform::AccessibleName::parent);
        if (!parent) return std::nullopt;
        element = std::move(*parent);
    }
}

}  // namespace

std::optional<AccessibleElement> focusedWindow(platform::Accessibility& accessibility, std::int64_t processId) {
    const auto application = accessibility.application(processId);
    if (!application) return std::nullopt;
    for (const auto name : {platform::AccessibleName::focusedWindow, platform::AccessibleName::mainWindow}) {
        if (auto window = AccessibleAttribute::element(accessibility, *application, name)) return window;
    }
    const auto windows = AccessibleAttribute::elements(accessibility, *application, platform::AccessibleName::windows);
    if (!windows.empty()) return windows.front();
    auto focused = AccessibleAttribute::element(accessibility, *application, platform::AccessibleName::focusedElement);
    return focused ? windowAround(accessibility, std::move(*focused)) : std::nullopt;
}

}  // namespace quorvane::AccessibilityWindowHelper
