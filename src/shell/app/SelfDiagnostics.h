#pragma once

#include "diagnostics/performance/MemoryMonitor.h"
#include "diagnostics/performance/PerformanceReporting.h"
#include "platform/linux/process/EuStackSampler.h"
#include "platform/linux/process/LinuxProcessUsage.h"
#include "platform/linux/system/LinuxSystemLog.h"

namespace quorvane {

/// What the application observes of itself on this desktop: its processor time, with reports if that is too much, and
/// its memory. Main thread only.
class SelfDiagnostics {
public:
    /// What is referred to outlives it.
    struct Parts {
        platform::RunLoop& runLoop;
        AppLogger& logger;
        platform::UserDefaults& defaults;
        ApplicationInfo application;
        std::string language;  ///< that the application shows, "en"
        std::function<bool()> hasVisibleWindows;
        std::function<std::unique_ptr<platform::HttpClient>()> makeHttpClient;
    };
    explicit SelfDiagnostics(const Parts& parts);

    void startWatchdog() { reporting_.startWatchdog(); }
    void startMemoryMonitor(Seconds interval) { memory_.start(interval); }
    /// Does this build have a host for performance reports?
    [[nodiscard]] bool canReport() const { return reporting_.canReport(); }
    /// The switch of performance reports in the settings.
    void setReportsEnabled(bool isEnabled) { reporting_.setEnabled(isEnabled); }

private:
    platform::LinuxProcessUsage usage_;
    platform::EuStackSampler sampler_;
    platform::LinuxSystemLog memoryLog_{
        platform::LinuxSystemLog::Origin{.subsystem = MemoryMonitor::subsystem, .category = MemoryMonitor::category}};
    PerformanceReporting reporting_;
    MemoryMonitor memory_;
};

}  // namespace quorvane
