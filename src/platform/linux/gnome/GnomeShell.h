#pragma once

#include "platform/linux/bus/BoundedBusConnection.h"

#include <optional>
#include <string>

namespace quorvane::platform {

/// GNOME Shell on the session bus, asked about its extensions. All questions together wait until the deadline at most.
/// For one thread; needs the application object of Qt.
class GnomeShell {
public:
    explicit GnomeShell(const Deadline& deadline)
        : deadline_(deadline), bus_(BoundedBusConnection::sessionAddress(), deadline) {}

    /// "43.9". Of a shell that isn't on the bus what its program says; none where there is neither.
    [[nodiscard]] std::optional<std::string> version() const;

    /// Is there a bus that it could be on?
    [[nodiscard]] bool hasBus() const { return bus_.isConnected(); }

    /// Does it run? One that doesn't answer does, too.
    [[nodiscard]] bool isThere() const;

    /// What it knows of an extension, which it looks for when it starts. The numbers are the shell's.
    enum State { unknown = 0, active = 1, inactive = 2, failed = 3, outOfDate = 4, activating = 8 };
    struct Extension {
        int state = unknown;
        std::string error;
    };

    /// None if it doesn't answer.
    [[nodiscard]] std::optional<Extension> extension(const char* uuid) const;

    /// Whether it has done that; it refuses for extensions that it doesn't know.
    bool enable(const char* uuid) const { return orders("EnableExtension", uuid); }
    bool disable(const char* uuid) const { return orders("DisableExtension", uuid); }
    bool uninstall(const char* uuid) const { return orders("UninstallExtension", uuid); }

private:
    [[nodiscard]] QDBusMessage ask(const char* interface, const char* method, const QVariantList& arguments) const;
    bool orders(const char* method, const char* uuid) const;

    Deadline deadline_;
    BoundedBusConnection bus_;
};

}  // namespace quorvane::platform
