#include "platform/linux/loop/QtRunLoop.h"

#include "platform/Clock.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QEvent>
#include <QPointer>
#include <QThread>
#include <QThreadPool>
#include <QTimer>
#include <algorithm>
#include <atomic>
#include <cassert>
#include <cmath>
#include <limits>
#include <utility>

namespace quorvane::platform {
namespace {

constexpr Seconds coarseFrom = 5s;
constexpr int workers = 3;
constexpr std::chrono::milliseconds workerRest = 5s;

std::chrono::milliseconds milliseconds(Seconds duration) {
    constexpr double most = std::numeric_limits<int>::max();
    return std::chrono::milliseconds{std::llround(std::clamp(std::ceil(duration.count() * 1000), 0.0, most))};
}

/// The handle of a Qt timer that belongs to the loop's context. The timer may be in the middle of firing when the
/// handle goes, so it is only silenced here and deleted by the loop.
template <class Handle>
class QtTimerHandle final : public Handle {
public:
    explicit QtTimerHandle(QTimer* timer) : timer_(timer) {}
    QtTimerHandle(const QtTimerHandle&) = delete;
    QtTimerHandle& operator=(const QtTimerHandle&) = delete;
    ~QtTimerHandle() override {
        if (!timer_) return;
        timer_->stop();
        timer_->disconnect();
        timer_->deleteLater();
    }

private:
    QPointer<QTimer> timer_;
};

QTimer* startTimer(QObject& context, Seconds interval, bool once, std::function<void()> work) {
    auto* timer = new QTimer(&context);
    timer->setSingleShot(once);
    timer->setTimerType(!once && interval >= coarseFrom ? Qt::CoarseTimer : Qt::PreciseTimer);
    const auto shared = std::make_shared<std::function<void()>>(std::move(work));
    QObject::connect(timer, &QTimer::timeout, &context, [shared] {
        // The copy keeps the work alive when it destroys its own handle.
        const auto running = shared;  // NOLINT(performance-unnecessary-copy-initialization)
        (*running)();
    });
    timer->start(once ? milliseconds(interval) : std::max(1ms, milliseconds(interval)));
    return timer;
}

std::unique_ptr<QCoreApplication> applicationIfMissing() {
    if (QCoreApplication::instance()) return nullptr;
    static char name[] = "quorvane";
    static char* arguments[] = {name, nullptr};
    static int count = 1;
    // In the C locale Qt says on standard error that it takes UTF-8 instead. That is what we want, without the words.
    const auto before = qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    auto application = std::make_unique<QCoreApplication>(count, arguments);
    qInstallMessageHandler(before);
    return application;
}

}  // namespace

struct QtRunLoop::Impl {
    std::unique_ptr<QCoreApplication> application = applicationIfMissing();
    std::atomic<int> posted = 0;  ///< how much waits for its turn
    QObject context;              ///< lives on the main thread; owns the timers and receives what is posted
    QThreadPool pool;             ///< dies first: its work may still post
};

QtRunLoop::QtRunLoop() : impl_(std::make_unique<Impl>()) {
    impl_->pool.setMaxThreadCount(workers);
    impl_->pool.setExpiryTimeout(static_cast<int>(workerRest.count()));
}

QtRunLoop::~QtRunLoop() = default;

Date QtRunLoop::now() const {
    return currentDate();
}

Seconds QtRunLoop::uptime() const {
    return platform::uptime();
}

std::unique_ptr<Timer> QtRunLoop::every(Seconds interval, std::function<void()> fire) {
    assert(isMainThread() && interval > 0s);
    return std::make_unique<QtTimerHandle<Timer>>(startTimer(impl_->context, interval, false, std::move(fire)));
}

std::unique_ptr<WorkItem> QtRunLoop::after(Seconds delay, std::function<void()> work) {
    assert(isMainThread());
    return std::make_unique<QtTimerHandle<WorkItem>>(startTimer(impl_->context, delay, true, std::move(work)));
}

void QtRunLoop::post(std::function<void()> work) {
    ++impl_->posted;
    auto run = [this, work = std::move(work)] {
        --impl_->posted;
        work();
    };
    QMetaObject::invokeMethod(&impl_->context, std::move(run), Qt::QueuedConnection);
}

void QtRunLoop::background(std::function<void()> work) {
    impl_->pool.start(std::move(work));
}

bool QtRunLoop::isMainThread() const {
    return QThread::currentThread() == impl_->context.thread();
}

int QtRunLoop::run() {
    return QCoreApplication::exec();
}

bool QtRunLoop::runUntil(const std::function<bool()>& holds, Seconds patience) {
    bool isOver = false;
    const auto end = after(patience, [&] { isOver = true; });
    while (!holds() && !isOver)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return holds();
}

void QtRunLoop::runPosted() {
    while (impl_->posted > 0)
        QCoreApplication::sendPostedEvents(&impl_->context, QEvent::MetaCall);
}

bool QtRunLoop::finishBackground(Seconds patience) {
    return impl_->pool.waitForDone(static_cast<int>(milliseconds(patience).count()));
}

void QtRunLoop::quit(int status) {
    post([status] { QCoreApplication::exit(status); });
}

}  // namespace quorvane::platform
