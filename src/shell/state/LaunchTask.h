#pragma once

#include "diagnostics/ConsoleSink.h"
#include "platform/RunLoop.h"
#include "store/ModelContext.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace quorvane {

/// Whom the launch calls. What is empty does nothing; without `isCloudAvailable` the cloud is unavailable.
struct LaunchHooks {
    using SyncFinished = std::function<void(const std::optional<std::string>& error)>;

    std::function<void(bool hideFromDock)> applyDockVisibility;        ///< with the first content
    std::function<void(Seconds interval)> startMemoryMonitor;          ///< 1 s later
    std::function<bool()> isCloudAvailable;                            ///< 3 s after the first content
    std::function<void(ModelContext&, SyncFinished)> performFullSync;  ///< calls back once, on the main thread
};

/// What happens once after the first content is there. Going away cancels what is due. Main thread only.
class LaunchTask {
public:
    static constexpr Seconds memoryMonitorDelay = 1s;
    static constexpr Seconds memoryMonitorInterval = 30s;
    static constexpr Seconds automaticSyncDelay = 3s;

    /// All of it outlives the task.
    LaunchTask(ModelContext& context, platform::RunLoop& runLoop, ConsoleSink& console, const LaunchHooks& hooks);

    /// Reads the Dock setting and applies it at once; the rest follows by itself. A further call does nothing.
    void run();

private:
    [[nodiscard]] bool storedHideDockIcon();
    void syncAutomatically();

    ModelContext& context_;
    platform::RunLoop& runLoop_;
    ConsoleSink& console_;
    const LaunchHooks& hooks_;
    bool hasRun_ = false;
    std::unique_ptr<platform::WorkItem> memoryMonitor_;
    std::unique_ptr<platform::WorkItem> automaticSync_;
};

}  // namespace quorvane
