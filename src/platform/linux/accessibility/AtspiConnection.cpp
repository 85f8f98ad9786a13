#include "platform/linux/accessibility/AtspiConnection.h"

#include <QDBusError>
#include <unistd.h>

namespace quorvane::platform {
namespace {

constexpr auto silence = std::chrono::seconds(2);
constexpr std::size_t manyProcesses = 512;  // of programs that have ended, mostly
const QString busItself = QStringLiteral("org.freedesktop.DBus");

}  // namespace

AtspiConnection::AtspiConnection(const QString& address, const Deadline& deadline) : bus_(address, deadline) {
    registerAtspiMessages();
}

QDBusMessage AtspiConnection::ask(const AtspiReference& element, const char* interface, const char* method,
                                  const QVariantList& arguments, const Deadline& deadline) {
    auto question = QDBusMessage::createMethodCall(element.bus, element.path.path(), QString::fromLatin1(interface),
                                                   QString::fromLatin1(method));
    if (isSilent(element.bus)) return question.createErrorReply(QDBusError::NoReply, QStringLiteral("it is silent"));
    const bool isOfConnection = element.bus.startsWith(':');
    if (const auto id = isOfConnection ? process(element.bus, deadline) : 0; !id || id == getpid())
        return question.createErrorReply(QDBusError::AccessDenied, QStringLiteral("nobody, or this process"));
    question.setArguments(arguments);
    question.setAutoStartService(false);
    auto answer = bus_.call(question, deadline);
    noteAnswer(element.bus, answer);
    return answer;
}

std::optional<std::int64_t> AtspiConnection::process(const QString& name, const Deadline& deadline) {
    {
        const std::lock_guard lock(mutex_);
        if (const auto known = processes_.find(name); known != processes_.end()) return known->second;
    }
    if (isSilent(busItself)) return std::nullopt;
    const auto answer = bus_.callBus("GetConnectionUnixProcessID", {name}, deadline);
    noteAnswer(busItself, answer);
    if (!BoundedBusConnection::isAnswer(answer, "u")) return std::nullopt;
    const std::int64_t id = answer.arguments().constFirst().toUInt();
    const std::lock_guard lock(mutex_);
    if (processes_.size() >= manyProcesses) processes_.clear();
    processes_.emplace(name, id);
    return id;
}

bool AtspiConnection::isSilent(const QString& name) {
    const std::lock_guard lock(mutex_);
    const auto found = silentUntil_.find(name);
    if (found == silentUntil_.end()) return false;
    if (Clock::now() < found->second) return true;
    silentUntil_.erase(found);
    return false;
}

void AtspiConnection::noteAnswer(const QString& name, const QDBusMessage& answer) {
    if (answer.type() != QDBusMessage::ErrorMessage) return;
    const auto error = QDBusError(answer).type();
    if (error != QDBusError::NoReply && error != QDBusError::Timeout && error != QDBusError::TimedOut) return;
    const std::lock_guard lock(mutex_);
    silentUntil_.insert_or_assign(name, Clock::now() + silence);
}

}  // namespace quorvane::platform
