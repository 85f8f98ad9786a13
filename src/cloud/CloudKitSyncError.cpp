#include "cloud/CloudKitSyncError.h"

#include <fmt/format.h>
#include <utility>

namespace quorvane {
namespace {

using Code = CloudKitSyncError::Code;

std::string description(Code code, const std::string& message) {
    switch (code) {
    case Code::syncFailed: return fmt::format("同步失败: {}", message);
    case Code::schedulerError: return fmt::format("CloudKit调度器错误: {}（这通常不影响功能）", message);
    case Code::notAvailable: return "CloudKit不可用，请检查iCloud登录状态";
    case Code::timeout: return "同步超时（30秒），请检查网络连接";
    case Code::recordNotFound: return "记录未找到";
    case Code::invalidData: return "数据格式无效";
    }
    return message;
}

}  // namespace

CloudKitSyncError::CloudKitSyncError(Code code, const std::string& message, std::string cause)
    : code_(code), message_(message), description_(description(code, message)), cause_(std::move(cause)) {}

std::string CloudKitSyncError::text(const Localization& localization) const {
    switch (code_) {
    case Code::syncFailed: return localization.text("cloud_failed", message_);
    case Code::schedulerError: return localization.text("cloud_scheduler_failed", message_);
    case Code::notAvailable: return localization.text("cloud_not_available");
    case Code::timeout: return localization.text("cloud_timeout");
    case Code::recordNotFound: return localization.text("cloud_record_not_found");
    case Code::invalidData: return localization.text("cloud_data_invalid");
    }
    return message_;
}

CloudKitSyncError CloudKitSyncError::from(const platform::CloudFailure& failure) {
    using Kind = platform::CloudFailure::Kind;
    switch (failure.kind()) {
    case Kind::noAccount: return CloudKitSyncError(Code::notAvailable, {}, failure.what());
    case Kind::timedOut: return CloudKitSyncError(Code::timeout, {}, failure.what());
    case Kind::recordNotFound: return CloudKitSyncError(Code::recordNotFound, {}, failure.what());
    case Kind::restricted:
    case Kind::outdated:
    case Kind::insecure:
    case Kind::unreachable:
    case Kind::busy:
    case Kind::lost:
    case Kind::full:
    case Kind::cancelled:
    case Kind::refused: break;
    }
    return CloudKitSyncError(Code::syncFailed, failure.what());
}

}  // namespace quorvane
