#pragma once

#include "platform/RunningApplications.h"
#include "platform/linux/ApplicationIdentity.h"
#include "platform/linux/LinuxSystemEvents.h"
#include "platform/linux/X11Connection.h"

#include <atomic>
#include <memory>
#include <mutex>

namespace quorvane::platform {

/// The applications whose windows the window manager lists, over a connection of its own. Made and destroyed on the
/// main thread. While the session is locked the login window is in front, without a process and a title.
class X11RunningApplications final : public RunningApplications {
public:
    X11RunningApplications(const ApplicationIdentity& identity, LinuxSystemEvents& systemEvents);

    [[nodiscard]] std::optional<RunningApplication> frontmost() override;
    [[nodiscard]] bool isRunning(const std::string& bundleIdentifier) override;

    /// A process that waits for its parent to notice its end has ended. No process 0 ever does.
    [[nodiscard]] bool isTerminated(std::int64_t processIdentifier) override;

private:
    const ApplicationIdentity& identity_;
    std::atomic<bool> isLocked_;
    std::mutex mutex_;  ///< guards `x11_`
    std::unique_ptr<X11Connection> x11_;
    Subscription locked_;
    Subscription unlocked_;
};

}  // namespace quorvane::platform
