#include "desktop/support/Waiting.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

namespace quorvane {
namespace {

constexpr std::chrono::milliseconds look = 5ms;

}  // namespace

bool waitUntil(const std::function<bool()>& condition, Seconds timeout) {
    const auto end = uptime() + timeout;
    QTimer looking;
    looking.start(look);
    while (!condition()) {
        if (uptime() >= end) return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

bool staysTrue(const std::function<bool()>& condition, Seconds duration) {
    return !waitUntil([&] { return !condition(); }, duration);
}

int wakeUpsDuring(Seconds duration) {
    int count = 0;
    QEventLoop loop;
    QTimer end;
    end.setSingleShot(true);
    QObject::connect(&end, &QTimer::timeout, &loop, [&loop] { loop.quit(); });
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, &loop, [&] { ++count; });
    end.start(std::chrono::duration_cast<std::chrono::milliseconds>(duration));
    loop.exec();
    return count;
}

Seconds uptime() {
    return std::chrono::steady_clock::now().time_since_epoch();
}

}  // namespace quorvane
