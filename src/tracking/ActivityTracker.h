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
#include "tracking/AbsenceWatch.h"
#include "tracking/ActivityTrackingPolicy.h"
#include "tracking/AttentionWatch.h"
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
/// Window and page are asked for by workers, which the first two outlive, too.
struct TrackerServices {
    WindowInfoSource& windowInfo;
    BrowserURLSource* browserURL = nullptr;
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

    /// What the user does: pauses tracking, or starts it. The pause is kept in the store, for later runs too.
    void toggle();
    /// Begins tracking as programs do by themselves: not while the user has paused it.
    void startUnlessPaused();
    /// None while the user has not paused it.
    [[nodiscard]] std::optional<Date> pausedSince() const { return pausedSince_; }

    /// None while somebody is there, or nobody looks.
    [[nodiscard]] std::optional<Date> awaySince() const { return absence_.since(); }
    /// The absence of at least the threshold from which the user has come back last, until somebody has dealt with it.
    [[nodiscard]] const std::optional<DateInterval>& lastAbsence() const { return lastAbsence_; }
    void forgetLastAbsence();
    /// Sent after one of these has changed.
    Signal<> presenceChanged;

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
    static constexpr Seconds minimumDuration = 1s;  ///< of a record

    struct Presence {
        Seconds effectiveIdle{};
        Seconds untouched{};         ///< the same, whatever calls and films say
        std::int64_t threshold = 0;  ///< seconds
        bool isEnabled = true;       ///< idle detection
        [[nodiscard]] bool isIdle() const { return isOver(effectiveIdle); }
        [[nodiscard]] bool isOver(Seconds idle) const { return idle >= Seconds{static_cast<double>(threshold)}; }
    };
    // What is kept for a while has the uptime at which it was read.
    struct TrackingSettings {
        std::int64_t threshold;  ///< of idle time, in seconds
        bool isEnabled;          ///< idle detection
        bool splitsByTitle = true;
        bool countsCalls = false;
        Seconds readAt{};
    };
    struct WorkTime {
        bool isWorkTime;
        Seconds readAt;
        DateInterval day;  ///< the value ends with it
    };
    struct CachedWindowInfo {
        WindowInfo info;
        std::string title;  ///< the window's own, as it was then
        Seconds readAt;
    };
    struct CachedBrowserURL {
        std::string bundleId;
        std::string url;
        Seconds readAt;
    };
    /// What preference and rules made of a record.
    struct Classification {
        std::optional<std::string> category;
        std::string tags;
        std::optional<std::string> source;
        std::string billingStatus;
        std::shared_ptr<Project> project;
        friend bool operator==(const Classification&, const Classification&) = default;
    };

    // The loop (ActivityTracker.cpp, ActivityTrackerTick.cpp)
    void runTick();
    void scheduleTimer(Seconds interval);
    [[nodiscard]] ClockLook lookAtClocks();
    void noteBreak(const ClockLook& look);
    [[nodiscard]] Date lastSignOfLife() const;
    void adjustTimerFrequency(Seconds uptime);
    void examineCapture();
    [[nodiscard]] bool isAnyMonitorListening() const;
    [[nodiscard]] Presence readPresence(const ClockLook& look);
    [[nodiscard]] const TrackingSettings& trackingSettings();
    [[nodiscard]] TrackingSettings storedTrackingSettings();
    [[nodiscard]] bool isWorkTime(Date now);
    [[nodiscard]] bool awaitsQuietPresence(const Presence& presence, Seconds uptime);
    void askForQuietPresence(Seconds uptime, bool isAwaited);
    void noteQuietPresence(const std::optional<std::string>& presence, bool isAwaited);
    void noteIdleness(const Presence& presence);
    void resumeMonitoring();
    void leave(Date now);
    void closeAndLeave(Date end, Date now);
    void leaveOutsideWorkHours(const ClockLook& look);
    void leaveIdle(const Presence& presence, const ClockLook& look);
    [[nodiscard]] std::optional<ForegroundApplicationSnapshot> foregroundApplication();
    void switchTo(const ForegroundApplicationSnapshot& application, const Presence& presence, Date now);
    void continueWith(const ForegroundApplicationSnapshot& application, const ClockLook& look);
    void runMaintenance();

    // Whether somebody is there (ActivityTrackerPresence.cpp)
    void keepPause(std::optional<Date> since);
    void adoptPause(ModelContext& context);
    void noteAbsence(Date since, const ClockLook& look);
    std::optional<DateInterval> endAbsence(const ClockLook& look);
    void noteReturn(const ClockLook& look);
    void noteUnwatched(const ClockLook& look);
    void awaitReturn();
    void keepAwaySince(std::optional<Date> since);

    // What is looked at in the application (ActivityTrackerAttention.cpp)
    [[nodiscard]] bool isBrowser(const std::string& bundleId);
    [[nodiscard]] Attention attention(const std::string& bundleId);
    void begin(const ForegroundApplicationSnapshot& application, Attention attention, Date at);
    void splitIfTurned(const ForegroundApplicationSnapshot& application, const ClockLook& look);
    [[nodiscard]] WindowInfo windowInfoAtStart(const ForegroundApplicationSnapshot& application,
                                               const Attention& attention);
    void fetchWindowInfoAsync(const std::string& bundleId, const std::string& title);
    void noteWindowInfo(const std::string& bundleId, const std::string& title, const Uuid& record, WindowInfo info);
    void fetchBrowserURLAsync(bool deferred);
    void noteBrowserURL(const Uuid& record, const std::optional<std::string>& url, bool deferred);
    void classifyAgain();

    // A record's life (ActivityTrackerRecords.cpp)
    struct NewRecord {
        Date at;
        ForegroundApplicationSnapshot application;
        WindowInfo window{};
        std::optional<std::string> url{};
    };
    [[nodiscard]] Seconds untilNextRecord(Date now) const;
    [[nodiscard]] std::optional<Date> endOfNewestRecord();
    void startNewRecord(const NewRecord& wanted);
    [[nodiscard]] Date adjustedStart(Date wanted, ModelContext& context);
    [[nodiscard]] std::shared_ptr<ActivityRecord> makeRecord(const NewRecord& wanted, Date startTime);
    bool applyPreference(ActivityRecord& record);
    void applyRules(ActivityRecord& record, ModelContext& context);
    [[nodiscard]] static Classification classification(const ActivityRecord& record);
    void sweepActiveRecordsIfNeeded();
    void finalizeCurrentRecord(Date end);
    void finalizeCurrentRecord(Date end, Date latest);
    void closeRecord(ActivityRecord& record, Date wantedEnd, Date latest);
    void updateCurrentRecordHeartbeat(const ClockLook& look);

    // The system's events (ActivityTrackerEvents.cpp)
    void registerObservers();
    void observeClose(platform::SystemEvent event, std::vector<Subscription>& observers, const char* line);
    void observeResume(platform::SystemEvent event, std::vector<Subscription>& observers, const char* line);
    void handleClose(const char* line);
    void handleResume(const char* line);
    void handleApplicationActivation(const std::optional<platform::ForegroundApplication>& application);
    void handleVacancy();
    void noteForegroundActivation(const ClockLook& look);
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
    Date lastUpdate_;  ///< when the user was last seen or a tick last ended: the last sign of life
    ClockLook lastLook_;
    std::vector<Subscription> workspaceObservers_;
    std::vector<Subscription> distributedObservers_;
    std::optional<Subscription> appActivationObserver_;
    Subscription vacancyObserver_;
    bool isSessionLocked_ = false;  ///< from sleep, screen sleep or lock until any wake or unlock
    std::unique_ptr<DataCleanupService> dataCleanupService_;
    std::unique_ptr<platform::Timer> cleanupTimer_;
    std::unique_ptr<platform::WorkItem> pendingActivationTick_;
    std::unique_ptr<platform::WorkItem> pendingActivityCallback_;

    std::optional<Date> pausedSince_;
    AbsenceWatch absence_;
    std::optional<DateInterval> lastAbsence_;
    Date watchedSince_;  ///< no absence reaches further back
    std::unique_ptr<platform::ReturnWatch> returnWatch_;

    AttentionWatch attentionWatch_;
    std::map<std::string, CachedWindowInfo> windowInfoCache_;
    bool isFetchingWindowInfo_ = false;
    std::optional<CachedBrowserURL> cachedBrowserURL_;
    bool isFetchingBrowserURL_ = false;
    bool isAskingForPresence_ = false;
    std::optional<Classification> classified_;  ///< of the open record, before anybody else touched it
    std::optional<Date> lastRecordEnd_;         ///< no later record of ours begins before it

    // As uptime
    std::optional<Seconds> lastAppSwitchAt_;
    std::optional<Seconds> lastActivityCallbackAt_;
    std::optional<Seconds> lastForegroundActivationAt_;
    std::optional<Seconds> lastUserActivityCheckAt_;
    std::optional<Seconds> lastActiveRecordsSweepAt_;
    std::optional<Seconds> lastCurrentRecordHeartbeatAt_;
    std::optional<Seconds> quietPresenceAt_;  ///< when a call or a film last showed that somebody is there
    std::optional<Seconds> presenceAskedAt_;
    std::optional<Seconds> presenceAnsweredAt_;

    static constexpr Seconds activeTickInterval = 10s;
    Seconds currentTickInterval_;
    bool isTickRunning_ = false;  ///< against a tick inside a tick on this one thread
    int consecutiveIdleTicks_ = 0;
    bool isMonitoringPaused_ = false;  ///< the tracker itself has stopped the monitors
    std::optional<TrackingSettings> cachedSettings_;
    std::optional<WorkTime> cachedWorkTime_;
    WeakSource<ActivityTracker> weak_{*this};  // last: dies first, so that no callback meets half a tracker
};

}  // namespace quorvane
