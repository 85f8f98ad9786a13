#pragma once

#include "platform/linux/accessibility/AtspiConnection.h"

#include <chrono>
#include <memory>
#include <mutex>
#include <string>

namespace quorvane::platform {

/// The way to the accessibility bus, and the session's switch for accessibility (org.a11y.Bus). The connection is made
/// when it is first needed, and again when the bus has been restarted. From any thread.
class AccessibilityBus {
public:
    /// Null where there is no bus. A failure is remembered for 2 s.
    [[nodiscard]] std::shared_ptr<AtspiConnection> connection(const Deadline& deadline);

    /// Is there a bus, and is accessibility switched on? The answer is up to 5 s old.
    [[nodiscard]] bool isEnabled(const Deadline& deadline);

    /// Switches it on, starting the bus if need be; whether it is on now.
    bool enable(const Deadline& deadline);

    /// Why there is no bus, or that the switch is off; empty when all is well. Asks anew.
    struct Problem {
        std::string reason;
        std::string remedy;
    };
    [[nodiscard]] Problem problem(const Deadline& deadline);

private:
    using Clock = std::chrono::steady_clock;

    void noteEnabled(bool isEnabled);

    std::mutex mutex_;  ///< guards what follows; not held while the bus is asked
    std::shared_ptr<AtspiConnection> connection_;
    Clock::time_point nextAttempt_{};
    bool isEnabled_ = false;
    Clock::time_point isEnabledUntil_{};
};

}  // namespace quorvane::platform
