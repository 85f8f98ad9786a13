#include "desktop/support/SettingsPortal.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QMap>
#include <cstdlib>
#include <stdexcept>

namespace quorvane {
namespace {

const QString interfaceName = QStringLiteral("org.freedesktop.portal.Settings");
const QString group = QStringLiteral("org.freedesktop.appearance");
const QString key = QStringLiteral("color-scheme");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");

using Groups = QMap<QString, QVariantMap>;

QVariant colorScheme(bool isDark) {
    return isDark ? 1U : 2U;
}

}  // namespace

class SettingsPortal::Settings final : public QDBusVirtualObject {
public:
    explicit Settings(bool isDark) : isDark_(isDark) { qDBusRegisterMetaType<Groups>(); }
    void setDark(bool isDark) { isDark_ = isDark; }

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        if (message.member() != QLatin1String("ReadAll")) return false;
        const Groups groups{{group, {{key, colorScheme(isDark_)}}}};
        return connection.send(message.createReply(QVariant::fromValue(groups)));
    }

private:
    bool isDark_;
};

SettingsPortal::SettingsPortal(bool isDark)
    : bus_(QDBusConnection::connectToBus(QString::fromLocal8Bit(std::getenv("DBUS_SESSION_BUS_ADDRESS")),
                                         QStringLiteral("settings-portal"))),
      settings_(std::make_unique<Settings>(isDark)) {
    if (!bus_.registerVirtualObject(path, settings_.get()) ||
        !bus_.registerService(QStringLiteral("org.freedesktop.portal.Desktop")))
        throw std::runtime_error("the settings portal can't be on the bus");
}

SettingsPortal::~SettingsPortal() {
    QDBusConnection::disconnectFromBus(QStringLiteral("settings-portal"));
}

void SettingsPortal::setDark(bool isDark) {
    settings_->setDark(isDark);
    auto signal = QDBusMessage::createSignal(path, interfaceName, QStringLiteral("SettingChanged"));
    signal << group << key << QVariant::fromValue(QDBusVariant(colorScheme(isDark)));
    bus_.send(signal);
}

}  // namespace quorvane
