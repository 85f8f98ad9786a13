#include "platform/linux/SessionBusQuestions.h"

#include <QDBusVariant>

namespace quorvane::platform {
namespace {

constexpr Seconds patience = 0.3s;

}  // namespace

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
    if (!connects()) return {};
    auto question = QDBusMessage::createMethodCall(service, path, QStringLiteral("org.freedesktop.DBus.Properties"),
                                                   QStringLiteral("Get"));
    question.setAutoStartService(false);
    question << interface << property;
    const auto reply = bus_->call(question, deadline_.within(patience));
    return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0).value<QDBusVariant>().variant()
                                                      : QVariant();
}

bool SessionBusQuestions::connects() {
    if (!bus_)
        bus_ =
            std::make_unique<BoundedBusConnection>(BoundedBusConnection::sessionAddress(), deadline_.within(patience));
    return bus_->isConnected();
}

QVariant SessionBusQuestions::askBus(const char* method, const QVariantList& arguments) {
    if (!connects()) return {};
    const auto reply = bus_->callBus(method, arguments, deadline_.within(patience));
    return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0) : QVariant();
}

}  // namespace quorvane::platform
