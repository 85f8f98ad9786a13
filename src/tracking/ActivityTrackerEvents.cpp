#include "tracking/ActivityTracker.h"

namespace quorvane {
namespace {

constexpr Seconds minAppSwitchInterval = 1s;
constexpr Seconds ownActivationDelay = 0.25s;
constexpr Seconds vacancyDelay = 5s;  ///< a launcher may have the focus for a moment

/// Under which this application itself comes to the front.
constexpr const char* ownBundleIdentifier = "org.zelkor.Quorvane";

}  // namespace

void ActivityTracker::registerObservers() {
    using platform::SystemEvent;
    observeClose(SystemEvent::willSleep, workspaceObservers_, "ActivityTracker: willSleep");
    observeResume(SystemEvent::didWake, workspaceObservers_, "ActivityTracker: didWake -> tick");
    observeClose(SystemEvent::screensDidSleep, workspaceObservers_, "ActivityTracker: screensDidSleep");
    observeResume(SystemEvent::screensDidWake, workspaceObservers_, "ActivityTracker: screensDidWake -> tick");
    observeClose(SystemEvent::sessionDidLeave, workspaceObservers_, "ActivityTracker: sessionDidLeave");
    observeResume(SystemEvent::sessionDidReturn, workspaceObservers_, "ActivityTracker: sessionDidReturn -> tick");
    observeClose(SystemEvent::screenLocked, distributedObservers_, "ActivityTracker: screenIsLocked");
    observeResume(SystemEvent::screenUnlocked, distributedObservers_, "ActivityTracker: screenIsUnlocked -> tick");
    appActivationObserver_ = desktop_.foreground().observeActivation(
        [weak = weak_.handle()](const std::optional<platform::ForegroundApplication>& application) {
            if (auto* self = weak.get()) self->handleApplicationActivation(application);
        });
    vacancyObserver_ = desktop_.foreground().observeVacancy([weak = weak_.handle()] {
        if (auto* self = weak.get()) self->handleVacancy();
    });
    console_.line("ActivityTracker: ✅ 已注册应用切换事件监听器（带防抖）");
}

void ActivityTracker::observeClose(platform::SystemEvent event, std::vector<Subscription>& observers,
                                   const char* line) {
    observers.push_back(desktop_.systemEvents().observe(event, [weak = weak_.handle(), line] {
        if (auto* self = weak.get()) self->handleClose(line);
    }));
}

void ActivityTracker::observeResume(platform::SystemEvent event, std::vector<Subscription>& observers,
                                    const char* line) {
    observers.push_back(desktop_.systemEvents().observe(event, [weak = weak_.handle(), line] {
        if (auto* self = weak.get()) self->handleResume(line);
    }));
}

void ActivityTracker::handleClose(const char* line) {
    console_.line("{}", line);
    isSessionLocked_ = true;
    foregroundApplicationSnapshot_.reset();
    quietPresenceAt_.reset();
    // Not now: the minutes that nobody attended before the lock are nobody's work.
    const Date end = lastSignOfLife();
    finalizeCurrentRecord(end);
    lastFrontAppBundleId_.reset();
    noteAbsence(end, {runLoop_.now(), runLoop_.uptime()});
}

void ActivityTracker::handleResume(const char* line) {
    console_.line("{}", line);
    isSessionLocked_ = false;
    tick();
}

void ActivityTracker::handleApplicationActivation(const std::optional<platform::ForegroundApplication>& application) {
    if (!application) return;
    // Before any debounce, so that a tick, whenever it comes, sees what was activated last.
    foregroundApplicationSnapshot_ = {application->bundleIdentifier.value_or("unknown"),
                                      application->localizedName.value_or("Unknown")};
    const std::string bundleId = foregroundApplicationSnapshot_->bundleIdentifier;
    const ClockLook look = lookAtClocks();
    noteForegroundActivation(look);
    if (lastAppSwitchAt_ && look.uptime - *lastAppSwitchAt_ < minAppSwitchInterval)
        return scheduleActivationTick(minAppSwitchInterval - (look.uptime - *lastAppSwitchAt_));
    lastAppSwitchAt_ = look.uptime;
    if (lastFrontAppBundleId_ == bundleId) return;
    console_.line("ActivityTracker: 🔄 应用切换 - {}", foregroundApplicationSnapshot_->localizedName);
    pendingActivationTick_.reset();
    if (bundleId == ownBundleIdentifier)
        scheduleActivationTick(ownActivationDelay);
    else
        tick();
}

/// No window has the focus: whoever had been in front no longer is, and the desktop is asked afresh. If none gets it
/// soon, the record ends here.
void ActivityTracker::handleVacancy() {
    foregroundApplicationSnapshot_.reset();
    pendingActivationTick_ = runLoop_.after(vacancyDelay, [weak = weak_.handle(), vacantSince = runLoop_.now()] {
        auto* self = weak.get();
        if (self == nullptr) return;
        if (!self->foregroundApplication()) self->closeAndLeave(vacantSince, self->runLoop_.now());
        self->tick();
    });
}

void ActivityTracker::noteForegroundActivation(const ClockLook& look) {
    lastForegroundActivationAt_ = look.uptime;
    lastActivityCallbackAt_ = look.uptime;
    lastUpdate_ = look.now;
    consecutiveIdleTicks_ = 0;
    if (isMonitoringPaused_) resumeMonitoring();
}

void ActivityTracker::scheduleActivationTick(Seconds delay) {
    pendingActivationTick_ = runLoop_.after(delay, [weak = weak_.handle()] {
        if (auto* self = weak.get()) self->tick();
    });
}

void ActivityTracker::removeSystemObservers() {
    workspaceObservers_.clear();
    distributedObservers_.clear();
}

void ActivityTracker::removeActivationObserver() {
    pendingActivationTick_.reset();
    vacancyObserver_.reset();
    if (!appActivationObserver_) return;
    appActivationObserver_.reset();
    console_.line("ActivityTracker: ❌ 已注销应用切换事件监听器");
}

}  // namespace quorvane
