#include "platform/linux/gnome/MutterIdleSource.h"

#include <QDBusError>
#include <chrono>
#include <utility>

namespace quorvane::platform {
namespace {

constexpr Seconds patience = 0.25s;
constexpr Seconds silence = 5s;
constexpr Seconds patienceForWatch = 2s;
constexpr Seconds longestTrust = 300s;  ///< in a watch of which nothing is heard
constexpr Seconds sameInput = 0.5s;
constexpr const char* notThere = "Mutter is not on the session bus";

}  // namespace

MutterIdleSource::MutterIdleSource(RunLoop& runLoop, Seconds leastPause)
    : MutterIdleSource(runLoop, leastPause, Deadline(patience)) {}

MutterIdleSource::MutterIdleSource(RunLoop& runLoop, Seconds leastPause, const Deadline& deadline)
    : runLoop_(runLoop), leastPause_(leastPause), bus_(BoundedBusConnection::sessionAddress(), deadline),
      heard_(bus_.observe([this](const QDBusMessage& signal) { hear(signal); })) {
    bus_.hear(service, "WatchFired");
    bus_.hear("org.freedesktop.DBus", "NameOwnerChanged");
    bus_.listen(BusListener::ownerRule(QString::fromLatin1(service)));
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
        isThere_ = false;
        return;
    }
    const auto answer = bus_.call(question("GetIdletime"), deadline);
    if (const auto idle = idleTime(answer)) {
        lastInput_ = runLoop_.uptime() - *idle;
        problem_.clear();
        isThere_ = true;
        if (*idle >= leastPause_) watchPause();
        return;
    }
    isThere_ = QDBusError(answer).type() != QDBusError::ServiceUnknown;
    problem_ = isThere_ ? "Mutter does not answer" : notThere;
    silentUntil_ = runLoop_.uptime() + silence;
}

/// From its answer on Mutter tells of input; a second question finds what came before.
void MutterIdleSource::watchPause() {
    if (watch_) pauseUntil_ = runLoop_.uptime() + longestTrust;
    if (std::exchange(isWatching_, true)) return;
    bus_.ask(question("AddUserActiveWatch"), patienceForWatch, [this](const QDBusMessage& answer) {
        if (BoundedBusConnection::isAnswer(answer, "u")) watch_ = answer.arguments().constFirst().toUInt();
    });
    bus_.ask(question("GetIdletime"), patienceForWatch, [this](const QDBusMessage& answer) {
        const auto idle = idleTime(answer);
        if (!watch_ || !idle) return forgetPause();
        const bool isSame = runLoop_.uptime() - *idle - lastInput_.value_or(0s) < sameInput;
        if (isSame) pauseUntil_ = runLoop_.uptime() + longestTrust;
    });
}

/// Any watch of ours goes off with an input, and whoever waits for a return asks at once. So does a shell that has
/// started anew. Who tells something is silent no more.
void MutterIdleSource::hear(const QDBusMessage& signal) {
    const bool isOwner = signal.signature() == u"sss" && signal.arguments().at(0).toString() == QLatin1String(service);
    if (!isOwner && signal.member() != u"WatchFired") return;
    forgetPause();
    silentUntil_ = {};
    if (!isOwner) return;
    isThere_ = !signal.arguments().at(2).toString().isEmpty();
    if (!isThere_) problem_ = notThere;
}

void MutterIdleSource::forgetPause() {
    watch_.reset();
    isWatching_ = false;
    pauseUntil_ = 0s;
}

Seconds MutterIdleSource::secondsSinceLastInput() {
    const bool isPause = runLoop_.uptime() < pauseUntil_ && bus_.isConnected();
    if (!isPause && runLoop_.uptime() >= silentUntil_) ask(Deadline(patience));
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
