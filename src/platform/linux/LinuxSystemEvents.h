#pragma once

#include "platform/RunLoop.h"
#include "platform/SystemEvents.h"
#include "platform/linux/X11Connection.h"

#include <memory>

namespace quorvane::platform {

/// Sleep and the session in front from logind, lock from logind and the screen savers, dark screens from the X server.
/// What is missing of these is missing, and nothing else.
class LinuxSystemEvents final : public SystemEvents {
public:
    /// Asks the buses how things stand, for less than a second even if nobody there answers.
    LinuxSystemEvents(RunLoop& runLoop, X11Connection& x11);
    LinuxSystemEvents(const LinuxSystemEvents&) = delete;
    LinuxSystemEvents& operator=(const LinuxSystemEvents&) = delete;
    ~LinuxSystemEvents() override;

    Subscription observe(SystemEvent event, std::function<void()> happened) override;

    void noteInput() override;

    /// Three: sleep and wake, lock and unlock, screens asleep.
    [[nodiscard]] std::vector<Channel> channels() const override;

    /// Is the session locked, or another one in front of it? Nobody works here then.
    [[nodiscard]] bool isOutOfReach() const;

    /// Calls `changed` with that after each event that can change it.
    [[nodiscard]] std::vector<Subscription> observeReach(const std::function<void(bool isOutOfReach)>& changed);

private:
    struct Sources;
    std::unique_ptr<Sources> sources_;
};

}  // namespace quorvane::platform
