#pragma once

#include "platform/ForegroundSource.h"
#include "platform/RunLoop.h"
#include "platform/linux/bus/SessionEvents.h"
#include "platform/linux/desktop/ApplicationIdentity.h"
#include "platform/linux/x11/X11Connection.h"

#include <memory>

namespace quorvane::platform {

/// The window that the window manager says has the focus (_NET_ACTIVE_WINDOW), and its application.
///
/// A change is looked at 30 ms after it, at the latest 60 ms after the first of several, since window managers pass
/// through "none" and other windows on their way. An activation is reported when the application is another one than
/// before, when it returns after no window had the focus, and when the session is unlocked. A window that is gone or
/// hidden does not have the focus, whatever the window manager left behind.
class X11ForegroundSource final : public ForegroundSource {
public:
    X11ForegroundSource(RunLoop& runLoop, X11Connection& x11, const ApplicationIdentity& identity,
                        SessionEvents& sessionEvents);

    [[nodiscard]] std::optional<ForegroundApplication> frontmostApplication() override;
    [[nodiscard]] std::optional<std::string> frontmostWindowTitle() override;
    Subscription observeActivation(std::function<void(const std::optional<ForegroundApplication>&)> activated) override;
    Subscription observeVacancy(std::function<void()> vacated) override;
    [[nodiscard]] Channel channel() const override;

    [[nodiscard]] Channel titleChannel() const;

    /// The same of a connection that nobody watches.
    [[nodiscard]] static Channel channelOf(X11Connection& x11);

private:
    [[nodiscard]] std::optional<WindowProperties> frontWindow();
    void notePropertyChange(const xcb_property_notify_event_t& notify);
    void noteChange();
    void evaluate(bool mayLookAgain);

    RunLoop& runLoop_;
    X11Connection& x11_;
    const ApplicationIdentity& identity_;
    SessionEvents& sessionEvents_;
    Signal<const std::optional<ForegroundApplication>&> activated_;
    Signal<> vacated_;
    /// Known to run and to say which window is active, so that nobody asks again at each tick; none where nobody knows.
    mutable xcb_window_t windowManager_ = XCB_WINDOW_NONE;
    std::optional<ForegroundApplication> lastActivated_;
    std::optional<Date> firstChange_;  ///< of those not evaluated yet
    std::unique_ptr<WorkItem> evaluation_;
    Subscription events_;
    std::vector<Subscription> reach_;
};

}  // namespace quorvane::platform
