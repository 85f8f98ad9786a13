#include "platform/linux/bus/BoundedBusConnection.h"

#include <QDBusError>
#include <atomic>

namespace quorvane::platform {
namespace {

QString boundedName() {
    static std::atomic<int> number = 0;
    return QStringLiteral("quorvane-bounded-%1").arg(++number);
}

}  // namespace

// To Qt the bus is a mere peer, since Qt's own greeting of a bus knows no limit; it is greeted by a call of ours.
BoundedBusConnection::BoundedBusConnection(const QString& address, const Deadline& deadline)
    : name_(boundedName()), bus_(QDBusConnection::connectToPeer(address, name_)) {
    isGreeted_ = bus_.isConnected() && callBus("Hello", {}, deadline).type() == QDBusMessage::ReplyMessage;
}

BoundedBusConnection::~BoundedBusConnection() {
    QDBusConnection::disconnectFromPeer(name_);
}

QString BoundedBusConnection::sessionAddress() {
    const auto address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    const auto runtimeDirectory = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return address.isEmpty() && !runtimeDirectory.isEmpty() ? "unix:path=" + runtimeDirectory + "/bus" : address;
}

QString BoundedBusConnection::systemAddress() {
    return qEnvironmentVariable("DBUS_SYSTEM_BUS_ADDRESS", QStringLiteral("unix:path=/run/dbus/system_bus_socket"));
}

QDBusMessage BoundedBusConnection::call(const QDBusMessage& question, const Deadline& deadline) const {
    const int left = deadline.millisecondsLeft();
    if (left == 0) return question.createErrorReply(QDBusError::NoReply, QStringLiteral("the time is over"));
    return bus_.call(question, QDBus::Block, left);
}

QDBusMessage BoundedBusConnection::callBus(const char* method, const QVariantList& arguments,
                                           const Deadline& deadline) const {
    auto question =
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                                       QStringLiteral("org.freedesktop.DBus"), QString::fromLatin1(method));
    question.setArguments(arguments);
    return call(question, deadline);
}

bool BoundedBusConnection::isAnswer(const QDBusMessage& message, const char* signature) {
    return message.type() == QDBusMessage::ReplyMessage && message.signature() == QLatin1String(signature);
}

}  // namespace quorvane::platform
