#pragma once

#include "base/Json.h"
#include "base/Signal.h"
#include "base/Weak.h"
#include "cloud/CloudKitSyncError.h"
#include "diagnostics/ConsoleSink.h"
#include "platform/RecordContainer.h"
#include "platform/RunLoop.h"
#include "store/ActivityRecord.h"
#include "store/ActivityShare.h"
#include "store/ModelContext.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvane {

/// Publishes shares under tokens that nobody can guess, stops them and lists them. Main thread only; questions to the
/// cloud wait on a worker.
class ShareService {
public:
    using Finished = std::function<void(const std::optional<CloudKitSyncError>& error)>;

    /// What it needs outlives it. Without a container the cloud is unavailable.
    ShareService(platform::RunLoop& runLoop, ConsoleSink& console,
                 std::unique_ptr<platform::RecordContainer> container);
    ShareService(const ShareService&) = delete;
    ShareService& operator=(const ShareService&) = delete;
    ~ShareService();  ///< Calls off what is under way.

    [[nodiscard]] const std::vector<std::shared_ptr<ActivityShare>>& shares() const { return shares_; }
    [[nodiscard]] bool isLoading() const { return isLoading_; }
    [[nodiscard]] const std::optional<std::string>& errorMessage() const { return errorMessage_; }
    /// Sent when any of these is another.
    Signal<> changed;

    struct NewShare {
        std::string title;
        std::optional<Date> expiresAt{};
        std::vector<Uuid> projectIds{};  ///< empty: all projects
    };

    /// Stores the share and publishes it. A share that could not be published stays in the store. `finished` comes
    /// once, in a later turn of the run loop, with the share or an error. Operations run one after another. The context
    /// outlives the service.
    void
    createShare(const NewShare& share, ModelContext& context,
                std::function<void(std::shared_ptr<ActivityShare>, const std::optional<CloudKitSyncError>&)> finished);

    /// Marks the share as inactive, takes its public record away, and loads the list again.
    void stopShare(const std::shared_ptr<ActivityShare>& share, ModelContext& context, Finished finished);

    /// Lists the shares of the store, newest first, and takes over what the cloud says of those that it names.
    void loadShares(ModelContext& context, Finished finished);

    /// The share and its records as JSON: `shareInfo` and `activities`. A share of projects takes only the records of
    /// those. None on failure; `errorMessage` says why.
    [[nodiscard]] std::optional<Json> exportShareData(const ActivityShare& share,
                                                      const std::vector<std::shared_ptr<ActivityRecord>>& records);
};

}  // namespace quorvane
