#pragma once

#include "base/Json.h"
#include "praise/ShareImageConfig.h"

namespace quorvane {

/// A configuration as it goes from one program to another.
[[nodiscard]] Json jsonOf(const ShareImageConfig& config);

/// None for anything that `jsonOf` doesn't write.
[[nodiscard]] std::optional<ShareImageConfig> shareImageConfigFrom(const Json& json);

}  // namespace quorvane
