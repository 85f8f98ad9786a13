#pragma once

#include "base/Date.h"
#include "base/Signal.h"
#include "base/Weak.h"
#include "capture/BrowserURLSource.h"
#include "capture/CaptureHealth.h"
#include "capture/WindowInfo.h"
#include "diagnostics/ConsoleSink.h"
#include "platform/Desktop.h"
#include "platform/RunLoop.h"
#include "rules/CategoryTagManager.h"
#include "store/ActivityRecord.h"
#include "store/DataCleanupService.h"
#include "store/ModelContext.h"
#include "tracking/KeyboardMonitor.h"
#include "tracking/MouseMonitor.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvane {

/// What the tracker believes to be in front.
struct ForegroundApplicationSnapshot {
    std::string bundleIdentifier;
    std::string localizedName;
    friend bool operator==(const ForegroundApplicationSnapshot&, const ForegroundApplicationSnapshot&) = default;
};

/// Whom the tracker asks beyond the desktop. All of them outlive it; who may be absent is a pointer.
struct TrackerServices {
    WindowInfoSource& windowInfo;
    BrowserURLSource* browserURL = nullptr;  ///< process-wide: it outlives every worker
    const CategoryTagManager* categories = nullptr;
};

/// Decides once per tick what the user is doing and keeps at most one record open. Idle, locked and sleeping time is a
/// gap between two records. Main thread only. Nothing here throws: what can't be learnt is left out, what can't be
/// saved is reported and goes with the next save.
class ActivityTracker {
public:
    ActivityTracker(platform::RunLoop& runLoop, platform::Desktop& desktop, KeyboardMonitor& keyboardMonitor,
                    MouseMonitor& mouseMonitor, TrackerServices services, ConsoleSink& console);
    ActivityTracker(const ActivityTracker&) = delete;
    ActivityTracker& operator=(const ActivityTracker&) = delete;
    ~ActivityTracker();

    /// Hands over the store, which may end before the tracker: cleans it up, now and every 300 s, and mends overlaps.
    void configure(ModelContext& modelContext);

    /// Begins tracking; the first tick follows after 0.5 s. While already tracking it only says so.
    void start();

    /// Ends tracking and closes the open record at the last moment at which the user was seen.
    void stop();
    void toggle();

    [[nodiscard]] bool isTracking() const { return isTracking_; }
    Signal<bool> isTrackingChanged;

    /// Can be seen what comes to the front? As it was at the start, and at each tick since. While nothing can, no
    /// record is open.
    [[nodiscard]] const CaptureHealth& captureHealth() const { return captureHealth_; }
    Signal<> captureHealthChanged;

    /// One pass of the loop: called by the timer and by the system's events.
    void tick();

    /// The monitors' callback: moves the moment at which the user was last seen, at most once a second.
    void handleUserActivity();

    /// The open record; none while nobody is there.
    [[nodiscard]] const std::shared_ptr<ActivityRecord>& currentRecord() const { return currentRecord_; }

private:
    struct Presence {
        Seconds effectiveIdle{};
        std::int64_t threshold = 0;  ///< seconds
        bool isEnabled = true;       ///< idle detection
        [[nodiscard]] bool isIdle() const { return effectiveIdle >= Seconds{static_cast<double>(threshold)}; }
    };
    struct IdleSettings {
        std::int64_t threshold;  ///< seconds
        bool isEnabled;
        Date timestamp;
    };
    struct WorkTime {
        bool isWorkTime;
        Date timestamp;
        DateInterval day;  ///< of the timestamp: the value ends with it
    };
    struct CachedWindowInfo {
        WindowInfo info;
        Date timestamp;
    };
    struct CachedBrowserURL {
        std::string bundleId;
        std::string url;
        Date timestamp;
    };

    // The loop (ActivityTracker.cpp, ActivityTrackerTick.cpp)
    void runTick();
    void scheduleTimer(Seconds interval);
    void adjustTimerFrequency(Date now);
    void examineCapture();
    [[nodiscard]] bool isAnyMonitorListening() const;
    [[nodiscard]] Presence readPresence(Date now);
    [[nodiscard]] IdleSettings idleSettings();
    [[nodiscard]] IdleSettings storedIdleSettings(Date now);
    [[nodiscard]] bool isWorkTime(Date now);
    void noteIdleness(const Presence& presence, Date now);
    void resumeMonitoring();
    void leave(Date now);
    void closeAndLeave(Date end, Date now);
    void leaveOutsideWorkHours(Date now);
    void leaveIdle(const Presence& presence, Date now);
    [[nodiscard]] std::optional<ForegroundApplicationSnapshot> foregroundApplication();
    [[nodiscard]] WindowInfo windowInfoAtSwitch(const ForegroundApplicationSnapshot& application, Date now);
    [[nodiscard]] WindowInfo cachedWindowInfo(const std::string& bundleId) const;
    void switchTo(const ForegroundApplicationSnapshot& application, const WindowInfo& window, const Presence& presence,
                  Date now);
    void continueWith(const ForegroundApplicationSnapshot& application, const WindowInfo& window, Date now);
    void updateCurrentRecordWindowInfo(const WindowInfo& window);
    [[nodiscard]] std::optional<std::string> browserURLAtSwitch(const std::string& bundleId, Date now);
    void fetchBrowserURLAsync(const std::string& bundleId, bool deferred);
    void noteBrowserURL(const std::string& bundleId, const std::optional<std::string>& url, bool deferred);
    void takeTitleHeldBack(const std::string& bundleId);
    void runMaintenance();

    // A record's life (ActivityTrackerRecords.cpp)
    struct NewRecord {
        Date at;
        ForegroundApplicationSnapshot application;
        WindowInfo window{};
        std::optional<std::string> url{};
    };
    void startNewRecord(const NewRecord& wanted);
    [[nodiscard]] Date adjustedStart(Date wanted, ModelContext& context);
    [[nodiscard]] std::shared_ptr<ActivityRecord> makeRecord(const NewRecord& wanted, Date startTime);
    void applyRules(ActivityRecord& record, ModelContext& context);
    void sweepActiveRecordsIfNeeded(Date now);
    void finalizeCurrentRecord(Date end);
    void closeRecord(ActivityRecord& record, Date wantedEnd);
    void updateCurrentRecordHeartbeat(Date now);

    // The system's events (ActivityTrackerEvents.cpp)
    void registerObservers();
    void observeClose(platform::SystemEvent event, std::vector<Subscription>& observers, const char* line);
    void observeResume(platform::SystemEvent event, std::vector<Subscription>& observers, const char* line);
    void handleClose(const char* line);
    void handleResume(const char* line);
    void handleApplicationActivation(const std::optional<platform::ForegroundApplication>& application);
    void handleVacancy();
    void noteForegroundActivation(Date at);
    void scheduleActivationTick(Seconds delay);
    void removeSystemObservers();
    void removeActivationObserver();

    platform::RunLoop& runLoop_;
    platform::Desktop& desktop_;
    KeyboardMonitor& keyboardMonitor_;
    MouseMonitor& mouseMonitor_;
    TrackerServices services_;
    ConsoleSink& console_;

    bool isTracking_ = false;
    CaptureHealth captureHealth_;
    std::unique_ptr<platform::Timer> timer_;
    std::unique_ptr<platform::WorkItem> firstTick_;
    WeakHandle<ModelContext> modelContext_;
    std::shared_ptr<ActivityRecord> currentRecord_;
    std::optional<std::string> lastFrontAppBundleId_;  ///< cleared by every path that closes without opening another
    std::optional<ForegroundApplicationSnapshot> foregroundApplicationSnapshot_;
    Date lastUpdate_;  ///< when the user was last seen or a tick last ended
    std::vector<Subscription> workspaceObservers_;
    std::vector<Subscription> distributedObservers_;
    std::optional<Subscription> appActivationObserver_;
    Subscription vacancyObserver_;
    bool isSessionLocked_ = false;  ///< from sleep, screen sleep or lock until any wake or unlock
    std::optional<Date> lastAppSwitchTime_;
    std::unique_ptr<DataCleanupService> dataCleanupService_;
    std::unique_ptr<platform::Timer> cleanupTimer_;
    Date lastActiveRecordsSweepAt_ = distantPast;
    std::unique_ptr<platform::WorkItem> pendingActivationTick_;
    std::map<std::string, CachedWindowInfo> windowInfoCache_;
    std::optional<CachedBrowserURL> cachedBrowserURL_;
    bool isFetchingBrowserURL_ = false;
    std::optional<Date> lastActivityCallbackTime_;
    std::unique_ptr<platform::WorkItem> pendingActivityCallback_;
    std::optional<Date> lastForegroundActivationAt_;
    Seconds currentTickInterval_;
    std::optional<Date> lastUserActivityCheck_;
    bool isTickRunning_ = false;  ///< against a tick inside a tick on this one thread
    int consecutiveIdleTicks_ = 0;
    bool isMonitoringPaused_ = false;  ///< the tracker itself has stopped the monitors
    std::optional<IdleSettings> cachedIdleSettings_;
    std::optional<WorkTime> cachedWorkTimeSettings_;
    Date lastCurrentRecordHeartbeatAt_ = distantPast;
    WeakSource<ActivityTracker> weak_{*this};  // last: dies first, so that no callback meets half a tracker
};

}  // namespace quorvane
