#pragma once

#include "base/Signal.h"
#include "platform/linux/bus/BoundedBusConnection.h"

#include <QObject>
#include <functional>

namespace quorvane::platform {

/// A bus that is listened to and asked without waiting. Only making it waits, for the bus's greeting and no longer than
/// until the deadline. Nobody may destroy it while it calls them. Main thread only.
class BusListener final : public QObject {
    Q_OBJECT

public:
    using Answered = std::function<void(const QDBusMessage& answer)>;

    BusListener(const QString& address, const Deadline& deadline);

    [[nodiscard]] bool isConnected() const { return bus_.isConnected(); }

    /// Signals of this name are heard from now on. Those to everybody come only as far as a rule has the bus pass them
    /// on: "type='signal',interface='org.example.Clock'".
    void hear(const char* interface, const char* member);
    void listen(const QString& rule);
    void forget(const QString& rule);

    /// Calls `heard` with each. What the bus itself says has "org.freedesktop.DBus" as its service.
    Subscription observe(std::function<void(const QDBusMessage& signal)> heard) {
        return heard_.subscribe(std::move(heard));
    }

    /// Calls `ended` when the bus has gone.
    Subscription observeEnd(std::function<void()> ended) { return ended_.subscribe(std::move(ended)); }

    /// Calls `answered` in a later turn of the loop, with an error message where no answer came in time. Not once this
    /// object has gone. Starts no service.
    void ask(QDBusMessage question, Seconds patience, Answered answered);

    /// Sends it, and does not care what becomes of it.
    void tell(QDBusMessage message);

    /// The answer, waited for.
    [[nodiscard]] QDBusMessage call(QDBusMessage question, const Deadline& deadline) const;

    /// Questions to the bus itself, and what makes it pass on that a name has another owner.
    [[nodiscard]] static QDBusMessage busQuestion(const char* method, const QVariantList& arguments);
    [[nodiscard]] static QString ownerRule(const QString& name);

private Q_SLOTS:
    void note(const QDBusMessage& signal) { heard_.send(signal); }
    void noteEnd() { ended_.send(); }

private:
    BoundedBusConnection bus_;
    Signal<const QDBusMessage&> heard_;
    Signal<> ended_;
};

}  // namespace quorvane::platform
