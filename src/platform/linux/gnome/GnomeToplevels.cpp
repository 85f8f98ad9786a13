#include "platform/linux/gnome/GnomeToplevels.h"

#include <QDBusArgument>
#include <QDBusVariant>
#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace quorvane::platform {
namespace {

constexpr const char* focusInterface = "com.quorvane.Focus1";
constexpr Seconds patienceForGreeting = 0.25s;
constexpr Seconds patienceForAnswer = 1s;
constexpr Seconds firstRetry = 1s;
constexpr Seconds longestRetry = 30s;
constexpr Seconds restFromFlood = 1s;
constexpr int mostSignalsASecond = 100;  // the extension sends 20 at most
constexpr qsizetype longestText = 4096;
constexpr std::size_t mostApplications = 1000;

// The bus itself sees to it that none but the owner's come.
QString changesRule() {
    return QStringLiteral("type='signal',sender='com.quorvane.Focus',interface='com.quorvane.Focus1',member='Changed'");
}

/// What the extension says of a window.
struct Description {
    QString appId;
    QString sandboxedAppId;
    QString gtkApplicationId;
    QString wmClass;
    QString title;
    std::uint32_t pid = 0;
    bool isEmpty = true;
    bool isRight = true;  ///< has every value the type that it should have?

    void note(const QString& key, const QVariant& value) {
        isEmpty = false;
        const std::array texts{std::pair{"app_id", &appId}, std::pair{"sandboxed_app_id", &sandboxedAppId},
                               std::pair{"gtk_application_id", &gtkApplicationId}, std::pair{"wm_class", &wmClass},
                               std::pair{"title", &title}};
        for (const auto& [name, text] : texts)
            if (key == QLatin1String(name)) {
                isRight = isRight && value.typeId() == QMetaType::QString;
                *text = value.toString().left(longestText);
            }
        if (key == QLatin1String("pid")) {
            isRight = isRight && value.typeId() == QMetaType::UInt;
            pid = value.toUInt();
        }
    }

    [[nodiscard]] ToplevelWindow window() const {
        const bool hasDesktopFile = !appId.startsWith(QLatin1String("window:"));
        for (const QString& id : {hasDesktopFile ? appId : QString(), sandboxedAppId, gtkApplicationId, wmClass})
            if (!id.isEmpty())
                return {.appId = id.toStdString(), .title = title.toStdString(), .processIdentifier = process()};
        return {.appId = {}, .title = title.toStdString(), .processIdentifier = process()};
    }

private:
    [[nodiscard]] std::int64_t process() const {
        return pid <= std::numeric_limits<std::int32_t>::max() ? std::int64_t{pid} : 0;
    }
};

/// a{sv}
Description readDescription(const QDBusArgument& argument) {
    Description description;
    argument.beginMap();
    while (!argument.atEnd()) {
        QString key;
        QDBusVariant value;
        argument.beginMapEntry();
        argument >> key >> value;
        argument.endMapEntry();
        description.note(key, value.variant());
    }
    argument.endMap();
    return description;
}

/// None if it is not what the extension says.
std::optional<GnomeToplevels::Told> readWindows(const QDBusMessage& message) {
    if (message.signature() != u"a{sv}aa{sv}") return std::nullopt;
    const auto front = readDescription(message.arguments().at(0).value<QDBusArgument>());
    if (!front.isRight) return std::nullopt;
    GnomeToplevels::Told windows;
    if (!front.isEmpty) windows.active = front.window();
    const auto list = message.arguments().at(1).value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd() && windows.all.size() < mostApplications) {
        const auto description = readDescription(list);
        if (!description.isRight) return std::nullopt;
        windows.all.push_back(description.window());
    }
    list.endArray();
    return windows;
}

}  // namespace

GnomeToplevels::GnomeToplevels(RunLoop& runLoop)
    : runLoop_(runLoop), flood_(mostSignalsASecond), untilRetry_(firstRetry),
      bus_(BoundedBusConnection::sessionAddress(), Deadline(patienceForGreeting)),
      heard_(bus_.observe([this](const QDBusMessage& signal) { hear(signal); })),
      ended_(bus_.observeEnd([this] { setOwner({}); })) {
    bus_.hear("org.freedesktop.DBus", "NameOwnerChanged");
    bus_.hear(focusInterface, "Changed");
    bus_.listen(BusListener::ownerRule(QString::fromLatin1(service)));
    bus_.listen(changesRule());
    bus_.ask(BusListener::busQuestion("GetNameOwner", {QString::fromLatin1(service)}), patienceForAnswer,
             [this](const QDBusMessage& answer) {
                 const bool isOwned = BoundedBusConnection::isAnswer(answer, "s");
                 if (owner_.isEmpty() && isOwned) setOwner(answer.arguments().constFirst().toString());
             });
}

void GnomeToplevels::hear(const QDBusMessage& signal) {
    if (signal.interface() == QLatin1String(focusInterface)) {
        if (signal.service() != owner_ || isTooMuch()) return;
        auto told = readWindows(signal);
        if (!told) return;
        latest_ = std::move(told);
        if (!settling_) settling_ = runLoop_.after(0s, [this] { settle(); });
        return;
    }
    if (signal.service() != u"org.freedesktop.DBus" || signal.signature() != u"sss") return;
    if (signal.arguments().at(0).toString() == QLatin1String(service)) setOwner(signal.arguments().at(2).toString());
}

/// Has the bus pass nothing on for a while, once there has been too much of it.
bool GnomeToplevels::isTooMuch() {
    if (isResting_) return true;
    if (!flood_.rises(runLoop_.uptime())) return false;
    isResting_ = true;
    bus_.forget(changesRule());
    rest_ = runLoop_.after(restFromFlood, [this] {
        isResting_ = false;
        flood_.ebb();
        bus_.listen(changesRule());
        ask();
    });
    return true;
}

void GnomeToplevels::setOwner(const QString& owner) {
    owner_ = owner;
    latest_.reset();
    retry_.reset();
    untilRetry_ = firstRetry;
    problem_ = "the extension has not answered yet";
    if (owner_.isEmpty())
        set({});
    else
        ask();
}

void GnomeToplevels::ask() {
    if (owner_.isEmpty()) return;
    const auto question = QDBusMessage::createMethodCall(owner_, QStringLiteral("/com/quorvane/Focus"),
                                                         QString::fromLatin1(focusInterface), QStringLiteral("Get"));
    bus_.ask(question, patienceForAnswer, [this, asked = owner_](const QDBusMessage& answer) {
        if (asked == owner_) noteAnswer(answer);
    });
}

void GnomeToplevels::noteAnswer(const QDBusMessage& answer) {
    auto windows = answer.type() == QDBusMessage::ReplyMessage ? readWindows(answer) : std::nullopt;
    if (windows) {
        problem_.clear();
        untilRetry_ = firstRetry;
        // What was told meanwhile is newer.
        if (!latest_) set(std::move(*windows));
        return;
    }
    problem_ = answer.type() == QDBusMessage::ReplyMessage ? "the extension gives an answer that can't be read"
                                                           : "the extension does not answer";
    retry_ = runLoop_.after(untilRetry_, [this] { ask(); });
    untilRetry_ = std::min(untilRetry_ * 2, longestRetry);
}

void GnomeToplevels::settle() {
    settling_.reset();
    auto latest = std::exchange(latest_, std::nullopt);
    if (!latest) return;
    problem_.clear();
    retry_.reset();
    set(std::move(*latest));
}

void GnomeToplevels::set(Told told) {
    if (told == told_) return;
    told_ = std::move(told);
    changed_.send();
}

Channel GnomeToplevels::channel() const {
    Channel channel{.question = "front window and activation",
                    .name = "extension of GNOME Shell",
                    .gives = Sight::applications,
                    .obstacle = Obstacle::other};
    if (!bus_.isConnected()) {
        channel.reason = "no session bus";
    } else if (owner_.isEmpty()) {
        channel.reason = "Quorvane's extension does not run in GNOME Shell";
        channel.remedy = "Run quorvane-cli desktop install, then log in again.";
        channel.obstacle = Obstacle::wayland;
    } else {
        channel.reason = problem_;
    }
    channel.isAvailable = channel.reason.empty();
    if (channel.isAvailable) channel.obstacle = Obstacle::none;
    return channel;
}

}  // namespace quorvane::platform
