#include "platform/linux/gnome/MutterIdleSource.h"

#include <QDBusError>
#include <chrono>

namespace quorvane::platform {
namespace {

constexpr Seconds patience = 0.25s;
constexpr Seconds silence = 5s;

}  // namespace

MutterIdleSource::MutterIdleSource(RunLoop& runLoop) : MutterIdleSource(runLoop, Deadline(patience)) {}

MutterIdleSource::MutterIdleSource(RunLoop& runLoop, const Deadline& deadline)
    : runLoop_(runLoop), bus_(BoundedBusConnection::sessionAddress(), deadline) {
    ask(deadline);
}

QDBusMessage MutterIdleSource::question(const char* method, const QVariantList& arguments) {
    auto question = QDBusMessage::createMethodCall(QString::fromLatin1(service),
                                                   QStringLiteral("/org/gnome/Mutter/IdleMonitor/Core"),
                                                   QString::fromLatin1(service), QString::fromLatin1(method));
    question.setArguments(arguments);
    return question;
}

std::optional<Seconds> MutterIdleSource::idleTime(const QDBusMessage& answer) {
    if (!BoundedBusConnection::isAnswer(answer, "t")) return std::nullopt;
    return std::chrono::milliseconds(answer.arguments().constFirst().toULongLong());
}

void MutterIdleSource::ask(const Deadline& deadline) {
    if (!bus_.isConnected()) {
        problem_ = "no session bus";
        return;
    }
    const auto answer = bus_.call(question("GetIdletime"), deadline);
    if (const auto idle = idleTime(answer)) {
        lastInput_ = runLoop_.uptime() - *idle;
        problem_.clear();
        return;
    }
    const bool isThere = QDBusError(answer).type() != QDBusError::ServiceUnknown;
    problem_ = isThere ? "Mutter does not answer" : "Mutter is not on the session bus";
    silentUntil_ = runLoop_.uptime() + silence;
}

Seconds MutterIdleSource::secondsSinceLastInput() {
    if (runLoop_.uptime() >= silentUntil_) ask(Deadline(patience));
    return lastInput_ ? runLoop_.uptime() - *lastInput_ : -1s;
}

Channel MutterIdleSource::channel() const {
    return {.question = "system idle time",
            .name = "Mutter's idle monitor",
            .isAvailable = problem_.empty(),
            .reason = problem_,
            .remedy = {}};
}

}  // namespace quorvane::platform
