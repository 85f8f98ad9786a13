#pragma once

#include "platform/ForegroundSource.h"
#include "platform/linux/desktop/DesktopEntries.h"
#include "platform/linux/desktop/IdentityTable.h"

namespace quorvane::platform {

/// Names the application of a window: desktop-file id and name, the id exchanged for the bundle identifier that the
/// identity table knows for it. Without a desktop file the window's class serves, without a class nothing does as id.
/// From any thread.
class ApplicationIdentity {
public:
    ApplicationIdentity(DesktopEntries& entries, IdentityTable table);

    [[nodiscard]] ForegroundApplication identify(const WindowProperties& window) const;

    /// The bundle identifier of the application with this desktop-file id; the id itself where the table knows none.
    [[nodiscard]] std::string bundleIdentifier(const std::string& desktopId) const;

    /// In whose way the application with this bundle identifier is asked for its document; itself where the table knows
    /// no model.
    [[nodiscard]] std::string documentModel(const std::string& bundleIdentifier) const;

private:
    DesktopEntries& entries_;
    IdentityTable table_;
};

}  // namespace quorvane::platform
