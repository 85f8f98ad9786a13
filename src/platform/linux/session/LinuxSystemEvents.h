#pragma once

#include "platform/SystemEvents.h"
#include "platform/linux/bus/SessionEvents.h"
#include "platform/linux/x11/X11ScreenEvents.h"

namespace quorvane::platform {

/// What the buses tell of the session, and dark screens from the X server. What is missing of these is missing, and
/// nothing else.
class LinuxSystemEvents final : public SystemEvents {
public:
    LinuxSystemEvents(SessionEvents& session, X11Connection& x11);
    LinuxSystemEvents(const LinuxSystemEvents&) = delete;
    LinuxSystemEvents& operator=(const LinuxSystemEvents&) = delete;

    Subscription observe(SystemEvent event, std::function<void()> happened) override;

    void noteInput() override { session_.noteInput(); }

    /// Three: sleep and wake, lock and unlock, screens asleep.
    [[nodiscard]] std::vector<Channel> channels() const override;

private:
    SessionEvents& session_;
    Signal<> screensSlept_;
    Signal<> screensWoke_;
    X11ScreenEvents screens_;
};

}  // namespace quorvane::platform
