#include "base/Calendar.h"
#include "base/Text.h"
#include "platform/InBackground.h"
#include "store/AppPreference.h"
#include "store/AppSettings.h"
#include "tracking/ActivityTracker.h"
#include "tracking/ActivityTrackingPolicy.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace quorvane {
namespace {

constexpr Seconds idleTickInterval = 30s;
constexpr Seconds activeWithin = 30s;  ///< input younger than this asks for the short interval
constexpr Seconds userActivityCheckInterval = 30s;
constexpr Seconds foregroundActivationGraceInterval = 3s;
constexpr Seconds settingsCacheValidityInterval = 300s;
constexpr Seconds browserURLRefreshAge = 120s;
constexpr Seconds verboseIdle = 60s;
constexpr int idleTicksToPause = 3;
constexpr Seconds presencePatience = 2s;  ///< far more than an answer takes, unless all workers are busy
constexpr Seconds presenceHoldsFor = 1s;

/// Whole seconds, cut off, as the lines show them.
std::int64_t whole(Seconds seconds) {
    return static_cast<std::int64_t>(std::clamp(seconds.count(), -9e18, 9e18));
}

std::int64_t minutesAsSeconds(std::int64_t minutes) {
    std::int64_t seconds = 0;
    if (!__builtin_mul_overflow(minutes, std::int64_t{60}, &seconds)) return seconds;
    return minutes < 0 ? std::numeric_limits<std::int64_t>::min() : std::numeric_limits<std::int64_t>::max();
}

/// The first row of an entity that is fetched without predicate and order; a failure counts as no row.
template <class E>
std::shared_ptr<E> firstRow(ModelContext& context) {
    try {
        const auto rows = context.fetch<E>({.limit = 1});
        return rows.empty() ? nullptr : rows.front();
    } catch (const StoreError&) {
        return nullptr;
    }
}

/// Sets a flag for as long as it lives.
class Raised {
public:
    explicit Raised(bool& flag) : flag_(flag) { flag_ = true; }
    Raised(const Raised&) = delete;
    Raised& operator=(const Raised&) = delete;
    ~Raised() { flag_ = false; }

private:
    bool& flag_;
};

}  // namespace

void ActivityTracker::tick() {
    if (isTickRunning_) {
        console_.line("ActivityTracker: ⚠️ tick() 重入检测，跳过本次执行");
        return;
    }
    const Raised running(isTickRunning_);
    runTick();
}

void ActivityTracker::runTick() {
    const ClockLook look = lookAtClocks();
    const Date now = look.now;
    adjustTimerFrequency(look.uptime);
    examineCapture();
    const Presence presence = readPresence(look);
    if (!isWorkTime(now)) return leaveOutsideWorkHours(look);
    if (presence.isEnabled && awaitsQuietPresence(presence, look.uptime)) return;
    noteIdleness(presence);
    if (presence.isEnabled && presence.isIdle()) return leaveIdle(presence, look);
    if (isSessionLocked_) {
        console_.line("ActivityTracker: Session locked - finalize current record");
        closeAndLeave(now, now);
        return noteAbsence(now, look);
    }
    if (!captureHealth_.canSee()) {
        console_.line("ActivityTracker: Nothing can be seen: {}", captureHealth_.reason);
        // Who was in front when the view went is not known to be there still, nor since when.
        foregroundApplicationSnapshot_.reset();
        closeAndLeave(lastUpdate_, now);
        return noteUnwatched(look);
    }
    const auto application = foregroundApplication();
    if (!application) {
        console_.line("ActivityTracker: No frontmost application");
        closeAndLeave(now, now);
        return noteReturn(look);
    }
    if (application->bundleIdentifier == platform::loginWindowBundleId) {
        if (currentRecord_) finalizeCurrentRecord(now);
        leave(now);
        return noteAbsence(now, look);
    }
    noteReturn(look);
    if (!currentRecord_ || lastFrontAppBundleId_ != application->bundleIdentifier)
        switchTo(*application, presence, now);
    else
        continueWith(*application, look);
}

/// The end of a pass after which no record is open.
void ActivityTracker::leave(Date now) {
    lastFrontAppBundleId_.reset();
    lastUpdate_ = now;
}

void ActivityTracker::closeAndLeave(Date end, Date now) {
    finalizeCurrentRecord(end);
    leave(now);
}

void ActivityTracker::adjustTimerFrequency(Seconds uptime) {
    if (lastUserActivityCheckAt_ && uptime - *lastUserActivityCheckAt_ < userActivityCheckInterval) return;
    lastUserActivityCheckAt_ = uptime;
    const bool isActive = std::min(keyboardMonitor_.getIdleTime(), mouseMonitor_.getIdleTime()) < activeWithin;
    const Seconds wanted = isActive ? activeTickInterval : idleTickInterval;
    if (std::abs((wanted - currentTickInterval_).count()) <= 1.0) return;
    scheduleTimer(wanted);
    console_.line("ActivityTracker: 定时器频率已调整为 {}秒 (用户{})", whole(wanted), isActive ? "活跃" : "空闲");
}

void ActivityTracker::examineCapture() {
    CaptureHealth health = quorvane::captureHealth(desktop_.sight());
    if (health == captureHealth_) return;
    captureHealth_ = std::move(health);
    captureHealthChanged.send();
}

bool ActivityTracker::isAnyMonitorListening() const {
    return keyboardMonitor_.isMonitoring() || mouseMonitor_.isMonitoring();
}

ActivityTracker::Presence ActivityTracker::readPresence(const ClockLook& look) {
    const Seconds keyboardIdle = keyboardMonitor_.getIdleTime();
    const Seconds mouseIdle = mouseMonitor_.getIdleTime();
    const Seconds rawSystemIdle = desktop_.idle().secondsSinceLastInput();
    const Seconds systemIdle = std::max(rawSystemIdle, Seconds{0});
    ActivityTrackingPolicy::IdleReading reading{
        .systemIdle = systemIdle,
        .inputIdle = std::min(keyboardIdle, mouseIdle),
        .isMonitoring = isAnyMonitorListening(),
        .inGrace = ActivityTrackingPolicy::isWithinForegroundGrace(lastForegroundActivationAt_, look.uptime,
                                                                   foregroundActivationGraceInterval)};
    const Seconds untouched = ActivityTrackingPolicy::effectiveIdle(reading);
    if (quietPresenceAt_) reading.sinceQuietPresence = look.uptime - *quietPresenceAt_;
    const Seconds effectiveIdle = ActivityTrackingPolicy::effectiveIdle(reading);
    const TrackingSettings& settings = trackingSettings();
    if (rawSystemIdle < 0s)
        console_.line("ActivityTracker: ⚠️ 检测到异常的负数空闲时间: {}s，已修正为0",
                      text::shortest(rawSystemIdle.count()));
    if (effectiveIdle > verboseIdle || whole(look.now.time_since_epoch()) % 30 == 0)
        console_.line("ActivityTracker: 🔄 Tick called at {}, idle: {}s (keyboard: {}s, mouse: {}s, system: {}s)",
                      describe(look.now), whole(effectiveIdle), whole(keyboardIdle), whole(mouseIdle),
                      whole(systemIdle));
    return {.effectiveIdle = effectiveIdle,
            .untouched = untouched,
            .threshold = settings.threshold,
            .isEnabled = settings.isEnabled};
}

const ActivityTracker::TrackingSettings& ActivityTracker::trackingSettings() {
    const Seconds uptime = runLoop_.uptime();
    if (!cachedSettings_ || uptime - cachedSettings_->readAt >= settingsCacheValidityInterval) {
        cachedSettings_ = storedTrackingSettings();
        cachedSettings_->readAt = uptime;
    }
    return *cachedSettings_;
}

ActivityTracker::TrackingSettings ActivityTracker::storedTrackingSettings() {
    auto settings = std::make_shared<AppSettings>();  // where none are stored their defaults hold
    if (auto* context = modelContext_.get()) {
        if (const auto stored = firstRow<AppSettings>(*context))
            settings = stored;
        else if (const auto preference = firstRow<AppPreference>(*context))
            return {.threshold = preference->idleThresholdSeconds(), .isEnabled = true};
    }
    return {.threshold = minutesAsSeconds(settings->idleThresholdMinutes()),
            .isEnabled = settings->enableIdleDetection(),
            .splitsByTitle = settings->splitsRecordsByTitle(),
            .countsCalls = settings->countsCallsAsPresence()};
}

bool ActivityTracker::isWorkTime(Date now) {
    const Seconds uptime = runLoop_.uptime();
    if (const auto& cached = cachedWorkTime_; cached && now >= cached->day.start && now < cached->day.end &&
                                              uptime - cached->readAt < settingsCacheValidityInterval)
        return cached->isWorkTime;
    const Calendar calendar = Calendar::current();
    auto* context = modelContext_.get();
    const auto settings = context ? firstRow<AppSettings>(*context) : nullptr;
    const bool isWorkTime = !settings || settings->isWithinWorkHours(now, calendar);
    cachedWorkTime_ = WorkTime{isWorkTime, uptime, calendar.day(now)};
    return isWorkTime;
}

void ActivityTracker::leaveOutsideWorkHours(const ClockLook& look) {
    const DateComponents at = Calendar::current().components(look.now);
    console_.line("ActivityTracker: ⏰ 当前时间不在工作时间内，停止记录");
    console_.line("  当前时间: {}:{:02}, 星期{}", at.hour, at.minute, at.weekday);
    console_.line("  💡 提示: 如需24小时记录，请在设置中关闭'仅追踪工作时间'");
    closeAndLeave(look.now, look.now);
    noteUnwatched(look);
}

/// Who has touched nothing for long may be in a call or before a film. That is asked as long as somebody was there:
/// what begins while nobody is shows nobody. True while all depends on the answer, which brings the next tick.
bool ActivityTracker::awaitsQuietPresence(const Presence& presence, Seconds uptime) {
    if (!presence.isOver(presence.untouched) || !trackingSettings().countsCalls) return false;
    const bool wasThere = quietPresenceAt_ && uptime - *quietPresenceAt_ <= 2 * currentTickInterval_;
    if (!currentRecord_ && !wasThere) return false;
    if (isAskingForPresence_) return presence.isIdle() && uptime - *presenceAskedAt_ < presencePatience;
    if (presenceAnsweredAt_ && uptime - *presenceAnsweredAt_ < presenceHoldsFor) return false;
    askForQuietPresence(uptime, presence.isIdle());
    return presence.isIdle();
}

void ActivityTracker::askForQuietPresence(Seconds uptime, bool isAwaited) {
    isAskingForPresence_ = true;
    presenceAskedAt_ = uptime;
    platform::inBackground(
        runLoop_, [&source = desktop_.presence()] { return source.quietPresence(); },
        [weak = weak_.handle(), isAwaited](std::future<std::optional<std::string>> presence) {
            if (auto* self = weak.get()) self->noteQuietPresence(presence.get(), isAwaited);
        });
}

void ActivityTracker::noteQuietPresence(const std::optional<std::string>& presence, bool isAwaited) {
    isAskingForPresence_ = false;
    const Seconds uptime = runLoop_.uptime();
    if (!isTracking_ || isSessionLocked_ || uptime - *presenceAskedAt_ >= presencePatience) return;
    presenceAnsweredAt_ = uptime;
    if (presence) quietPresenceAt_ = presenceAnsweredAt_;
    if (!isAwaited) return;
    if (presence) console_.line("ActivityTracker: No input, but {}", *presence);
    tick();
}

void ActivityTracker::noteIdleness(const Presence& presence) {
    if (presence.isIdle()) {
        ++consecutiveIdleTicks_;
        if (consecutiveIdleTicks_ < idleTicksToPause || isMonitoringPaused_) return;
        if (keyboardMonitor_.isMonitoring()) keyboardMonitor_.stopMonitoring();
        if (mouseMonitor_.isMonitoring()) mouseMonitor_.stopMonitoring();
        isMonitoringPaused_ = true;
        console_.line("ActivityTracker: ⏸️ 已暂停键盘和鼠标监控（空闲时节省 CPU）");
        return;
    }
    consecutiveIdleTicks_ = 0;
    if (!isMonitoringPaused_) return;
    resumeMonitoring();
    lastActivityCallbackAt_ = runLoop_.uptime();
}

void ActivityTracker::resumeMonitoring() {
    if (!isMonitoringPaused_) return;
    if (!keyboardMonitor_.isMonitoring()) keyboardMonitor_.startMonitoring();
    if (!mouseMonitor_.isMonitoring()) mouseMonitor_.startMonitoring();
    isMonitoringPaused_ = false;
    consecutiveIdleTicks_ = 0;
    console_.line("ActivityTracker: ▶️ 已恢复键盘和鼠标监控");
}

void ActivityTracker::leaveIdle(const Presence& presence, const ClockLook& look) {
    console_.line("ActivityTracker: User is idle ({}s >= {}s) - {}", whole(presence.effectiveIdle), presence.threshold,
                  isAnyMonitorListening() ? "基于键盘/鼠标监控" : "基于系统空闲时间");
    // The record ends at the last input and not when the tick notices.
    const Date lastInput = look.now - presence.effectiveIdle;
    closeAndLeave(lastInput, look.now);
    noteAbsence(lastInput, look);
    awaitReturn();
}

std::optional<ForegroundApplicationSnapshot> ActivityTracker::foregroundApplication() {
    if (!foregroundApplicationSnapshot_) {
        const auto application = desktop_.foreground().frontmostApplication();
        if (!application) return std::nullopt;
        foregroundApplicationSnapshot_ = {application->bundleIdentifier.value_or("unknown.bundle"),
                                          application->localizedName.value_or("Unknown")};
    }
    return foregroundApplicationSnapshot_;
}

void ActivityTracker::switchTo(const ForegroundApplicationSnapshot& application, const Presence& presence, Date now) {
    if (isMonitoringPaused_) resumeMonitoring();
    consecutiveIdleTicks_ = 0;
    if (presence.isEnabled && !currentRecord_ && presence.isIdle()) {
        console_.line("ActivityTracker: 跳过空闲期间的应用切换记录 - {}", application.localizedName);
        return leave(now);
    }
    lastUpdate_ = now;
    if (const Seconds rest = untilNextRecord(now); rest > 0s) return scheduleActivationTick(rest);
    console_.line("ActivityTracker: 📱 App switch: {} ({})", application.localizedName, application.bundleIdentifier);
    if (lastFrontAppBundleId_ != application.bundleIdentifier) cachedBrowserURL_.reset();
    finalizeCurrentRecord(now);
    begin(application, attention(application.bundleIdentifier), now);
    lastFrontAppBundleId_ = application.bundleIdentifier;
}

void ActivityTracker::continueWith(const ForegroundApplicationSnapshot& application, const ClockLook& look) {
    const std::string& bundleId = application.bundleIdentifier;
    lastUpdate_ = look.now;
    if (trackingSettings().splitsByTitle) splitIfTurned(application, look);
    const bool isFresh = cachedBrowserURL_ && cachedBrowserURL_->bundleId == bundleId &&
                         look.uptime - cachedBrowserURL_->readAt <= browserURLRefreshAge;
    if (isBrowser(bundleId) && !isFresh) fetchBrowserURLAsync(true);
    updateCurrentRecordHeartbeat(look);
}

}  // namespace quorvane
