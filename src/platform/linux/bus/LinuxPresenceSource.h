#pragma once

#include "platform/PresenceSource.h"
#include "platform/RunningApplications.h"
#include "platform/linux/desktop/ApplicationIdentity.h"

namespace quorvane::platform {

/// Asks who holds off the idleness of the desktop (logind, the session manager, the power manager), and whether the
/// application in front plays something (MPRIS). The portal can't be asked; it passes on what it is told to one of
/// these.
class LinuxPresenceSource final : public PresenceSource {
public:
    LinuxPresenceSource(RunningApplications& applications, const ApplicationIdentity& identity)
        : applications_(applications), identity_(identity) {}

    [[nodiscard]] std::optional<std::string> quietPresence() override;
    [[nodiscard]] Channel channel() override;

private:
    RunningApplications& applications_;
    const ApplicationIdentity& identity_;
};

}  // namespace quorvane::platform
