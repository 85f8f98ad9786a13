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
    automaticSync_ = runLoop_.after(automaticSyncDelay, [this] { syncAutomatically(); });
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

void LaunchTask::syncAutomatically() {
    console_.write("🔄 开始检查 CloudKit 同步...");
    const bool isAvailable = hooks_.isCloudAvailable && hooks_.isCloudAvailable();
    console_.line("📱 CloudKit 可用性: {}", isAvailable);
    if (!isAvailable) return console_.write("⚠️ CloudKit 不可用，跳过同步");
    console_.write("🚀 开始执行完整同步...");
    if (!hooks_.performFullSync) return;
    hooks_.performFullSync(context_, [&console = console_](const std::optional<std::string>& error) {
        if (error)
            console.line("❌ CloudKit同步失败: {}", *error);
        else
            console.write("✅ CloudKit 同步完成");
    });
}

}  // namespace quorvane
