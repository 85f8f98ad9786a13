#include "platform/linux/accessibility/AccessibilityBus.h"

#include <QDBusMessage>
#include <QDBusVariant>
#include <utility>

namespace quorvane::platform {
namespace {

constexpr auto timeBetweenAttempts = std::chrono::seconds(2);
constexpr auto validityOfSwitch = std::chrono::seconds(5);
const QString statusInterface = QStringLiteral("org.a11y.Status");
const QString isEnabledProperty = QStringLiteral("IsEnabled");

/// The service of the session that starts the accessibility bus. A question does not start the service itself.
class Launcher {
public:
    explicit Launcher(const Deadline& deadline)
        : deadline_(deadline), session_(BoundedBusConnection::sessionAddress(), deadline) {}

    [[nodiscard]] bool hasSession() const { return session_.isConnected(); }

    /// Empty when there is no such service, or it has no bus.
    [[nodiscard]] QString address(bool mayStart = false) const {
        const auto answer = ask("org.a11y.Bus", "GetAddress", {}, mayStart);
        return BoundedBusConnection::isAnswer(answer, "s") ? answer.arguments().constFirst().toString() : QString();
    }

    [[nodiscard]] bool isEnabled() const {
        const auto answer = ask("org.freedesktop.DBus.Properties", "Get", {statusInterface, isEnabledProperty});
        if (!BoundedBusConnection::isAnswer(answer, "v")) return false;
        const auto value = answer.arguments().constFirst().value<QDBusVariant>().variant();
        return value.typeId() == QMetaType::Bool && value.toBool();
    }

    void enable() const {
        [[maybe_unused]] const auto answer =
            ask("org.freedesktop.DBus.Properties", "Set",
                {statusInterface, isEnabledProperty, QVariant::fromValue(QDBusVariant(true))});
    }

private:
    [[nodiscard]] QDBusMessage ask(const char* interface, const char* method, const QVariantList& arguments,
                                   bool mayStart = false) const {
        auto question = QDBusMessage::createMethodCall(QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
                                                       QString::fromLatin1(interface), QString::fromLatin1(method));
        question.setArguments(arguments);
        question.setAutoStartService(mayStart);
        return session_.call(question, deadline_);
    }

    const Deadline& deadline_;
    BoundedBusConnection session_;
};

}  // namespace

std::shared_ptr<AtspiConnection> AccessibilityBus::connection(const Deadline& deadline) {
    {
        const std::lock_guard lock(mutex_);
        if (connection_ && connection_->isConnected()) return connection_;
        if (Clock::now() < nextAttempt_) return nullptr;
    }
    const auto address = Launcher(deadline).address();
    auto made = address.isEmpty() ? nullptr : std::make_shared<AtspiConnection>(address, deadline);
    if (made && !made->isConnected()) made.reset();
    const std::lock_guard lock(mutex_);
    if (made)
        connection_ = made;
    else
        nextAttempt_ = Clock::now() + timeBetweenAttempts;
    return made;
}

bool AccessibilityBus::isEnabled(const Deadline& deadline) {
    {
        const std::lock_guard lock(mutex_);
        if (Clock::now() < isEnabledUntil_) return isEnabled_;
    }
    const Launcher launcher(deadline);
    const bool isEnabled = !launcher.address().isEmpty() && launcher.isEnabled();
    noteEnabled(isEnabled);
    return isEnabled;
}

bool AccessibilityBus::enable(const Deadline& deadline) {
    const Launcher launcher(deadline);
    const bool isThere = !launcher.address(true).isEmpty();
    if (isThere && !launcher.isEnabled()) launcher.enable();
    const bool isEnabled = isThere && launcher.isEnabled();
    noteEnabled(isEnabled);
    const std::lock_guard lock(mutex_);
    nextAttempt_ = {};
    return isEnabled;
}

AccessibilityBus::Problem AccessibilityBus::problem(const Deadline& deadline) {
    const Launcher launcher(deadline);
    if (!launcher.hasSession()) return {"no session bus", "Start it from a terminal inside the desktop session."};
    if (launcher.address().isEmpty())
        return {"no accessibility bus (org.a11y.Bus) runs in the session",
                "Install at-spi2-core, and grant accessibility in the settings."};
    if (!launcher.isEnabled())
        return {"accessibility is switched off in the session",
                "Grant it in the settings, then start the browsers again."};
    if (!connection(deadline)) return {"the accessibility bus does not answer", "Log in again."};
    return {};
}

void AccessibilityBus::noteEnabled(bool isEnabled) {
    const std::lock_guard lock(mutex_);
    isEnabled_ = isEnabled;
    isEnabledUntil_ = Clock::now() + validityOfSwitch;
}

}  // namespace quorvane::platform
