#pragma once

#include "platform/ForegroundSource.h"
#include "platform/linux/DesktopEntries.h"
#include "platform/linux/IdentityTable.h"

namespace quorvane::platform {

/// Names the application of a window: desktop-file id and name, the id exchanged for the bundle identifier that the
/// identity table knows for it. Without a desktop file the window's class serves, without a class nothing does as id.
class ApplicationIdentity {
public:
    ApplicationIdentity(DesktopEntries& entries, IdentityTable table);

    [[nodiscard]] ForegroundApplication identify(const WindowProperties& window) const;

private:
    DesktopEntries& entries_;
    IdentityTable table_;
};

}  // namespace quorvane::platform
