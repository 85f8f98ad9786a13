#pragma once

#include "diagnostics/ConsoleSink.h"
#include "platform/RunLoop.h"
#include "store/ModelContext.h"

#include <functional>
#include <memory>

namespace quorvane {

/// Whom the launch calls. What is empty does nothing.
struct LaunchHooks {
    std::function<void(bool hideFromDock)> applyDockVisibility;  ///< with the first content
    std::function<void(Seconds interval)> startMemoryMonitor;    ///< 1 s later
};

/// What happens once after the first content is there. Going away cancels what is due. It asks no cloud: syncs are
/// begun by the user alone. Main thread only.
class LaunchTask {
public:
    static constexpr Seconds memoryMonitorDelay = 1s;
    static constexpr Seconds memoryMonitorInterval = 30s;

    /// All of it outlives the task.
    LaunchTask(ModelContext& context, platform::RunLoop& runLoop, ConsoleSink& console, const LaunchHooks& hooks);

    /// Reads the Dock setting and applies it at once; the rest follows by itself. A further call does nothing.
    void run();

private:
    [[nodiscard]] bool storedHideDockIcon();

    ModelContext& context_;
    platform::RunLoop& runLoop_;
    ConsoleSink& console_;
    const LaunchHooks& hooks_;
    bool hasRun_ = false;
    std::unique_ptr<platform::WorkItem> memoryMonitor_;
};

}  // namespace quorvane
