#include "platform/linux/bus/LogindSession.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusReply>
#include <QDBusVariant>
#include <cstdlib>
#include <unistd.h>
#include <utility>

namespace quorvane::platform {
namespace {

const QString service = QStringLiteral("org.freedesktop.login1");
const QString managerPath = QStringLiteral("/org/freedesktop/login1");
const QString managerInterface = QStringLiteral("org.freedesktop.login1.Manager");
const QString sessionInterface = QStringLiteral("org.freedesktop.login1.Session");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

QDBusMessage managerCall(const char* method, const QVariantList& arguments) {
    auto call = QDBusMessage::createMethodCall(service, managerPath, managerInterface, QString::fromLatin1(method));
    call.setArguments(arguments);
    return call;
}

/// Empty if this process belongs to no session. The path is never made from the id: logind escapes it ("2" is "_32").
QString pathOfSession(QDBusConnection& bus) {
    QList<QDBusMessage> questions;
    if (const char* id = std::getenv("XDG_SESSION_ID"); id && *id)
        questions << managerCall("GetSession", {QString::fromLocal8Bit(id)});
    questions << managerCall("GetSessionByPID", {static_cast<uint>(getpid())})
              << managerCall("GetSession", {QStringLiteral("auto")});  // from a service: the user's display session
    for (const auto& question : questions) {
        const QDBusReply<QDBusObjectPath> path = bus.call(question, QDBus::Block, busPatienceInMilliseconds);
        if (path.isValid()) return path.value().path();
        if (path.error().type() == QDBusError::NoReply) break;  // it hangs; it won't answer the next one either
    }
    return {};
}

/// Of the session; nothing if there is no answer.
QVariant sessionProperty(QDBusConnection& bus, const QString& path, const char* name) {
    auto question = QDBusMessage::createMethodCall(service, path, propertiesInterface, QStringLiteral("Get"));
    question << sessionInterface << QString::fromLatin1(name);
    const QDBusReply<QDBusVariant> answer = bus.call(question, QDBus::Block, busPatienceInMilliseconds);
    return answer.isValid() ? answer.value().variant() : QVariant();
}

}  // namespace

std::string LogindSession::type() {
    auto system = DBusConnection::toSystem();
    if (!system.isConnected() || !system.isOwned(service)) return {};
    const QString path = pathOfSession(system.bus());
    return path.isEmpty() ? std::string() : sessionProperty(system.bus(), path, "Type").toString().toStdString();
}

LogindSession::LogindSession(Handlers handlers) : handlers_(std::move(handlers)), system_(DBusConnection::toSystem()) {
    if (!system_.isConnected()) return;
    system_.bus().connect(service, managerPath, managerInterface, QStringLiteral("PrepareForSleep"), this,
                          SLOT(notePrepareForSleep(bool)));
    // The signals above arrive even if logind starts later. The rest is asked once, and by nobody's leave for long.
    if (!system_.isOwned(service)) return;
    takeDelay();
    sessionPath_ = pathOfSession(system_.bus());
    if (sessionPath_.isEmpty()) return;
    auto& bus = system_.bus();
    bus.connect(service, sessionPath_, sessionInterface, QStringLiteral("Lock"), this, SLOT(noteLock()));
    bus.connect(service, sessionPath_, sessionInterface, QStringLiteral("Unlock"), this, SLOT(noteUnlock()));
    bus.connect(service, sessionPath_, propertiesInterface, QStringLiteral("PropertiesChanged"), this,
                SLOT(noteProperties(QString, QVariantMap, QStringList)));
    wasLocked_ = sessionProperty(bus, sessionPath_, "LockedHint").toBool();
    const auto isActive = sessionProperty(bus, sessionPath_, "Active");
    wasInFront_ = !isActive.isValid() || isActive.toBool();
}

std::string LogindSession::sleepProblem() {
    if (!system_.isConnected()) return "no system bus";
    if (!system_.isOwned(service)) return "logind (org.freedesktop.login1) is not on the system bus";
    return {};
}

std::string LogindSession::lockProblem() {
    if (auto problem = sleepProblem(); !problem.empty()) return problem;
    return sessionPath_.isEmpty() ? "logind knows no session of this process" : "";
}

void LogindSession::takeDelay() {
    const auto inhibit = managerCall("Inhibit", {QStringLiteral("sleep"), QStringLiteral("Quorvane"),
                                                 QStringLiteral("Close the open record"), QStringLiteral("delay")});
    auto* watcher = new QDBusPendingCallWatcher(system_.bus().asyncCall(inhibit), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusUnixFileDescriptor> lock = *watcher;
        if (lock.isValid() && !isAsleep_) delay_ = lock.value();
    });
}

void LogindSession::notePrepareForSleep(bool isGoing) {
    if (std::exchange(isAsleep_, isGoing) == isGoing) return;
    if (isGoing) {
        handlers_.willSleep();
        // In a later turn: what the handlers posted, such as the save of the record they closed, comes first.
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (isAsleep_) delay_ = {};
            },
            Qt::QueuedConnection);
    } else {
        takeDelay();
        handlers_.didWake();
    }
}

void LogindSession::noteProperties(const QString& interface, const QVariantMap& changed, const QStringList&) {
    if (interface != sessionInterface) return;
    if (const auto hint = changed.constFind(QStringLiteral("LockedHint")); hint != changed.constEnd())
        handlers_.lockReported(hint->toBool());
    if (const auto active = changed.constFind(QStringLiteral("Active")); active != changed.constEnd())
        handlers_.frontReported(active->toBool());
}

}  // namespace quorvane::platform
