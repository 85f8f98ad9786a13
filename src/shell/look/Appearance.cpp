#include "shell/look/Appearance.h"

#include "shell/look/Motion.h"
#include "shell/look/Theme.h"

#include <QApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QEventLoop>
#include <QFile>
#include <QPalette>
#include <QTimer>
#include <functional>
#include <optional>

namespace quorvane {
namespace {

constexpr int portalPatience = 300;  // milliseconds that the start may wait

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString portalInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");
const QString gnomeGroup = QStringLiteral("org.gnome.desktop.interface");

/// What the portal has said so far.
struct PortalSettings {
    std::optional<unsigned> colorScheme;  // 0: no preference, 1: dark, 2: light
    bool isHighContrast = false;
    bool hasAnimations = true;

    void note(const QString& group, const QString& key, const QVariant& value) {
        if (group == appearanceGroup && key == QLatin1String("color-scheme")) colorScheme = value.toUInt();
        if (group == appearanceGroup && key == QLatin1String("contrast")) isHighContrast = value.toUInt() == 1;
        if (group == gnomeGroup && key == QLatin1String("enable-animations")) hasAnimations = value.toBool();
    }
};

/// Without an address Qt's library would start a bus of its own, which nobody is on.
bool hasSessionBus() {
    return !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") ||
           QFile::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus"));
}

bool isPaletteDark() {
    const QPalette palette = QApplication::palette();
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

/// Asks the portal and hears of what changes. `changed` is called for each setting, also for late answers.
class PortalListener : public QObject {
    Q_OBJECT

public:
    explicit PortalListener(std::function<void()> changed) : changed_(std::move(changed)) {
        QDBusConnection bus = QDBusConnection::sessionBus();
        if (!bus.isConnected()) return;
        qDBusRegisterMetaType<QDBusVariant>();  // Qt finds the types of a slot by their names, and this one by none
        bus.connect(portalService, portalPath, portalInterface, QStringLiteral("SettingChanged"), this,
                    SLOT(settingChanged(QString, QString, QDBusVariant)));
        QDBusMessage request =
            QDBusMessage::createMethodCall(portalService, portalPath, portalInterface, QStringLiteral("ReadAll"));
        request << QStringList{appearanceGroup, gnomeGroup};
        auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(request), this);
        QEventLoop patience;
        connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] { take(*watcher); });
        connect(watcher, &QDBusPendingCallWatcher::finished, &patience, &QEventLoop::quit);
        QTimer::singleShot(portalPatience, &patience, &QEventLoop::quit);
        patience.exec(QEventLoop::ExcludeUserInputEvents);
    }

    [[nodiscard]] const PortalSettings& settings() const { return settings_; }

private Q_SLOTS:
    void settingChanged(const QString& group, const QString& key, const QDBusVariant& value) {
        settings_.note(group, key, value.variant());
        changed_();
    }

private:
    void take(QDBusPendingCallWatcher& watcher) {
        watcher.deleteLater();
        const QDBusMessage reply = watcher.reply();
        if (watcher.isError() || reply.signature() != QLatin1String("a{sa{sv}}")) return;
        const auto argument = reply.arguments().constFirst().value<QDBusArgument>();
        argument.beginMap();
        while (!argument.atEnd()) {
            QString group;
            QVariantMap entries;
            argument.beginMapEntry();
            argument >> group >> entries;
            argument.endMapEntry();
            for (auto entry = entries.cbegin(); entry != entries.cend(); ++entry) {
                settings_.note(group, entry.key(), entry.value());
            }
        }
        argument.endMap();
        changed_();
    }

    PortalSettings settings_;
    std::function<void()> changed_;
};

}  // namespace

struct Appearance::Impl {
    bool isDesktopDark = isPaletteDark();
    AppearancePreference preference{.isDark = isDesktopDark};
    std::unique_ptr<PortalListener> portal;

    [[nodiscard]] AppearancePreference fromPortal() const {
        const PortalSettings& settings = portal->settings();
        const unsigned scheme = settings.colorScheme.value_or(0);
        return {.isDark = scheme == 0 ? isDesktopDark : scheme == 1,
                .isHighContrast = settings.isHighContrast,
                .hasAnimations = settings.hasAnimations};
    }
};

Appearance::Appearance() : impl_(std::make_unique<Impl>()) {
    const QByteArray wish = qgetenv("QUORVANE_APPEARANCE");
    if (wish == "light" || wish == "dark") {
        impl_->preference.isDark = wish == "dark";
        return;
    }
    if (!hasSessionBus()) return;
    impl_->portal = std::make_unique<PortalListener>([this] {
        if (!impl_->portal) return;  // still being made: the answer is read below
        const AppearancePreference now = impl_->fromPortal();
        if (now == impl_->preference) return;
        impl_->preference = now;
        changed.send();
    });
    impl_->preference = impl_->fromPortal();
}

Appearance::~Appearance() = default;

const AppearancePreference& Appearance::preference() const {
    return impl_->preference;
}

void applyAppearance(const AppearancePreference& preference) {
    Motion::setAllowed(preference.hasAnimations);
    const Theme chosen = preference.isDark ? Theme::dark() : Theme::light();
    applyTheme(preference.isHighContrast ? chosen.withHighContrast() : chosen);
}

}  // namespace quorvane

#include "Appearance.moc"
