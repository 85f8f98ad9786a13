#include "platform/linux/gnome/GnomeShell.h"

#include "platform/linux/gnome/ProgramOutput.h"

#include <QDBusArgument>
#include <QDBusVariant>
#include <QVariantMap>

namespace quorvane::platform {
namespace {

constexpr const char* shellName = "org.gnome.Shell";
constexpr Seconds patienceForBus = 0.5s;  // also when the shell has used up all that there was
constexpr const char* extensions = "org.gnome.Shell.Extensions";

}  // namespace

QDBusMessage GnomeShell::ask(const char* interface, const char* method, const QVariantList& arguments) const {
    auto question = QDBusMessage::createMethodCall(QString::fromLatin1(shellName), QStringLiteral("/org/gnome/Shell"),
                                                   QString::fromLatin1(interface), QString::fromLatin1(method));
    question.setArguments(arguments);
    question.setAutoStartService(false);
    return bus_.call(question, deadline_);
}

bool GnomeShell::orders(const char* method, const char* uuid) const {
    const auto answer = ask(extensions, method, {QString::fromLatin1(uuid)});
    return BoundedBusConnection::isAnswer(answer, "b") && answer.arguments().constFirst().toBool();
}

bool GnomeShell::isThere() const {
    const auto answer = bus_.callBus("NameHasOwner", {QString::fromLatin1(shellName)}, Deadline(patienceForBus));
    return BoundedBusConnection::isAnswer(answer, "b") && answer.arguments().constFirst().toBool();
}

std::optional<std::string> GnomeShell::version() const {
    const auto answer =
        ask("org.freedesktop.DBus.Properties", "Get", {QString::fromLatin1(shellName), QStringLiteral("ShellVersion")});
    if (BoundedBusConnection::isAnswer(answer, "v"))
        return answer.arguments().constFirst().value<QDBusVariant>().variant().toString().toStdString();
    // "GNOME Shell 43.9"
    const auto said = outputOf("gnome-shell", {QStringLiteral("--version")}, deadline_).text;
    const auto number = said.find_first_of("0123456789");
    if (number == std::string::npos) return std::nullopt;
    return said.substr(number, said.find_first_not_of("0123456789.", number) - number);
}

std::optional<GnomeShell::Extension> GnomeShell::extension(const char* uuid) const {
    const auto answer = ask(extensions, "GetExtensionInfo", {QString::fromLatin1(uuid)});
    if (!BoundedBusConnection::isAnswer(answer, "a{sv}")) return std::nullopt;
    const auto known = qdbus_cast<QVariantMap>(answer.arguments().constFirst());
    return Extension{.state = known.value(QStringLiteral("state")).toInt(),
                     .error = known.value(QStringLiteral("error")).toString().toStdString()};
}

}  // namespace quorvane::platform
