#include "platform/linux/bus/DBusConnection.h"

#include "base/Environment.h"
#include "platform/linux/bus/BoundedBusConnection.h"

#include <QDBusMessage>
#include <utility>

namespace quorvane::platform {
namespace {

QString freshName() {
    static int number = 0;
    return QStringLiteral("quorvane-%1").arg(++number);
}

bool doesAnswer(const QString& address) {
    return BoundedBusConnection(address, Deadline(Seconds(busPatienceInMilliseconds / 1000.0))).isConnected();
}

/// Qt waits half a minute for a bus that hangs, and takes the whole program along.
QDBusConnection connectionTo(const QString& address, const QString& name) {
    return doesAnswer(address) ? QDBusConnection::connectToBus(address, name) : QDBusConnection(name);
}

}  // namespace

DBusConnection DBusConnection::toSystem() {
    const auto address = environment("DBUS_SYSTEM_BUS_ADDRESS");
    return DBusConnection(address.empty() ? "unix:path=/run/dbus/system_bus_socket" : address);
}

DBusConnection DBusConnection::toSession() {
    auto address = environment("DBUS_SESSION_BUS_ADDRESS");
    const auto runtimeDirectory = environment("XDG_RUNTIME_DIR");
    if (address.empty() && !runtimeDirectory.empty()) address = "unix:path=" + runtimeDirectory + "/bus";
    return DBusConnection(address);
}

void DBusConnection::leaveHangingSession() {
    const QString address = BoundedBusConnection::sessionAddress();
    if (address.isEmpty() || doesAnswer(address)) return;
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
}

DBusConnection::DBusConnection(const std::string& address)
    : name_(freshName()), bus_(connectionTo(QString::fromStdString(address), name_)) {}

DBusConnection::DBusConnection(DBusConnection&& other) noexcept
    : name_(std::exchange(other.name_, QString())), bus_(std::move(other.bus_)) {}

DBusConnection::~DBusConnection() {
    if (!name_.isEmpty()) QDBusConnection::disconnectFromBus(name_);
}

bool DBusConnection::isOwned(const QString& name) {
    if (!isConnected()) return false;
    auto question =
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                                       QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameHasOwner"));
    question << name;
    return bus_.call(question, QDBus::Block, busPatienceInMilliseconds).arguments().value(0).toBool();
}

}  // namespace quorvane::platform
