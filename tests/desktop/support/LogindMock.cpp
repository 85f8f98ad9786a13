#include "desktop/support/LogindMock.h"

#include "desktop/support/BusService.h"
#include "desktop/support/Waiting.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <cstdlib>
#include <stdexcept>

namespace quorvane {
namespace {

const std::string service = "org.freedesktop.login1";
const std::string manager = "/org/freedesktop/login1";
const std::string session = "/org/freedesktop/login1/session/c1";
const std::string mockInterface = "org.freedesktop.DBus.Mock";

QDBusConnection connectTo(const char* variable, const QString& name) {
    return QDBusConnection::connectToBus(qEnvironmentVariable(variable), name);
}

}  // namespace

LogindMock::LogindMock()
    : process_({distributionPython(), "-m", "dbusmock", "--system", "--template", "logind"}),
      bus_(connectTo("DBUS_SYSTEM_BUS_ADDRESS", QStringLiteral("test-logind"))) {
    const auto isThere = [this] {
        return bus_.interface()->isServiceRegistered(QString::fromStdString(service)).value();
    };
    if (!waitUntil(isThere, 20s)) throw std::runtime_error("dbusmock does not start");
    call(manager, mockInterface, "AddSession",
         {QStringLiteral("c1"), QStringLiteral("seat0"), 1000U, QStringLiteral("user"), true});
    setenv("XDG_SESSION_ID", "c1", 1);
}

LogindMock::~LogindMock() {
    unsetenv("XDG_SESSION_ID");
    QDBusConnection::disconnectFromBus(QStringLiteral("test-logind"));
}

void LogindMock::prepareForSleep(bool isGoing) {
    emitSignal(manager, service + ".Manager", "PrepareForSleep", "b", {isGoing});
}

void LogindMock::requestLock(bool lock) {
    emitSignal(session, service + ".Session", lock ? "Lock" : "Unlock", "", {});
}

void LogindMock::setLockedHint(bool isLocked) {
    call(session, service + ".Session", "SetLockedHint", {isLocked});
}

int LogindMock::inhibitors() {
    const auto list = call(manager, service + ".Manager", "ListInhibitors").arguments().value(0).value<QDBusArgument>();
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

QDBusMessage LogindMock::call(const std::string& path, const std::string& interface, const std::string& method,
                              const QVariantList& arguments) {
    auto message = QDBusMessage::createMethodCall(QString::fromStdString(service), QString::fromStdString(path),
                                                  QString::fromStdString(interface), QString::fromStdString(method));
    message.setArguments(arguments);
    const auto reply = bus_.call(message, QDBus::Block, 5000);
    if (reply.type() == QDBusMessage::ErrorMessage)
        throw std::runtime_error(method + ": " + reply.errorMessage().toStdString());
    return reply;
}

void LogindMock::emitSignal(const std::string& path, const std::string& interface, const std::string& signal,
                            const std::string& signature, const QVariantList& arguments) {
    call(path, mockInterface, "EmitSignal",
         {QString::fromStdString(interface), QString::fromStdString(signal), QString::fromStdString(signature),
          QVariant(arguments)});
}

void announceScreenSaver(const std::string& interface, bool isActive) {
    const auto name = QStringLiteral("test-screen-saver");
    auto bus = connectTo("DBUS_SESSION_BUS_ADDRESS", name);
    auto signal = QDBusMessage::createSignal(QStringLiteral("/ScreenSaver"), QString::fromStdString(interface),
                                             QStringLiteral("ActiveChanged"));
    signal << isActive;
    bus.send(signal);
    [[maybe_unused]] const auto isSent = bus.interface()->isServiceRegistered(QStringLiteral("x.y"));
    QDBusConnection::disconnectFromBus(name);
}

}  // namespace quorvane
