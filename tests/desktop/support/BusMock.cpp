#include "desktop/support/BusMock.h"

#include "desktop/support/BusService.h"
#include "desktop/support/Waiting.h"

#include <QDBusConnectionInterface>
#include <algorithm>
#include <stdexcept>

namespace quorvane {
namespace {

QString qt(const std::string& text) {
    return QString::fromStdString(text);
}

std::string pathOf(const std::string& service) {
    std::string path = "/" + service;
    std::replace(path.begin(), path.end(), '.', '/');
    return path;
}

std::vector<std::string> commandOf(const std::vector<std::string>& arguments) {
    std::vector<std::string> command{distributionPython(), "-m", "dbusmock"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return command;
}

}  // namespace

BusMock::BusMock(const std::string& service, const std::string& path)
    : BusMock(service, {"--session", service, path.empty() ? pathOf(service) : path, service},
              "DBUS_SESSION_BUS_ADDRESS") {}

BusMock::BusMock(const std::string& service, const std::vector<std::string>& arguments)
    : BusMock(service, arguments, "DBUS_SYSTEM_BUS_ADDRESS") {}

BusMock::BusMock(const std::string& service, const std::vector<std::string>& arguments, const char* variable)
    : service_(service), path_(pathOf(service)), process_(commandOf(arguments)),
      bus_(QDBusConnection::connectToBus(qEnvironmentVariable(variable), qt("mock of " + service))) {
    const auto isThere = [this] { return bus_.interface()->isServiceRegistered(qt(service_)).value(); };
    if (!waitUntil(isThere, 20s)) throw std::runtime_error("dbusmock does not start");
}

BusMock::~BusMock() {
    QDBusConnection::disconnectFromBus(qt("mock of " + service_));
}

QDBusMessage BusMock::call(const std::string& path, const std::string& interface, const std::string& method,
                           const QVariantList& arguments) {
    auto message = QDBusMessage::createMethodCall(qt(service_), qt(path), qt(interface), qt(method));
    message.setArguments(arguments);
    const auto reply = bus_.call(message, QDBus::Block, 5000);
    if (reply.type() == QDBusMessage::ErrorMessage)
        throw std::runtime_error(method + ": " + reply.errorMessage().toStdString());
    return reply;
}

void BusMock::setAnswer(const std::string& path, const std::string& interface, const std::string& method,
                        const std::string& in, const std::string& out, const std::string& code) {
    call(path, BusMock::ownInterface, "AddMethod", {qt(interface), qt(method), qt(in), qt(out), qt(code)});
}

void BusMock::emitSignal(const std::string& path, const std::string& interface, const std::string& signal,
                         const std::string& signature, const QVariantList& arguments) {
    call(path, BusMock::ownInterface, "EmitSignal", {qt(interface), qt(signal), qt(signature), QVariant(arguments)});
}

}  // namespace quorvane
