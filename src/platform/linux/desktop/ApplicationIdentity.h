#pragma once

#include "platform/ApplicationIcons.h"
#include "platform/ForegroundSource.h"
#include "platform/linux/desktop/DesktopEntries.h"
#include "platform/linux/desktop/IdentityTable.h"

#include <string>
#include <vector>

namespace quorvane::platform {

/// Names the application of a window: the bundle identifier that the identity table knows for the id of its desktop
/// file, else for the class that this file names, else for the window's own; else that id. Without a desktop file the
/// window's class and instance are looked up, and the class serves as id; without a class nothing does. From any
/// thread.
class ApplicationIdentity : public ApplicationIcons {
public:
    ApplicationIdentity(DesktopEntries& entries, IdentityTable table);

    [[nodiscard]] ForegroundApplication identify(const WindowProperties& window) const;

    /// The bundle identifier of the application with this desktop-file id; the id itself where the table knows none.
    [[nodiscard]] std::string bundleIdentifier(const std::string& desktopId) const;

    /// Of the desktop file that gives its windows this bundle identifier; one that menus show goes first.
    [[nodiscard]] std::optional<std::string> icon(const std::string& bundleIdentifier) const override;

    /// What the application may call itself, in lower case: names from the table, and what its identifier ends with.
    [[nodiscard]] std::vector<std::string> names(const ForegroundApplication& application) const;

    /// In whose way the application with this bundle identifier is asked for its document; itself where the table knows
    /// no model.
    [[nodiscard]] std::string documentModel(const std::string& bundleIdentifier) const;

private:
    [[nodiscard]] std::string identifierOf(const DesktopEntry& entry, const WindowProperties& window) const;
    [[nodiscard]] std::optional<std::string> knownIdentifier(const std::string& name) const;

    DesktopEntries& entries_;
    IdentityTable table_;
};

}  // namespace quorvane::platform
