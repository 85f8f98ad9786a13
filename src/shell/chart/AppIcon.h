#pragma once

#include "platform/ApplicationIcons.h"
#include "timeline/ProcessedActivityItem.h"

#include <QIcon>

namespace quorvane {

/// The desktop's icon of the block's application; null if it has none.
[[nodiscard]] QIcon appIcon(const ProcessedActivityItem& item, const platform::ApplicationIcons& icons);

}  // namespace quorvane
