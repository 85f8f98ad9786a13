#pragma once

#include "capture/CaptureHealth.h"
#include "store/ModelContext.h"

#include <optional>

/// What the tracker of a store last found that it can see, kept in the store: other programs may run where more or less
/// is seen than the tracker sees. Only trouble is kept, so that nothing is written where there is none.
namespace quorvane::CaptureNote {

/// Throws `StoreError`.
void keep(ModelContext& store, const CaptureHealth& health);

/// The trouble that is kept; none: the tracker sees all. Throws `StoreError`.
[[nodiscard]] std::optional<CaptureHealth> kept(ModelContext& store);

}  // namespace quorvane::CaptureNote
