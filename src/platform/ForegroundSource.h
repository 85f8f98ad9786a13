#pragma once

#include "base/Signal.h"
#include "platform/Channel.h"

#include <functional>
#include <optional>
#include <string>

namespace quorvane::platform {

/// An application as the desktop names it.
struct ForegroundApplication {
    std::optional<std::string> bundleIdentifier;  ///< see resources/identities.json for what stands for what here
    std::optional<std::string> localizedName;
    friend bool operator==(const ForegroundApplication&, const ForegroundApplication&) = default;
};

/// Which application has the user's attention. While the session is known to be locked the answer is the login window,
/// "com.apple.loginwindow". Main thread only.
class ForegroundSource {
public:
    virtual ~ForegroundSource() = default;

    /// The application whose window has the focus now; none if no window has it or nobody can tell.
    [[nodiscard]] virtual std::optional<ForegroundApplication> frontmostApplication() = 0;

    /// Title of the window that has the focus; none without a window or a title.
    [[nodiscard]] virtual std::optional<std::string> frontmostWindowTitle() = 0;

    /// Calls `activated` whenever another application comes to the front; with no application when the desktop's
    /// message could not be understood.
    virtual Subscription
    observeActivation(std::function<void(const std::optional<ForegroundApplication>&)> activated) = 0;

    /// Calls `vacated` when the window that had the focus went or lost it, and no other took it. Desktops on which some
    /// application is always in front never do.
    virtual Subscription observeVacancy(std::function<void()> vacated) = 0;

    [[nodiscard]] virtual Channel channel() const = 0;
};

/// The identifier under which the login window or a screen locker counts as the frontmost application.
inline constexpr const char* loginWindowBundleId = "com.apple.loginwindow";

}  // namespace quorvane::platform
