#include "platform/linux/gnome/MutterIdleSource.h"

#include <QDBusError>
#include <chrono>

namespace quorvane::platform {
namespace {

constexpr Seconds patience = 0.25s;
constexpr Seconds silence = 5s;
constexpr const char* notThere = "Mutter is not on the session bus";

}  // namespace

MutterIdleSource::MutterIdleSource(RunLoop& runLoop) : MutterIdleSource(runLoop, Deadline(patience)) {}

MutterIdleSource::MutterIdleSource(RunLoop& runLoop, const Deadline& deadline)
    : runLoop_(runLoop), bus_(BoundedBusConnection::sessionAddress(), deadline) {
    bus_.hear("org.freedesktop.DBus", "NameOwnerChanged");
    bus_.listen(BusListener::ownerRule(QString::fromLatin1(service)));
    heard_ = bus_.observe([this](const QDBusMessage& signal) { hear(signal); });
    ask(deadline);
}

/// A shell that has started anew is asked at once.
void MutterIdleSource::hear(const QDBusMessage& signal) {
    if (signal.member() != u"NameOwnerChanged" || signal.signature() != u"sss") return;
    if (signal.arguments().at(0).toString() != QLatin1String(service)) return;
    isThere_ = !signal.arguments().at(2).toString().isEmpty();
    if (!isThere_) problem_ = notThere;
    silentUntil_ = {};
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
        isThere_ = false;
        return;
    }
    const auto answer = bus_.call(question("GetIdletime"), deadline);
    if (const auto idle = idleTime(answer)) {
        lastInput_ = runLoop_.uptime() - *idle;
        problem_.clear();
        isThere_ = true;
        return;
    }
    isThere_ = QDBusError(answer).type() != QDBusError::ServiceUnknown;
    problem_ = isThere_ ? "Mutter does not answer" : notThere;
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
