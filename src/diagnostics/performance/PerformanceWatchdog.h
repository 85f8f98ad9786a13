#pragma once

#include "base/Weak.h"
#include "diagnostics/AppLogger.h"
#include "diagnostics/ApplicationInfo.h"
#include "diagnostics/PerformanceReportPreferences.h"
#include "diagnostics/performance/CPUSustainedLoadDetector.h"
#include "diagnostics/performance/PerformanceReportEnvironment.h"
#include "diagnostics/performance/PerformanceReportUploader.h"
#include "diagnostics/performance/PerformanceStackCapture.h"
#include "diagnostics/performance/ProcessCPUClock.h"
#include "platform/ProcessUsage.h"
#include "platform/RunLoop.h"
#include "platform/SerialQueue.h"
#include "platform/StackSampler.h"
#include "platform/SystemInfo.h"
#include "platform/UserDefaults.h"

#include <atomic>
#include <functional>
#include <memory>
#include <stop_token>
#include <string>

namespace quorvane {

/// Watches the processor time of its own process. When that was high for too long, it captures call stacks and hands a
/// report to the uploader, if the user wants reports. While the process is quiet it rests, until an alarm
/// tells it of use. Main thread only.
class PerformanceWatchdog {
public:
    static constexpr const char* queueLabel = "zelkor.quorvane.performance-watchdog";
    static constexpr Seconds leeway = 1s;
    static constexpr int captureSeconds = 2;
    static constexpr double quietPercent = 2;  ///< load that is not above it is no reason to go on ticking
    /// Ends a rest. A hot loop uses it within a fraction of an interval; an application at rest needs minutes for it.
    static constexpr double wakingSeconds = 0.5;

    using Policy = CPUSustainedLoadDetector::Policy;
    using Trigger = CPUSustainedLoadDetector::Trigger;

    /// What is referred to outlives the watchdog.
    struct Parts {
        platform::RunLoop& runLoop;
        AppLogger& logger;
        platform::UserDefaults& defaults;
        const platform::ProcessUsage& usage;
        platform::StackSampler& sampler;
        PerformanceReportUploader& uploader;
        std::unique_ptr<platform::SerialQueue> queue;         ///< samples
        std::unique_ptr<platform::SerialQueue> captureQueue;  ///< waits for the tool
        ApplicationInfo application;
        platform::SystemInfo system;
        std::string homeDirectory;
        /// Asked on the main thread for each report.
        std::function<PerformanceReportEnvironment::Surroundings()> surroundings;
        Policy policy{};
    };
    explicit PerformanceWatchdog(Parts parts);
    PerformanceWatchdog(const PerformanceWatchdog&) = delete;
    PerformanceWatchdog& operator=(const PerformanceWatchdog&) = delete;
    ~PerformanceWatchdog();  ///< Ends a capture that runs.

    /// Begins to watch, and sends what an earlier run has left, or deletes it without the user's yes. Once is enough.
    /// Under a test host it does nothing.
    void start();

    /// The user's decision. Off: what waits to be sent is deleted and what is being captured is dropped.
    void setEnabled(bool isEnabled);

private:
    void startTimer();  // on the queue, as is all that follows until said otherwise
    void beginTicking();
    void tick();
    void rest();
    void endRest();
    void beginCapture(const Trigger& trigger);
    void endCapture();
    void capture(const Trigger& trigger);                     // on the capture queue
    void report(const Trigger& trigger, std::string stacks);  // on the main thread
    [[nodiscard]] PerformanceReport makeReport(const Trigger& trigger, std::string stacks);

    Parts parts_;
    PerformanceReportPreferences preferences_;
    PerformanceStackCapture stackCapture_;
    std::atomic<bool> isEnabled_;  ///< what the preference says, for other threads
    std::stop_source stop_;
    ProcessCPUClock clock_;                               // the queue's, as are the next four
    std::unique_ptr<CPUSustainedLoadDetector> detector_;  ///< null until the timer runs
    std::unique_ptr<platform::UsageAlarm> alarm_;         ///< null but for rests
    bool isCapturing_ = false;
    WeakSource<PerformanceWatchdog> weak_{*this};  ///< for what comes back to the main thread
};

}  // namespace quorvane
