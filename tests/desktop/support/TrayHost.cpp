#include "desktop/support/TrayHost.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QThread>
#include <algorithm>
#include <cstdlib>
#include <mutex>
#include <stdexcept>

namespace quorvane {
namespace {

QString watcherName() {
    return QStringLiteral("org.kde.StatusNotifierWatcher");
}

QString connectionName() {
    static int number = 0;
    return QStringLiteral("tray-host-%1").arg(++number);
}

TrayHost::Item itemFrom(const QDBusArgument& structure) {
    TrayHost::Item item;
    QVariantMap properties;
    structure.beginStructure();
    structure >> item.id >> properties;
    item.label = properties.value(QStringLiteral("label")).toString().remove(QLatin1Char('_')).toStdString();
    item.isEnabled = properties.value(QStringLiteral("enabled"), true).toBool();
    if (properties.value(QStringLiteral("type")).toString() == QLatin1String("separator")) item.label.clear();
    return item;
}

}  // namespace

/// Lives on a thread of its own, where its calls arrive.
class TrayHost::Watcher final : public QDBusVirtualObject {
public:
    Watcher() {
        moveToThread(&thread_);
        thread_.start();
    }
    ~Watcher() override {
        thread_.quit();
        thread_.wait();
    }

    [[nodiscard]] QString item() const {
        const std::lock_guard guard(mutex_);
        return item_;
    }

    [[nodiscard]] QString introspect(const QString&) const override {
        return QStringLiteral(R"(<interface name="org.kde.StatusNotifierWatcher">
  <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
  <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
</interface>)");
    }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        if (message.member() == QLatin1String("RegisterStatusNotifierItem")) {
            {
                const std::lock_guard guard(mutex_);
                item_ = message.service();
            }
            return connection.send(message.createReply());
        }
        if (message.member() == QLatin1String("Get"))
            return connection.send(message.createReply(QVariant::fromValue(QDBusVariant(true))));
        return false;
    }

private:
    QThread thread_;
    mutable std::mutex mutex_;  ///< guards `item_`
    QString item_;              ///< the unique name of who registered last
};

TrayHost::TrayHost()
    : bus_(QDBusConnection::connectToBus(QString::fromUtf8(std::getenv("DBUS_SESSION_BUS_ADDRESS")), connectionName())),
      watcher_(std::make_unique<Watcher>()) {
    bus_.registerVirtualObject(QStringLiteral("/StatusNotifierWatcher"), watcher_.get());
    if (!bus_.interface()->registerService(watcherName()).isValid()) throw std::runtime_error("the bus refuses a tray");
}

TrayHost::~TrayHost() {
    bus_.unregisterObject(QStringLiteral("/StatusNotifierWatcher"));
    watcher_.reset();
    QDBusConnection::disconnectFromBus(bus_.name());
}

QString TrayHost::service() const {
    return watcher_->item();
}

QVariantList TrayHost::call(const QString& method, const QVariantList& arguments) {
    auto question = QDBusMessage::createMethodCall(service(), QStringLiteral("/MenuBar"),
                                                   QStringLiteral("com.canonical.dbusmenu"), method);
    question.setArguments(arguments);
    return bus_.call(question, QDBus::Block, 5000).arguments();
}

std::vector<TrayHost::Item> TrayHost::menu() {
    static_cast<void>(call(QStringLiteral("AboutToShow"), {0}));
    const auto answer = call(QStringLiteral("GetLayout"), {0, -1, QStringList()});
    std::vector<Item> items;
    if (answer.size() < 2) return items;
    const auto root = answer[1].value<QDBusArgument>();
    static_cast<void>(itemFrom(root));
    root.beginArray();
    while (!root.atEnd()) {
        QDBusVariant child;
        root >> child;
        items.push_back(itemFrom(child.variant().value<QDBusArgument>()));
    }
    return items;
}

std::vector<std::string> TrayHost::labels() {
    std::vector<std::string> labels;
    for (const Item& item : menu())
        labels.push_back(item.label.empty() ? "-" : item.isEnabled ? item.label : "(" + item.label + ")");
    return labels;
}

bool TrayHost::choose(const std::string& label) {
    const auto items = menu();
    const auto item = std::ranges::find(items, label, &Item::label);
    if (item == items.end()) return false;
    static_cast<void>(call(QStringLiteral("Event"), {item->id, QStringLiteral("clicked"),
                                                     QVariant::fromValue(QDBusVariant(0)), QVariant::fromValue(0U)}));
    return true;
}

}  // namespace quorvane
