#pragma once

#include "platform/RunLoop.h"
#include "platform/SystemEvents.h"

#include <memory>

namespace quorvane::platform {

/// What the buses tell of the session: sleep and the session in front from logind, lock from logind and the screen
/// savers. What is missing of these is missing, and nothing else.
class SessionEvents {
public:
    /// Asks the buses how things stand, for less than a second even if nobody there answers.
    explicit SessionEvents(RunLoop& runLoop);
    SessionEvents(const SessionEvents&) = delete;
    SessionEvents& operator=(const SessionEvents&) = delete;
    ~SessionEvents();

    /// As `SystemEvents` does. No bus tells of dark screens.
    Subscription observe(SystemEvent event, std::function<void()> happened);

    void noteInput();

    /// Two: sleep and wake, lock and unlock.
    [[nodiscard]] std::vector<Channel> channels() const;

    /// Is the session locked, or another one in front of it? Nobody works here then.
    [[nodiscard]] bool isOutOfReach() const;

    /// Calls `changed` with that after each event that can change it.
    [[nodiscard]] std::vector<Subscription> observeReach(const std::function<void(bool isOutOfReach)>& changed);

private:
    struct Sources;
    std::unique_ptr<Sources> sources_;
};

}  // namespace quorvane::platform
