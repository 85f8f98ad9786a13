#include "platform/linux/bus/LinuxPresenceSource.h"

#include "base/Text.h"
#include "platform/linux/bus/MprisTrack.h"
#include "platform/linux/bus/SessionBusQuestions.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <array>
#include <fmt/format.h>
#include <unistd.h>

namespace quorvane::platform {
namespace {

constexpr Seconds wholePatience = 0.3s;
constexpr Seconds onePatience = 0.1s;  ///< so that one that hangs leaves time for the others

/// A service that knows what applications told it, and the question that it answers with yes or no.
struct Keeper {
    const char* service;
    const char* path;
    const char* interface;
    const char* method;
    QVariantList arguments;
};

/// GNOME's interface is also that of its relatives; 8 is its flag for idleness, 4 the other's for the screen.
std::array<Keeper, 3> keepers() {
    return {{{"org.gnome.SessionManager", "/org/gnome/SessionManager", "org.gnome.SessionManager", "IsInhibited", {8U}},
             {"org.kde.Solid.PowerManagement.PolicyAgent",
              "/org/kde/Solid/PowerManagement/PolicyAgent",
              "org.kde.Solid.PowerManagement.PolicyAgent",
              "HasInhibition",
              {4U}},
             {"org.freedesktop.PowerManagement.Inhibit",
              "/org/freedesktop/PowerManagement/Inhibit",
              "org.freedesktop.PowerManagement.Inhibit",
              "HasInhibit",
              {}}}};
}

QDBusMessage listInhibitors() {
    auto question = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
        QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("ListInhibitors"));
    question.setAutoStartService(false);
    return question;
}

/// The application of this user that holds off idleness; those of other users and of the system say nothing about them.
std::optional<std::string> inhibitorIn(const QDBusMessage& answer) {
    if (!BoundedBusConnection::isAnswer(answer, "a(ssssuu)")) return std::nullopt;
    const auto list = answer.arguments().at(0).value<QDBusArgument>();
    std::optional<std::string> found;
    list.beginArray();
    while (!list.atEnd()) {
        QString what, who, why, mode;
        uint user = 0, process = 0;
        list.beginStructure();
        list >> what >> who >> why >> mode >> user >> process;
        list.endStructure();
        if (what.split(u':').contains(u"idle") && mode == u"block" && user == getuid()) found = who.toStdString();
    }
    list.endArray();
    return found;
}

std::optional<std::string> logindInhibitor(const Deadline& deadline) {
    const BoundedBusConnection system(BoundedBusConnection::systemAddress(), deadline.within(onePatience));
    if (!system.isConnected()) return std::nullopt;
    return inhibitorIn(system.call(listInhibitors(), deadline.within(onePatience)));
}

}  // namespace

std::optional<std::string> LinuxPresenceSource::quietPresence() {
    const Deadline deadline(wholePatience);
    SessionBusQuestions bus(deadline, onePatience);
    for (const auto& keeper : keepers())
        if (bus.answer(keeper.service, keeper.path, keeper.interface, keeper.method, keeper.arguments).toBool())
            return fmt::format("{} holds idleness off", keeper.service);
    if (const auto who = logindInhibitor(deadline)) return fmt::format("logind: {} holds idleness off", *who);
    const auto front = applications_.frontmost();
    if (!front || front->processIdentifier <= 0) return std::nullopt;
    const auto isFront = [&](const std::string& desktopId) {
        return !desktopId.empty() &&
               text::equalsIgnoringCase(identity_.bundleIdentifier(desktopId), front->bundleIdentifier.value_or(""));
    };
    if (!mprisPlays(bus, static_cast<pid_t>(front->processIdentifier), isFront)) return std::nullopt;
    return fmt::format("{} plays", front->localizedName.value_or("the application in front"));
}

Channel LinuxPresenceSource::channel() {
    Channel channel{.question = "calls and films", .name = "idle inhibitors of logind and the session, MPRIS"};
    const Deadline deadline(wholePatience);
    const BoundedBusConnection system(BoundedBusConnection::systemAddress(), deadline.within(onePatience));
    channel.isAvailable =
        SessionBusQuestions(deadline).isThere() ||
        (system.isConnected() && BoundedBusConnection::isAnswer(system.call(listInhibitors(), deadline), "a(ssssuu)"));
    if (channel.isAvailable) return channel;
    channel.reason = "neither the bus of the user's session nor logind answers";
    channel.remedy = "Start it inside the desktop session, where DBUS_SESSION_BUS_ADDRESS is set.";
    return channel;
}

}  // namespace quorvane::platform
