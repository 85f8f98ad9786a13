#pragma once

#include "diagnostics/performance/PerformanceReportUploader.h"
#include "diagnostics/performance/PerformanceWatchdog.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace quorvane {

/// Reports of Quorvane's own use of the processor, from the watchdog to the maker's server: the one object that the
/// application makes for them, once it has its defaults. Main thread only.
class PerformanceReporting {
public:
    using Surroundings = PerformanceReportEnvironment::Surroundings;

    /// What is referred to outlives it.
    struct Parts {
        platform::RunLoop& runLoop;
        AppLogger& logger;
        platform::UserDefaults& defaults;
        const platform::ProcessUsage& usage;
        platform::StackSampler& sampler;
        std::function<std::unique_ptr<platform::SerialQueue>(std::string label)> makeQueue;
        std::function<std::unique_ptr<platform::HttpClient>()> makeHttpClient;  ///< called before the first request
        std::function<Surroundings()> surroundings;  ///< of the windows and the language; asked on the main thread
        ApplicationInfo application;
        platform::SystemInfo system;
        std::string homeDirectory;
        std::optional<std::filesystem::path> spoolDirectory;
        std::string telemetryHost;  ///< `Deployment::telemetryHost`; empty: nothing is watched or captured
        CPUSustainedLoadDetector::Policy policy{};
    };
    explicit PerformanceReporting(const Parts& parts);

    /// Is there a host that takes reports? Without one there is nothing to watch for, nor to switch on.
    [[nodiscard]] bool canReport() const { return canReport_; }

    /// Once at the start of the application.
    void startWatchdog();

    /// The switch in the settings, which they have where reports can go somewhere. It also stores the preference.
    void setEnabled(bool isEnabled) { watchdog_.setEnabled(isEnabled); }

    [[nodiscard]] PerformanceReportUploader& uploader() { return uploader_; }

private:
    bool canReport_;
    PerformanceReportUploader uploader_;
    PerformanceWatchdog watchdog_;
};

}  // namespace quorvane
