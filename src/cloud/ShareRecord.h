#pragma once

#include "platform/CloudRecord.h"
#include "store/ActivityShare.h"

namespace quorvane {

/// The public form of a share: type "ActivityShare", named by the token, which stands nowhere else in it.
[[nodiscard]] platform::CloudRecord makeCloudRecord(const ActivityShare& share);

}  // namespace quorvane
