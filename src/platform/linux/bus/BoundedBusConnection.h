#pragma once

#include "platform/linux/loop/Deadline.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QString>
#include <QVariantList>

namespace quorvane::platform {

/// A connection to a bus, closed with this object, on which nothing waits beyond a deadline. The usual connection waits
/// half a minute for the greeting of a bus that hangs. It subscribes to nothing by itself. From any thread.
class BoundedBusConnection {
public:
    /// `address` is D-Bus's own form, "unix:path=/run/user/1000/bus". Where no bus answers it is not connected.
    BoundedBusConnection(const QString& address, const Deadline& deadline);
    BoundedBusConnection(const BoundedBusConnection&) = delete;
    BoundedBusConnection& operator=(const BoundedBusConnection&) = delete;
    ~BoundedBusConnection();

    /// The addresses of the bus of the user's session, which may be empty, and of the system's, from the environment.
    [[nodiscard]] static QString sessionAddress();
    [[nodiscard]] static QString systemAddress();

    [[nodiscard]] bool isConnected() const { return isGreeted_ && bus_.isConnected(); }

    /// For what doesn't wait. To Qt it is a peer: no rule is sent to the bus for a slot that is connected here.
    [[nodiscard]] QDBusConnection& bus() { return bus_; }

    /// The answer, or an error message; QDBusError::NoReply when the time was over.
    [[nodiscard]] QDBusMessage call(const QDBusMessage& question, const Deadline& deadline) const;

    /// The same, to the bus itself.
    [[nodiscard]] QDBusMessage callBus(const char* method, const QVariantList& arguments,
                                       const Deadline& deadline) const;

    /// Is it an answer that holds just values of these types? An error is none, though it holds a text.
    [[nodiscard]] static bool isAnswer(const QDBusMessage& message, const char* signature);

private:
    QString name_;
    QDBusConnection bus_;
    bool isGreeted_ = false;
};

}  // namespace quorvane::platform
