#pragma once

#include "cloud/CloudKitSyncError.h"
#include "cloud/SyncProgress.h"
#include "diagnostics/ConsoleSink.h"
#include "l10n/Localization.h"
#include "platform/RecordContainer.h"
#include "platform/RunLoop.h"
#include "store/ModelContext.h"

#include <functional>
#include <memory>
#include <optional>

namespace quorvane {

/// What the two halves of a sync work with. It outlives them.
struct SyncParts {
    platform::RunLoop& runLoop;
    ConsoleSink& console;
    ModelContext& context;
    const Localization& localization;
    std::shared_ptr<platform::RecordSession> session;
    SyncProgress progress{};
    std::function<void()> progressChanged;
};

/// How a half ends: once, with none if all of it was done. It may destroy the half.
using SyncFinished = std::function<void(const std::optional<CloudKitSyncError>& error)>;

}  // namespace quorvane
