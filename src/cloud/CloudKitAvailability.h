#pragma once

#include "diagnostics/AppLogger.h"
#include "platform/RecordContainer.h"

/// May this process use the cloud?
namespace quorvane::CloudKitAvailability {

/// True if this installation carries a cloud service. Decided by the first call, once for the process; where there is
/// none, that call logs a warning. Everything that speaks with the cloud asks here first.
[[nodiscard]] bool isAvailable(const platform::CloudService& service, AppLogger& logger);

/// The container of the service; none, and nothing is made, where the cloud isn't available.
[[nodiscard]] std::unique_ptr<platform::RecordContainer> defaultContainer(const platform::CloudService& service,
                                                                          AppLogger& logger);

}  // namespace quorvane::CloudKitAvailability
