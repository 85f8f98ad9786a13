#include "shell/app/StatusNotifierHost.h"

#include <QDBusServiceWatcher>
#include <QPointer>
#include <QTimer>

namespace quorvane::StatusNotifierHost {
namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds patience = 15s;
constexpr std::chrono::milliseconds settling = 200ms;  ///< from its name to its object

QString watcherService() {
    return QStringLiteral("org.kde.StatusNotifierWatcher");
}

}  // namespace

void whenThereOrLate(platform::DBusConnection& sessionBus, QObject& context, const std::function<void()>& ready) {
    if (!sessionBus.isConnected() || sessionBus.isOwned(watcherService())) return ready();
    auto* watcher = new QDBusServiceWatcher(watcherService(), sessionBus.bus(),
                                            QDBusServiceWatcher::WatchForRegistration, &context);
    auto* timer = new QTimer(&context);
    timer->setSingleShot(true);
    QObject::connect(watcher, &QDBusServiceWatcher::serviceRegistered, timer, [watcher, timer] {
        watcher->deleteLater();
        timer->start(settling);
    });
    QObject::connect(timer, &QTimer::timeout, &context, [watcher = QPointer(watcher), timer, ready] {
        if (watcher) watcher->deleteLater();
        timer->deleteLater();
        ready();
    });
    timer->start(patience);
}

}  // namespace quorvane::StatusNotifierHost
