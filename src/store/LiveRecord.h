#pragma once

#include "base/Uuid.h"

#include <functional>
#include <optional>

namespace quorvane {

class ModelContext;

/// Names the open record that a tracker is working on, while there is one. Every other open record is left over.
using LiveRecord = std::function<std::optional<Uuid>()>;

/// For programs beside a tracker: the open record with the newest sign of life. Throws `StoreError`.
[[nodiscard]] std::optional<Uuid> newestOpenRecord(ModelContext& context);

}  // namespace quorvane
