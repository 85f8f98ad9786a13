#pragma once

#include <QDBusConnection>
#include <optional>
#include <string>

namespace quorvane::platform {

/// How long a start may wait for one answer from a bus.
inline constexpr int busPatienceInMilliseconds = 300;

/// A connection of our own to a bus, closed with this object. Where no such bus answers it is not connected: no daemon
/// is ever started for it, and nobody waits for one that hangs.
class DBusConnection {
public:
    /// The system bus, and the bus of the user's session. What the environment says counts at this moment.
    [[nodiscard]] static DBusConnection toSystem();
    [[nodiscard]] static DBusConnection toSession();

    /// Does without the bus of the user's session in this process if it exists and doesn't answer: whatever in Qt
    /// connects to it would wait for half a minute. To be called before there is an application object.
    static void leaveHangingSession();

    DBusConnection(DBusConnection&& other) noexcept;
    DBusConnection(const DBusConnection&) = delete;
    DBusConnection& operator=(const DBusConnection&) = delete;
    ~DBusConnection();

    [[nodiscard]] bool isConnected() const { return bus_.isConnected(); }
    [[nodiscard]] QDBusConnection& bus() { return bus_; }

    /// Does a program on the bus own this name now? False too when the bus does not answer in time.
    [[nodiscard]] bool isOwned(const QString& name);

private:
    explicit DBusConnection(const std::string& address);

    QString name_;  ///< empty when moved from
    QDBusConnection bus_;
};

}  // namespace quorvane::platform
