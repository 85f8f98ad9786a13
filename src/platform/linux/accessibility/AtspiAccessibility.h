#pragma once

#include "platform/Accessibility.h"
#include "platform/linux/accessibility/AccessibilityBus.h"
#include "platform/linux/accessibility/AtspiFrontWindow.h"

#include <functional>
#include <memory>
#include <mutex>

namespace quorvane::platform {

/// The accessibility tree of the Linux desktops, asked over D-Bus (AT-SPI). It subscribes to nothing, so that nothing
/// happens between questions. A handle is the application's name on the bus and the element's path: ":1.7/org/...".
///
/// `AXFocusedWindow` is the active window, `AXMainWindow` the first that shows. Of the application in front both are
/// the window with the title that the desktop tells of, as far as somebody says which that is. `AXURL` and `AXDocument`
/// of a window lead straight to the page or document that it shows, in 1 to 3 ms; a window of private browsing tells
/// neither.
class AtspiAccessibility final : public Accessibility {
public:
    [[nodiscard]] bool isProcessTrusted() override;

    /// Switches accessibility on for the session and starts its bus if need be. Programs that run already may have to
    /// be started again.
    bool requestTrust() override;

    /// For the process 0 it is the application of the window in front, where nobody tells its process either.
    [[nodiscard]] std::optional<AccessibleElement> application(std::int64_t processIdentifier) override;
    [[nodiscard]] std::optional<AccessibleValue> attribute(const AccessibleElement& element,
                                                           std::string_view name) override;
    [[nodiscard]] Channel channel() override;

    /// Which window is in front, from now on; nobody says it if it is empty. From any thread, and called on any.
    using Front = std::function<std::optional<FrontWindow>()>;
    void setFront(Front front);

private:
    [[nodiscard]] std::optional<FrontWindow> frontWindow();

    std::mutex mutex_;  ///< guards `front_`
    std::shared_ptr<const Front> front_;
    AccessibilityBus bus_;
};

}  // namespace quorvane::platform
