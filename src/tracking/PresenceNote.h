#pragma once

#include "store/ModelContext.h"

#include <optional>

/// What a tracker keeps of the user in its store beside the records, for its next run and for other programs. All of it
/// throws `StoreError`.
namespace quorvane::PresenceNote {

/// Since when recording is paused because the user wants it so.
void keepPause(ModelContext& store, std::optional<Date> since);
[[nodiscard]] std::optional<Date> pausedSince(ModelContext& store);

/// Since when nobody is there; of no meaning where no tracker runs.
void keepAbsence(ModelContext& store, std::optional<Date> since);
[[nodiscard]] std::optional<Date> awaySince(ModelContext& store);

}  // namespace quorvane::PresenceNote
