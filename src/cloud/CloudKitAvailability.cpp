#include "cloud/CloudKitAvailability.h"

namespace quorvane::CloudKitAvailability {
namespace {

bool ask(const platform::CloudService& service, AppLogger& logger) {
    const bool isConfigured = service.isConfigured && service.makeContainer && service.isConfigured();
    if (!isConfigured) logger.log("本构建未带 CloudKit 权限，iCloud 同步停用", LogLevel::warning, "CloudKit");
    return isConfigured;
}

}  // namespace

bool isAvailable(const platform::CloudService& service, AppLogger& logger) {
    static const bool answer = ask(service, logger);
    return answer;
}

std::unique_ptr<platform::RecordContainer> defaultContainer(const platform::CloudService& service, AppLogger& logger) {
    return isAvailable(service, logger) ? service.makeContainer() : nullptr;
}

}  // namespace quorvane::CloudKitAvailability
