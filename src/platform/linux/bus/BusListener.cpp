#include "platform/linux/bus/BusListener.h"

#include <QDBusPendingCallWatcher>
#include <utility>

namespace quorvane::platform {

BusListener::BusListener(const QString& address, const Deadline& deadline) : bus_(address, deadline) {
    bus_.bus().connect(QString(), QString(), QStringLiteral("org.freedesktop.DBus.Local"),
                       QStringLiteral("Disconnected"), this, SLOT(noteEnd()));
}

void BusListener::hear(const char* interface, const char* member) {
    bus_.bus().connect(QString(), QString(), QString::fromLatin1(interface), QString::fromLatin1(member), this,
                       SLOT(note(QDBusMessage)));
}

void BusListener::listen(const QString& rule) {
    tell(busQuestion("AddMatch", {rule}));
}

void BusListener::forget(const QString& rule) {
    tell(busQuestion("RemoveMatch", {rule}));
}

void BusListener::ask(QDBusMessage question, Seconds patience, Answered answered) {
    question.setAutoStartService(false);
    const int milliseconds = Deadline(patience).millisecondsLeft();
    auto* watcher = new QDBusPendingCallWatcher(bus_.bus().asyncCall(question, milliseconds), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, answered = std::move(answered)] {
        watcher->deleteLater();
        answered(watcher->reply());
    });
}

void BusListener::tell(QDBusMessage message) {
    message.setAutoStartService(false);
    bus_.bus().send(message);
}

QDBusMessage BusListener::call(QDBusMessage question, const Deadline& deadline) const {
    question.setAutoStartService(false);
    return bus_.call(question, deadline);
}

QDBusMessage BusListener::busQuestion(const char* method, const QVariantList& arguments) {
    auto question =
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                                       QStringLiteral("org.freedesktop.DBus"), QString::fromLatin1(method));
    question.setArguments(arguments);
    return question;
}

QString BusListener::ownerRule(const QString& name) {
    return "type='signal',sender='org.freedesktop.DBus',interface='org.freedesktop.DBus',member='NameOwnerChanged'"
           ",arg0='" +
           name + "'";
}

}  // namespace quorvane::platform
