#include "platform/linux/bus/ScreenSaverSignals.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <array>
#include <utility>

namespace quorvane::platform {
namespace {

const std::array interfaces{
    QStringLiteral("org.freedesktop.ScreenSaver"), QStringLiteral("org.gnome.ScreenSaver"),
    QStringLiteral("org.mate.ScreenSaver"),        QStringLiteral("org.cinnamon.ScreenSaver"),
    QStringLiteral("org.xfce.ScreenSaver"),
};

constexpr int patienceInMilliseconds = 1000;

/// "/org/gnome/ScreenSaver"
QString usualPath(QString interface) {
    return u'/' + interface.replace(u'.', u'/');
}

}  // namespace

ScreenSaverSignals::ScreenSaverSignals(std::function<void(bool)> changed)
    : changed_(std::move(changed)), session_(DBusConnection::toSession()) {
    if (!session_.isConnected()) return;
    watcher_.setConnection(session_.bus());
    watcher_.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    connect(&watcher_, &QDBusServiceWatcher::serviceUnregistered, this, &ScreenSaverSignals::noteGone);
    for (const auto& interface : interfaces) {
        paths_[interface] = usualPath(interface);
        watcher_.addWatchedService(interface);
        session_.bus().connect(QString(), QString(), interface, QStringLiteral("ActiveChanged"), this,
                               SLOT(noteActive(QDBusMessage)));
    }
}

void ScreenSaverSignals::ask(const std::function<void(bool)>& answered) {
    if (!session_.isConnected()) return answered(false);
    if (openAnswers_ > 0) return;
    isAnyActive_ = false;
    openAnswers_ = static_cast<int>(interfaces.size());
    for (const auto& interface : interfaces) {
        auto question =
            QDBusMessage::createMethodCall(interface, paths_[interface], interface, QStringLiteral("GetActive"));
        question.setAutoStartService(false);
        auto* watcher = new QDBusPendingCallWatcher(session_.bus().asyncCall(question, patienceInMilliseconds), this);
        connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, answered] {
            watcher->deleteLater();
            const QDBusPendingReply<bool> reply = *watcher;
            isAnyActive_ = isAnyActive_ || (reply.isValid() && reply.value());
            if (--openAnswers_ == 0) answered(isAnyActive_);
        });
    }
}

std::string ScreenSaverSignals::problem() {
    if (!session_.isConnected()) return "no session bus";
    for (const auto& interface : interfaces)
        if (session_.isOwned(interface)) return {};
    return "no screen saver is on the session bus";
}

void ScreenSaverSignals::noteActive(const QDBusMessage& signal) {
    if (signal.signature() != u"b") return;
    const bool isActive = signal.arguments().at(0).toBool();
    if (isActive)
        active_.insert(signal.interface());
    else
        active_.clear();
    paths_[signal.interface()] = signal.path();
    changed_(isActive);
}

void ScreenSaverSignals::noteGone(const QString& name) {
    if (active_.remove(name) && active_.isEmpty()) changed_(false);
}

}  // namespace quorvane::platform
