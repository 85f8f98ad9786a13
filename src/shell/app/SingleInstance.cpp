#include "shell/app/SingleInstance.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVirtualObject>

namespace quorvane {
namespace {

constexpr int patienceInMilliseconds = 3000;

QString service() {
    return QString::fromLatin1(platform::ApplicationRemote::service);
}
QString path() {
    return QString::fromLatin1(platform::ApplicationRemote::path);
}
QString applicationInterface() {
    return QString::fromLatin1(platform::ApplicationRemote::applicationInterface);
}

/// The compositor wants to see the token of the start that asks for the focus; Qt takes it from the environment.
void keepToken(const QVariantMap& platformData) {
    const auto token = platformData.value(QStringLiteral("activation-token")).toString();
    if (!token.isEmpty()) qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
}

}  // namespace

/// The object at the path that belongs to the name.
class SingleInstance::ApplicationObject final : public QDBusVirtualObject {
public:
    explicit ApplicationObject(SingleInstance& owner) : owner_(owner) {}

    [[nodiscard]] QString introspect(const QString&) const override {
        return QStringLiteral(R"(<interface name="org.freedesktop.Application">
  <method name="Activate"><arg type="a{sv}" name="platform_data" direction="in"/></method>
  <method name="Open"><arg type="as" name="uris" direction="in"/>
    <arg type="a{sv}" name="platform_data" direction="in"/></method>
  <method name="ActivateAction"><arg type="s" name="action_name" direction="in"/>
    <arg type="av" name="parameter" direction="in"/><arg type="a{sv}" name="platform_data" direction="in"/></method>
</interface>
<interface name="org.zelkor.Quorvane1">
  <method name="Pause"><arg type="b" name="is_on" direction="out"/><arg type="s" name="hindrance" direction="out"/></method>
  <method name="Start"><arg type="b" name="is_on" direction="out"/><arg type="s" name="hindrance" direction="out"/></method>
</interface>)");
    }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        if (message.interface() == QLatin1String(platform::ApplicationRemote::controlInterface))
            return control(message, connection);
        if (message.interface() != applicationInterface()) return false;
        const bool isAction = message.member() == QLatin1String("ActivateAction");
        if (!isAction && message.member() != QLatin1String("Activate") && message.member() != QLatin1String("Open"))
            return false;
        const auto arguments = message.arguments();
        // Answered before it is done: who asks doesn't wait for a window.
        connection.send(message.createReply());
        if (!arguments.isEmpty()) keepToken(qdbus_cast<QVariantMap>(arguments.last()));
        if (isAction)
            owner_.actionActivated.send(arguments.value(0).toString().toStdString());
        else
            owner_.activated.send();
        return true;
    }

private:
    bool control(const QDBusMessage& message, const QDBusConnection& connection) {
        const bool isStart = message.member() == QLatin1String("Start");
        if ((!isStart && message.member() != QLatin1String("Pause")) || !owner_.setRecording) return false;
        const auto recording = owner_.setRecording(isStart);
        return connection.send(message.createReply({recording.isOn, QString::fromStdString(recording.hindrance)}));
    }

    SingleInstance& owner_;
};

SingleInstance::SingleInstance(platform::DBusConnection& sessionBus)
    : sessionBus_(sessionBus), object_(std::make_unique<ApplicationObject>(*this)) {
    auto& bus = sessionBus_.bus();
    if (!bus.isConnected()) return;
    // The object comes first: who finds the name calls at once.
    bus.registerVirtualObject(path(), object_.get());
    const auto reply = bus.interface()->registerService(service(), QDBusConnectionInterface::DontQueueService,
                                                        QDBusConnectionInterface::DontAllowReplacement);
    if (!reply.isValid()) return;
    role_ = reply.value() == QDBusConnectionInterface::ServiceRegistered ? Role::first : Role::second;
}

SingleInstance::~SingleInstance() {
    if (!sessionBus_.isConnected()) return;
    if (role_ == Role::first) sessionBus_.bus().interface()->unregisterService(service());
    sessionBus_.bus().unregisterObject(path());
}

bool SingleInstance::activateOther(const std::string& token) {
    auto call = QDBusMessage::createMethodCall(service(), path(), applicationInterface(), QStringLiteral("Activate"));
    call.setAutoStartService(false);
    QVariantMap platformData;
    if (!token.empty()) {
        platformData[QStringLiteral("activation-token")] = QString::fromStdString(token);
        platformData[QStringLiteral("desktop-startup-id")] = QString::fromStdString(token);
    }
    call << platformData;
    return sessionBus_.bus().call(call, QDBus::Block, patienceInMilliseconds).type() == QDBusMessage::ReplyMessage;
}

}  // namespace quorvane
