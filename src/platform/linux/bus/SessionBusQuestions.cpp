#include "platform/linux/bus/SessionBusQuestions.h"

#include <QDBusVariant>

namespace quorvane::platform {
bool SessionBusQuestions::isThere() {
    return askBus("GetId").isValid();
}

QStringList SessionBusQuestions::names(const QString& prefix) {
    auto names = askBus("ListNames").toStringList();
    names.removeIf([&](const QString& name) { return !name.startsWith(prefix); });
    names.sort();
    return names;
}

pid_t SessionBusQuestions::processOf(const QString& name) {
    return static_cast<pid_t>(askBus("GetConnectionUnixProcessID", {name}).toUInt());
}

QVariant SessionBusQuestions::property(const QString& service, const QString& path, const QString& interface,
                                       const QString& property) {
    return answer(service, path, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
                  {interface, property})
        .value<QDBusVariant>()
        .variant();
}

QVariant SessionBusQuestions::answer(const QString& service, const QString& path, const QString& interface,
                                     const QString& method, const QVariantList& arguments) {
    if (!connects()) return {};
    auto question = QDBusMessage::createMethodCall(service, path, interface, method);
    question.setAutoStartService(false);
    question.setArguments(arguments);
    const auto reply = bus_->call(question, deadline_.within(patience_));
    return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0) : QVariant();
}

bool SessionBusQuestions::connects() {
    if (!bus_)
        bus_ =
            std::make_unique<BoundedBusConnection>(BoundedBusConnection::sessionAddress(), deadline_.within(patience_));
    return bus_->isConnected();
}

QVariant SessionBusQuestions::askBus(const char* method, const QVariantList& arguments) {
    if (!connects()) return {};
    const auto reply = bus_->callBus(method, arguments, deadline_.within(patience_));
    return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0) : QVariant();
}

}  // namespace quorvane::platform
