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

constexpr Seconds activeTickInterval = 10s;
constexpr Seconds idleTickInterval = 30s;
constexpr Seconds activeWithin = 30s;  ///< input younger than this asks for the short interval
constexpr Seconds userActivityCheckInterval = 30s;
constexpr Seconds foregroundActivationGraceInterval = 3s;
constexpr Seconds settingsCacheValidityInterval = 300s;
constexpr Seconds cacheValidityInterval = 60s;  ///< of window data and URLs, at a switch of applications
constexpr Seconds browserURLRefreshAge = 120s;
constexpr Seconds verboseIdle = 60s;
constexpr int idleTicksToPause = 3;

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

bool isEmpty(const std::optional<std::string>& text) {
    return !text || text->empty();
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
    const Date now = runLoop_.now();
    adjustTimerFrequency(now);
    examineCapture();
    const Presence presence = readPresence(now);
    if (!isWorkTime(now)) return leaveOutsideWorkHours(now);
    noteIdleness(presence, now);
    if (presence.isEnabled && presence.isIdle()) return leaveIdle(presence, now);
    if (isSessionLocked_) {
        console_.line("ActivityTracker: Session locked - finalize current record");
        return closeAndLeave(now, now);
    }
    if (!captureHealth_.canSee()) {
        console_.line("ActivityTracker: Nothing can be seen: {}", captureHealth_.reason);
        // Who was in front when the view went is not known to be there still, nor since when.
        foregroundApplicationSnapshot_.reset();
        return closeAndLeave(lastUpdate_, now);
    }
    const auto application = foregroundApplication();
    if (!application) {
        console_.line("ActivityTracker: No frontmost application");
        return closeAndLeave(now, now);
    }
    const bool isSwitch = !currentRecord_ || lastFrontAppBundleId_ != application->bundleIdentifier;
    const WindowInfo window =
        isSwitch ? windowInfoAtSwitch(*application, now) : cachedWindowInfo(application->bundleIdentifier);
    if (application->bundleIdentifier == platform::loginWindowBundleId) {
        if (currentRecord_) finalizeCurrentRecord(now);
        return leave(now);
    }
    if (isSwitch)
        switchTo(*application, window, presence, now);
    else
        continueWith(*application, window, now);
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

void ActivityTracker::adjustTimerFrequency(Date now) {
    if (lastUserActivityCheck_ && now - *lastUserActivityCheck_ < userActivityCheckInterval) return;
    lastUserActivityCheck_ = now;
    const bool isActive = std::min(keyboardMonitor_.getIdleTime(), mouseMonitor_.getIdleTime()) < activeWithin;
    const Seconds wanted = isActive ? activeTickInterval : idleTickInterval;
    if (std::abs((wanted - currentTickInterval_).count()) <= 1.0) return;
    scheduleTimer(wanted);
    console_.line("ActivityTracker: 定时器频率已调整为 {}秒 (用户{})", whole(wanted), isActive ? "活跃" : "空闲");
}

void ActivityTracker::examineCapture() {
    const platform::Channel channel = desktop_.foreground().channel();
    CaptureHealth health = quorvane::captureHealth({&channel, 1});
    if (health == captureHealth_) return;
    captureHealth_ = std::move(health);
    captureHealthChanged.send();
}

bool ActivityTracker::isAnyMonitorListening() const {
    return keyboardMonitor_.isMonitoring() || mouseMonitor_.isMonitoring();
}

ActivityTracker::Presence ActivityTracker::readPresence(Date now) {
    const Seconds keyboardIdle = keyboardMonitor_.getIdleTime();
    const Seconds mouseIdle = mouseMonitor_.getIdleTime();
    const Seconds rawSystemIdle = desktop_.idle().secondsSinceLastInput();
    const Seconds systemIdle = std::max(rawSystemIdle, Seconds{0});
    const Seconds effectiveIdle = ActivityTrackingPolicy::effectiveIdle(
        {.systemIdle = systemIdle,
         .inputIdle = std::min(keyboardIdle, mouseIdle),
         .isMonitoring = isAnyMonitorListening(),
         .inGrace = ActivityTrackingPolicy::isWithinForegroundGrace(lastForegroundActivationAt_, now,
                                                                    foregroundActivationGraceInterval)});
    const IdleSettings settings = idleSettings();
    if (rawSystemIdle < 0s)
        console_.line("ActivityTracker: ⚠️ 检测到异常的负数空闲时间: {}s，已修正为0",
                      text::shortest(rawSystemIdle.count()));
    if (effectiveIdle > verboseIdle || whole(now.time_since_epoch()) % 30 == 0)
        console_.line("ActivityTracker: 🔄 Tick called at {}, idle: {}s (keyboard: {}s, mouse: {}s, system: {}s)",
                      describe(now), whole(effectiveIdle), whole(keyboardIdle), whole(mouseIdle), whole(systemIdle));
    return {.effectiveIdle = effectiveIdle, .threshold = settings.threshold, .isEnabled = settings.isEnabled};
}

ActivityTracker::IdleSettings ActivityTracker::idleSettings() {
    const Date now = runLoop_.now();
    if (!cachedIdleSettings_ || now - cachedIdleSettings_->timestamp >= settingsCacheValidityInterval)
        cachedIdleSettings_ = storedIdleSettings(now);
    return *cachedIdleSettings_;
}

ActivityTracker::IdleSettings ActivityTracker::storedIdleSettings(Date now) {
    auto settings = std::make_shared<AppSettings>();  // where none are stored their defaults hold
    if (auto* context = modelContext_.get()) {
        if (const auto stored = firstRow<AppSettings>(*context))
            settings = stored;
        else if (const auto preference = firstRow<AppPreference>(*context))
            return {preference->idleThresholdSeconds(), true, now};
    }
    return {minutesAsSeconds(settings->idleThresholdMinutes()), settings->enableIdleDetection(), now};
}

bool ActivityTracker::isWorkTime(Date now) {
    if (const auto& cached = cachedWorkTimeSettings_; cached && now >= cached->day.start && now < cached->day.end &&
                                                      now - cached->timestamp < settingsCacheValidityInterval)
        return cached->isWorkTime;
    const Calendar calendar = Calendar::current();
    auto* context = modelContext_.get();
    const auto settings = context ? firstRow<AppSettings>(*context) : nullptr;
    const bool isWorkTime = !settings || settings->isWithinWorkHours(now, calendar);
    const Date timestamp = runLoop_.now();
    cachedWorkTimeSettings_ = WorkTime{isWorkTime, timestamp, calendar.day(timestamp)};
    return isWorkTime;
}

void ActivityTracker::leaveOutsideWorkHours(Date now) {
    const DateComponents at = Calendar::current().components(now);
    console_.line("ActivityTracker: ⏰ 当前时间不在工作时间内，停止记录");
    console_.line("  当前时间: {}:{:02}, 星期{}", at.hour, at.minute, at.weekday);
    console_.line("  💡 提示: 如需24小时记录，请在设置中关闭'仅追踪工作时间'");
    closeAndLeave(now, now);
}

void ActivityTracker::noteIdleness(const Presence& presence, Date now) {
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
    lastActivityCallbackTime_ = now;
}

void ActivityTracker::resumeMonitoring() {
    if (!isMonitoringPaused_) return;
    if (!keyboardMonitor_.isMonitoring()) keyboardMonitor_.startMonitoring();
    if (!mouseMonitor_.isMonitoring()) mouseMonitor_.startMonitoring();
    isMonitoringPaused_ = false;
    consecutiveIdleTicks_ = 0;
    console_.line("ActivityTracker: ▶️ 已恢复键盘和鼠标监控");
}

void ActivityTracker::leaveIdle(const Presence& presence, Date now) {
    console_.line("ActivityTracker: User is idle ({}s >= {}s) - {}", whole(presence.effectiveIdle), presence.threshold,
                  isAnyMonitorListening() ? "基于键盘/鼠标监控" : "基于系统空闲时间");
    // The record ends at the last input and not when the tick notices.
    closeAndLeave(now - presence.effectiveIdle, now);
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

WindowInfo ActivityTracker::windowInfoAtSwitch(const ForegroundApplicationSnapshot& application, Date now) {
    const std::string& bundleId = application.bundleIdentifier;
    console_.line("ActivityTracker: 📱 App switch: {} ({})", application.localizedName, bundleId);
    const auto cached = windowInfoCache_.find(bundleId);
    if (cached != windowInfoCache_.end() && now - cached->second.timestamp < cacheValidityInterval) {
        console_.line("ActivityTracker: 使用缓存的窗口信息（应用切换但缓存有效）");
        return cached->second.info;
    }
    WindowInfo fetched = services_.windowInfo.windowInfo(bundleId);
    windowInfoCache_[bundleId] = {fetched, now};
    if (!isEmpty(fetched.document))
        console_.line("ActivityTracker: 成功获取文档信息 - 标题: {}, 路径: <redacted>", fetched.title.value_or("无"));
    else if (!isEmpty(fetched.title))
        console_.line("ActivityTracker: 无法获取文档路径，使用窗口标题作为备用信息: {}", *fetched.title);
    else
        console_.line("ActivityTracker: 无法获取文档路径和窗口标题，将继续使用基本应用信息");
    return fetched;
}

WindowInfo ActivityTracker::cachedWindowInfo(const std::string& bundleId) const {
    const auto cached = windowInfoCache_.find(bundleId);
    return cached == windowInfoCache_.end() ? WindowInfo{} : cached->second.info;
}

void ActivityTracker::switchTo(const ForegroundApplicationSnapshot& application, const WindowInfo& window,
                               const Presence& presence, Date now) {
    if (isMonitoringPaused_) resumeMonitoring();
    consecutiveIdleTicks_ = 0;
    if (presence.isEnabled && !currentRecord_ && presence.isIdle()) {
        console_.line("ActivityTracker: 跳过空闲期间的应用切换记录 - {}", application.localizedName);
        return leave(now);
    }
    if (lastFrontAppBundleId_ != application.bundleIdentifier) cachedBrowserURL_.reset();
    finalizeCurrentRecord(now);
    auto url = browserURLAtSwitch(application.bundleIdentifier, now);
    startNewRecord({.at = now, .application = application, .window = window, .url = std::move(url)});
    lastFrontAppBundleId_ = application.bundleIdentifier;
    lastUpdate_ = now;
}

void ActivityTracker::continueWith(const ForegroundApplicationSnapshot& application, const WindowInfo& window,
                                   Date now) {
    const std::string& bundleId = application.bundleIdentifier;
    updateCurrentRecordWindowInfo(window);
    const bool isFresh = cachedBrowserURL_ && cachedBrowserURL_->bundleId == bundleId &&
                         now - cachedBrowserURL_->timestamp <= browserURLRefreshAge;
    if (ActivityTrackingPolicy::isBrowser(bundleId) && !isFresh) fetchBrowserURLAsync(bundleId, true);
    updateCurrentRecordHeartbeat(now);
    lastUpdate_ = now;
}

void ActivityTracker::updateCurrentRecordWindowInfo(const WindowInfo& window) {
    if (!currentRecord_) return;
    if (!isEmpty(window.title)) currentRecord_->windowTitle = window.title;
    if (!isEmpty(window.document)) currentRecord_->documentPath = window.document;
}

std::optional<std::string> ActivityTracker::browserURLAtSwitch(const std::string& bundleId, Date now) {
    if (!ActivityTrackingPolicy::isBrowser(bundleId)) return std::nullopt;
    if (cachedBrowserURL_ && cachedBrowserURL_->bundleId == bundleId &&
        now - cachedBrowserURL_->timestamp < cacheValidityInterval)
        return cachedBrowserURL_->url;
    fetchBrowserURLAsync(bundleId, false);
    return std::nullopt;
}

void ActivityTracker::fetchBrowserURLAsync(const std::string& bundleId, bool deferred) {
    if (isFetchingBrowserURL_ || services_.browserURL == nullptr) return;
    isFetchingBrowserURL_ = true;
    platform::inBackground(
        runLoop_, [&source = *services_.browserURL] { return source.frontURL(); },
        [weak = weak_.handle(), bundleId, deferred](std::future<std::optional<std::string>> fetched) {
            if (auto* self = weak.get()) self->noteBrowserURL(bundleId, fetched.get(), deferred);
        });
}

void ActivityTracker::noteBrowserURL(const std::string& bundleId, const std::optional<std::string>& url,
                                     bool deferred) {
    isFetchingBrowserURL_ = false;
    if (isEmpty(url)) return;
    cachedBrowserURL_ = {bundleId, *url, runLoop_.now()};
    if (!currentRecord_ || currentRecord_->appBundleId() != bundleId) return;
    takeTitleHeldBack(bundleId);
    if (currentRecord_->url() == url) return;
    currentRecord_->url = url;
    if (deferred) console_.line("ActivityTracker: 延迟更新浏览器URL: <redacted>");
}

/// Of a page whose address is told the title is nobody's secret either.
void ActivityTracker::takeTitleHeldBack(const std::string& bundleId) {
    const auto cached = windowInfoCache_.find(bundleId);
    if (cached == windowInfoCache_.end() || !cached->second.info.isTitleHeldBack) return;
    cached->second.info = services_.windowInfo.windowInfo(bundleId);
    updateCurrentRecordWindowInfo(cached->second.info);
}

}  // namespace quorvane
