#include "tracking/ActivityTracker.h"

#include "store/OverlapDetectionService.h"

#include <algorithm>
#include <utility>

namespace quorvane {
namespace {

constexpr Seconds firstTickDelay = 0.5s;
constexpr Seconds maintenanceInterval = 300s;
constexpr Seconds minActivityCallbackInterval = 1s;

const char* runningText(bool isRunning) {
    return isRunning ? "运行中" : "已停止";
}

}  // namespace

ActivityTracker::ActivityTracker(platform::RunLoop& runLoop, platform::Desktop& desktop,
                                 KeyboardMonitor& keyboardMonitor, MouseMonitor& mouseMonitor, TrackerServices services,
                                 ConsoleSink& console)
    : runLoop_(runLoop), desktop_(desktop), keyboardMonitor_(keyboardMonitor), mouseMonitor_(mouseMonitor),
      services_(services), console_(console), lastUpdate_(runLoop.now()), lastLook_{runLoop.now(), runLoop.uptime()},
      currentTickInterval_(activeTickInterval) {
    examineCapture();
}

ActivityTracker::~ActivityTracker() {
    console_.line("ActivityTracker: deinit - 清理资源");
    console_.line("ActivityTracker: 内存使用情况 - 当前记录: {}", currentRecord_ ? "有" : "无");
    console_.line("ActivityTracker: 定时器状态 - 主定时器: {}, 清理定时器: {}", runningText(timer_ != nullptr),
                  runningText(cleanupTimer_ != nullptr));
    stop();
    removeSystemObservers();
    removeActivationObserver();
    cleanupTimer_.reset();
}

void ActivityTracker::configure(ModelContext& modelContext) {
    modelContext_ = modelContext.weak();
    adoptPause(modelContext);
    const LiveRecord liveRecord = [weak = weak_.handle()]() -> std::optional<Uuid> {
        const auto* self = weak.get();
        return self && self->currentRecord_ ? std::optional(self->currentRecord_->id()) : std::nullopt;
    };
    dataCleanupService_ = std::make_unique<DataCleanupService>(modelContext, runLoop_, console_, liveRecord);
    dataCleanupService_->performBackgroundCleanup();
    cleanupTimer_ = runLoop_.every(maintenanceInterval, [this, weak = weak_.handle()] {
        runLoop_.post([weak] {
            if (auto* self = weak.get()) self->runMaintenance();
        });
    });
    if (auto* context = modelContext_.get())
        OverlapDetectionService(*context, runLoop_, console_, RecordSpans::sliceSize, liveRecord)
            .detectAndResolveOverlaps();
}

void ActivityTracker::runMaintenance() {
    console_.line("ActivityTracker: 执行定期数据清理和合并...");
    if (dataCleanupService_) dataCleanupService_->performBackgroundCleanup();
}

void ActivityTracker::start() {
    if (isTracking_) {
        console_.line("ActivityTracker: Already tracking");
        return;
    }
    console_.line("ActivityTracker: Starting tracking with modelContext: {}", modelContext_ ? "true" : "false");
    isTracking_ = true;
    examineCapture();
    isTrackingChanged.send(true);
    lastLook_ = {runLoop_.now(), runLoop_.uptime()};
    lastUpdate_ = lastLook_.now;
    watchedSince_ = lastLook_.now;
    keepAwaySince(std::nullopt);  // of a run that crashed
    lastRecordEnd_ = endOfNewestRecord();
    registerObservers();
    const auto onActivity = [weak = weak_.handle()] {
        if (auto* self = weak.get()) self->handleUserActivity();
    };
    keyboardMonitor_.onActivity = onActivity;
    mouseMonitor_.onActivity = onActivity;
    keyboardMonitor_.startMonitoring();
    mouseMonitor_.startMonitoring();
    scheduleTimer(activeTickInterval);
    firstTick_ = runLoop_.after(firstTickDelay, [weak = weak_.handle()] {
        if (auto* self = weak.get()) self->tick();
    });
}

/// An earlier run may have ended within the second that its last record was given.
std::optional<Date> ActivityTracker::endOfNewestRecord() {
    auto* context = modelContext_.get();
    if (context == nullptr) return std::nullopt;
    try {
        const auto newest =
            context->fetch<ActivityRecord>({.sort = {descending(&ActivityRecord::startTime)}, .limit = 1});
        return newest.empty() ? std::nullopt : newest.front()->endTime();
    } catch (const StoreError&) {
        return std::nullopt;
    }
}

void ActivityTracker::scheduleTimer(Seconds interval) {
    currentTickInterval_ = interval;
    timer_ = runLoop_.every(interval, [weak = weak_.handle()] {
        if (auto* self = weak.get()) self->tick();
    });
}

void ActivityTracker::stop() {
    if (!isTracking_) return;
    isTracking_ = false;
    endAbsence({runLoop_.now(), runLoop_.uptime()});
    returnWatch_.reset();
    isTrackingChanged.send(false);
    const Date end = lastSignOfLife();
    timer_.reset();
    firstTick_.reset();
    pendingActivityCallback_.reset();
    keyboardMonitor_.stopMonitoring();
    mouseMonitor_.stopMonitoring();
    keyboardMonitor_.onActivity = nullptr;
    mouseMonitor_.onActivity = nullptr;
    finalizeCurrentRecord(end);
    removeSystemObservers();
    removeActivationObserver();
    cleanupTimer_.reset();
    cachedSettings_.reset();
    cachedWorkTime_.reset();
    windowInfoCache_.clear();
    foregroundApplicationSnapshot_.reset();
    quietPresenceAt_.reset();
}

void ActivityTracker::handleUserActivity() {
    const auto confirm = [this] {
        const ClockLook look = lookAtClocks();
        lastActivityCallbackAt_ = look.uptime;
        lastUpdate_ = look.now;
        desktop_.systemEvents().noteInput();
    };
    const Seconds uptime = runLoop_.uptime();
    if (!lastActivityCallbackAt_ || uptime - *lastActivityCallbackAt_ >= minActivityCallbackInterval) return confirm();
    const Seconds rest = minActivityCallbackInterval - (uptime - *lastActivityCallbackAt_);
    pendingActivityCallback_ = runLoop_.after(rest, [confirm, weak = weak_.handle()] {
        if (weak.get()) confirm();
    });
}

ClockLook ActivityTracker::lookAtClocks() {
    const ClockLook look{runLoop_.now(), runLoop_.uptime()};
    const ClockLook before = std::exchange(lastLook_, look);
    if (!ActivityTrackingPolicy::isUnbroken(before, look, 2 * currentTickInterval_)) noteBreak(look);
    return look;
}

/// Nobody is told of each key; the monitors know of the last one to the moment, and so does the desktop where they may
/// not listen. By the clock as it was at the last look.
Date ActivityTracker::lastSignOfLife() const {
    Seconds untouched = desktop_.idle().secondsSinceLastInput();
    if (isAnyMonitorListening()) {
        const Seconds unheard = std::min(keyboardMonitor_.getIdleTime(), mouseMonitor_.getIdleTime());
        untouched = untouched < 0s ? unheard : std::min(untouched, unheard);
    }
    if (untouched < 0s) return lastUpdate_;
    const Seconds heardAt = runLoop_.uptime() - untouched;
    return std::max<Date>(lastUpdate_, lastLook_.now + (heardAt - lastLook_.uptime));
}

/// Nobody watched, or the clock was set: what lies between is nobody's time. The open record ends at the last sign of
/// life, as the clock had it then, and the next tick begins another one.
void ActivityTracker::noteBreak(const ClockLook& look) {
    if (currentRecord_) {
        console_.line("ActivityTracker: the time was interrupted, the record ends at {}", describe(lastUpdate_));
        finalizeCurrentRecord(lastUpdate_, lastUpdate_);
        lastFrontAppBundleId_.reset();
        if (!isTickRunning_) scheduleActivationTick(0s);
    }
    lastUpdate_ = look.now;
    lastRecordEnd_.reset();
    cachedWorkTime_.reset();
}

}  // namespace quorvane
