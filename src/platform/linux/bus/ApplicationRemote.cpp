#include "platform/linux/bus/ApplicationRemote.h"

#include "platform/linux/bus/BoundedBusConnection.h"

#include <QDBusError>
#include <QVariantMap>

namespace quorvane::platform::ApplicationRemote {
namespace {

constexpr Seconds patience = 3s;

Failure failureOf(const QDBusMessage& reply) {
    switch (QDBusError(reply).type()) {
    case QDBusError::ServiceUnknown: return Failure::notThere;
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
    case QDBusError::Disconnected: return Failure::noAnswer;
    default:
        return reply.errorName() == QLatin1String("org.freedesktop.DBus.Error.NameHasNoOwner") ? Failure::notThere
                                                                                               : Failure::notUnderstood;
    }
}

/// The answer, which holds values of these types.
std::variant<QVariantList, Failure> ask(const char* interface, const char* method, const QVariantList& arguments,
                                        const char* signature) {
    const Deadline deadline(patience);
    const BoundedBusConnection bus(BoundedBusConnection::sessionAddress(), deadline);
    if (!bus.isConnected()) return Failure::noBus;
    auto question = QDBusMessage::createMethodCall(QString::fromLatin1(service), QString::fromLatin1(path),
                                                   QString::fromLatin1(interface), QString::fromLatin1(method));
    question.setAutoStartService(false);
    question.setArguments(arguments);
    const auto reply = bus.call(question, deadline);
    if (BoundedBusConnection::isAnswer(reply, signature)) return reply.arguments();
    return failureOf(reply);
}

}  // namespace

std::variant<Recording, Failure> setRecording(bool isOn) {
    const auto answer = ask(controlInterface, isOn ? "Start" : "Pause", {}, "bs");
    if (const auto* failure = std::get_if<Failure>(&answer)) return *failure;
    const auto& values = std::get<QVariantList>(answer);
    return Recording{.isOn = values[0].toBool(), .hindrance = values[1].toString().toStdString()};
}

std::variant<Done, Failure> show(const std::string& token) {
    QVariantMap platformData;
    if (!token.empty()) platformData[QStringLiteral("activation-token")] = QString::fromStdString(token);
    const auto answer =
        ask(applicationInterface, "ActivateAction", {QStringLiteral("show"), QVariantList(), platformData}, "");
    if (const auto* failure = std::get_if<Failure>(&answer)) return *failure;
    return Done{};
}

}  // namespace quorvane::platform::ApplicationRemote
