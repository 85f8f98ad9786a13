#pragma once

#include "store/ModelContext.h"

namespace quorvane {

/// A designer's week around Thursday, 12 March 2026, with projects and time given to them: what pictures of the screens
/// show, and tests that need a full day. Thursday's last record ends at 16:49. Inserted, saved.
void insertSampleDays(ModelContext& context);

}  // namespace quorvane
