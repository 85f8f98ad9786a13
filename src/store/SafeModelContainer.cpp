#include "store/SafeModelContainer.h"

#include <mutex>

namespace quorvane::SafeModelContainer {
namespace {

constexpr const char* module = "SafeModelContainer";

std::mutex lock;  ///< guards the two below for the whole of a call
std::shared_ptr<ModelContainer> shared;
Environment environment;

void log(LogLevel level, const std::string& message) {
    environment.logger->log(message, level, module);
}

/// One attempt; on failure none, and the error's description.
std::shared_ptr<ModelContainer> attempt(CloudDatabase cloudDatabase, std::string& error) {
    try {
        return environment.open({.file = environment.file, .allowsSave = true, .cloudDatabase = cloudDatabase});
    } catch (const StoreError& failure) {
        error = failure.what();
        return nullptr;
    }
}

std::shared_ptr<ModelContainer> openWithCloud(std::string& error) {
    log(LogLevel::info, "尝试创建启用 CloudKit 的容器...");
    auto container = attempt(CloudDatabase::automatic, error);
    if (!container) log(LogLevel::warning, "CloudKit 容器创建失败: " + error);
    return container;
}

std::shared_ptr<ModelContainer> openLocally(std::string& error) {
    log(LogLevel::warning, "CloudKit 容器创建失败，回退到本地容器...");
    log(LogLevel::info, "尝试创建禁用 CloudKit 的备用容器...");
    auto container = attempt(CloudDatabase::none, error);
    if (container)
        log(LogLevel::info, "备用容器创建成功");
    else
        log(LogLevel::error, "备用容器创建失败: " + error);
    return container;
}

std::shared_ptr<ModelContainer> openPlainly(std::string& error) {
    log(LogLevel::warning, "所有模型容器创建尝试都失败了，尝试使用最基本的配置...");
    auto container = attempt(CloudDatabase::none, error);
    if (container)
        log(LogLevel::info, "使用基本配置成功创建容器");
    else
        log(LogLevel::error, "基本配置容器创建也失败: " + error);
    return container;
}

}  // namespace

void configure(Environment newEnvironment) {
    const std::lock_guard guard(lock);
    environment = std::move(newEnvironment);
    if (!environment.open)
        environment.open = [](const ModelConfiguration& configuration) {
            return std::make_shared<ModelContainer>(configuration);
        };
}

ModelContainer& sharedContainer() {
    const std::lock_guard guard(lock);
    if (shared) return *shared;
    log(LogLevel::info, "开始创建 SwiftData 容器...");
    std::string error;
    auto container = openWithCloud(error);
    if (!container) container = openLocally(error);
    if (!container) container = openPlainly(error);
    if (!container) {
        const std::string message = fatalMessage(error);
        log(LogLevel::error, message);
        environment.fatal(message);
        std::abort();
    }
    shared = std::move(container);
    return *shared;
}

void reset() {
    const std::lock_guard guard(lock);
    shared.reset();
    environment = {};
}

std::string fatalMessage(std::string_view lastError) {
    return "无法创建任何 SwiftData 容器。所有尝试都失败了：\n1. CloudKit 容器创建失败或超时\n2. 本地容器创建失败\n"
           "3. 基本配置容器创建失败\n\n最后错误: " +
           std::string(lastError) +
           "\n\n可能的原因：\n- 数据库文件损坏\n- 磁盘空间不足\n- 权限问题\n- SwiftData 配置错误\n\n建议：\n- "
           "检查磁盘空间\n"
           "- 重启应用\n- 如果问题持续，可能需要删除应用数据并重新开始";
}

}  // namespace quorvane::SafeModelContainer
