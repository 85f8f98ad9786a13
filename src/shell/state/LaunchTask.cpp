#include "shell/state/LaunchTask.h"

#include "store/AppSettings.h"

namespace quorvane {

LaunchTask::LaunchTask(ModelContext& context, platform::RunLoop& runLoop, ConsoleSink& console,
                       const LaunchHooks& hooks)
    : context_(context), runLoop_(runLoop), console_(console), hooks_(hooks) {}

void LaunchTask::run() {
    if (hasRun_) return;
    hasRun_ = true;
    const bool hideDockIcon = storedHideDockIcon();
    if (hooks_.applyDockVisibility) hooks_.applyDockVisibility(hideDockIcon);
    memoryMonitor_ = runLoop_.after(memoryMonitorDelay, [this] {
        if (hooks_.startMemoryMonitor) hooks_.startMemoryMonitor(memoryMonitorInterval);
    });
}

bool LaunchTask::storedHideDockIcon() {
    try {
        const auto settings = context_.fetch<AppSettings>();
        return !settings.empty() && settings.front()->hideDockIcon();
    } catch (const StoreError& error) {
        console_.line("⚠️ 读取 Dock 显示偏好失败，按默认显示 Dock：{}", error.what());
        return false;
    }
}

}  // namespace quorvane
