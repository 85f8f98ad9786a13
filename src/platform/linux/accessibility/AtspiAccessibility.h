#pragma once

#include "platform/Accessibility.h"
#include "platform/linux/accessibility/AccessibilityBus.h"

namespace quorvane::platform {

/// The accessibility tree of the Linux desktops, asked over D-Bus (AT-SPI). It subscribes to nothing, so that nothing
/// happens between questions. A handle is the application's name on the bus and the element's path: ":1.7/org/...".
///
/// `AXFocusedWindow` is the active window, `AXMainWindow` the first that shows. `AXURL` and `AXDocument` of a window
/// lead straight to the page or document that it shows, in 1 to 3 ms; a window of private browsing tells neither.
class AtspiAccessibility final : public Accessibility {
public:
    [[nodiscard]] bool isProcessTrusted() override;

    /// Switches accessibility on for the session and starts its bus if need be. Programs that run already may have to
    /// be started again.
    bool requestTrust() override;

    [[nodiscard]] std::optional<AccessibleElement> application(std::int64_t processIdentifier) override;
    [[nodiscard]] std::optional<AccessibleValue> attribute(const AccessibleElement& element,
                                                           std::string_view name) override;
    [[nodiscard]] Channel channel() override;

private:
    AccessibilityBus bus_;
};

}  // namespace quorvane::platform
