#pragma once

namespace quorvane {

/// Reserved for whoever uploads more than records some day.
struct ICloudUploader {};

}  // namespace quorvane
