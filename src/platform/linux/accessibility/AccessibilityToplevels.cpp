#include "platform/linux/accessibility/AccessibilityToplevels.h"

#include "platform/linux/accessibility/AtspiWindows.h"

#include <QDBusError>
#include <algorithm>
#include <utility>

namespace quorvane::platform {
namespace {

constexpr Seconds patienceForSession = 0.25s;
constexpr Seconds patienceForAddress = 2s;
constexpr Seconds firstRetry = 2s;
constexpr Seconds longestRetry = 30s;
const QString launcher = QStringLiteral("org.a11y.Bus");

}  // namespace

AccessibilityToplevels::AccessibilityToplevels(RunLoop& runLoop) : runLoop_(runLoop), untilRetry_(firstRetry) {
    listenToSession();
    askForBus();
}

AccessibilityToplevels::~AccessibilityToplevels() = default;

/// One that hangs now may answer later.
void AccessibilityToplevels::listenToSession() {
    session_ = std::make_unique<BusListener>(BoundedBusConnection::sessionAddress(), Deadline(patienceForSession));
    heard_ = session_->observe([this](const QDBusMessage& signal) {
        if (signal.service() != u"org.freedesktop.DBus" || signal.signature() != u"sss") return;
        if (signal.arguments().at(0).toString() != launcher) return;
        untilRetry_ = firstRetry;
        lose();
        if (!signal.arguments().at(2).toString().isEmpty()) askForBus();
    });
    session_->hear("org.freedesktop.DBus", "NameOwnerChanged");
    session_->listen(BusListener::ownerRule(launcher));
}

void AccessibilityToplevels::askForBus() {
    const auto question = QDBusMessage::createMethodCall(launcher, QStringLiteral("/org/a11y/bus"), launcher,
                                                         QStringLiteral("GetAddress"));
    session_->ask(question, patienceForAddress, [this](const QDBusMessage& answer) {
        // Nobody there: whoever comes will be asked.
        if (BoundedBusConnection::isAnswer(answer, "s"))
            connect(answer.arguments().at(0).toString());
        else if (QDBusError(answer).type() != QDBusError::ServiceUnknown)
            lose();
    });
}

void AccessibilityToplevels::connect(const QString& address) {
    windows_ = std::make_unique<AtspiWindows>(
        runLoop_, address, [this] { settle(); },
        // Not at once: it is they who call.
        [this] { retry_ = runLoop_.after(0s, [this] { lose(); }); });
    if (windows_->isConnected()) {
        untilRetry_ = firstRetry;
        return;
    }
    lose();
}

/// There is no bus any more, or none yet; a moment later there may be.
void AccessibilityToplevels::lose() {
    windows_.reset();
    settle();
    retry_ = runLoop_.after(untilRetry_, [this] {
        if (!session_->isConnected()) listenToSession();
        askForBus();
    });
    untilRetry_ = std::min(untilRetry_ * 2, longestRetry);
}

void AccessibilityToplevels::settle() {
    if (windows_ && !windows_->isSettled()) return;
    auto active = windows_ ? windows_->active() : std::nullopt;
    auto all = windows_ ? windows_->all() : std::vector<ToplevelWindow>();
    if (active == active_ && all == all_) return;
    active_ = std::move(active);
    all_ = std::move(all);
    changed_.send();
}

Channel AccessibilityToplevels::channel() const {
    Channel channel{.question = "front window and activation", .name = "AT-SPI, partial", .gives = Sight::applications};
    if (windows_ && windows_->hasAnswered()) {
        channel.isAvailable = true;
        channel.reason = "terminals, games and others that don't speak to assistive technology are not seen, and "
                         "browsers and Qt applications only once accessibility is granted";
        channel.remedy = "On GNOME, quorvane-cli desktop install lets Quorvane see all of them. Elsewhere grant "
                         "accessibility in the settings, then start browsers again.";
        return channel;
    }
    channel.obstacle = Obstacle::wayland;
    channel.reason = !session_->isConnected() ? "no session bus"
                     : windows_               ? "no application has spoken to assistive technology yet"
                                              : "no accessibility bus (org.a11y.Bus) runs in the session";
    channel.remedy = "Choose an X11 session at the login screen, often called \"Xorg\" or \"X11\".";
    return channel;
}

}  // namespace quorvane::platform
