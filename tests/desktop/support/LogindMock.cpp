#include "desktop/support/LogindMock.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <cstdlib>

namespace quorvane {
namespace {

const std::string service = "org.freedesktop.login1";
const std::string manager = "/org/freedesktop/login1";
const std::string session = "/org/freedesktop/login1/session/c1";

}  // namespace

LogindMock::LogindMock() : mock_(service, {"--system", "--template", "logind"}) {
    mock_.call(manager, BusMock::ownInterface, "AddSession",
               {QStringLiteral("c1"), QStringLiteral("seat0"), 1000U, QStringLiteral("user"), true});
    setenv("XDG_SESSION_ID", "c1", 1);
}

LogindMock::~LogindMock() {
    unsetenv("XDG_SESSION_ID");
}

void LogindMock::prepareForSleep(bool isGoing) {
    mock_.emitSignal(manager, service + ".Manager", "PrepareForSleep", "b", {isGoing});
}

void LogindMock::requestLock(bool lock) {
    mock_.emitSignal(session, service + ".Session", lock ? "Lock" : "Unlock", "", {});
}

void LogindMock::setLockedHint(bool isLocked) {
    mock_.call(session, service + ".Session", "SetLockedHint", {isLocked});
}

void LogindMock::setActive(bool isActive) {
    mock_.call(session, BusMock::ownInterface, "UpdateProperties",
               {QString::fromStdString(service + ".Session"), QVariantMap{{QStringLiteral("Active"), isActive}}});
}

int LogindMock::inhibitors() {
    const auto list =
        mock_.call(manager, service + ".Manager", "ListInhibitors").arguments().value(0).value<QDBusArgument>();
    int count = 0;
    list.beginArray();
    while (!list.atEnd()) {
        QString what, who, why, mode;
        uint user = 0, process = 0;
        list.beginStructure();
        list >> what >> who >> why >> mode >> user >> process;
        list.endStructure();
        if (what == QLatin1String("sleep") && mode == QLatin1String("delay")) ++count;
    }
    list.endArray();
    return count;
}

void LogindMock::listInhibitors(const std::string& inhibitors) {
    mock_.setAnswer(manager, service + ".Manager", "ListInhibitors", "", "a(ssssuu)", "ret = [" + inhibitors + "]");
}

void announceScreenSaver(const std::string& interface, bool isActive) {
    const auto name = QStringLiteral("test-screen-saver");
    auto bus = QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), name);
    auto signal = QDBusMessage::createSignal(QStringLiteral("/ScreenSaver"), QString::fromStdString(interface),
                                             QStringLiteral("ActiveChanged"));
    signal << isActive;
    bus.send(signal);
    [[maybe_unused]] const auto isSent = bus.interface()->isServiceRegistered(QStringLiteral("x.y"));
    QDBusConnection::disconnectFromBus(name);
}

}  // namespace quorvane
