#pragma once

#include "base/Json.h"
#include "base/Signal.h"
#include "base/Weak.h"
#include "diagnostics/ConsoleSink.h"
#include "l10n/Localization.h"
#include "platform/RecordContainer.h"
#include "platform/RunLoop.h"
#include "store/ActivityRecord.h"
#include "store/ActivityShare.h"
#include "store/ModelContext.h"

#include <deque>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvane {

/// Publishes shares under tokens that nobody can guess, stops them and lists them. Operations run one after another.
/// Main thread only; questions to the cloud wait on a worker.
class ShareService {
public:
    /// How an operation ended: none after a success, else the `StoreError` or `CloudKitSyncError` that ended it, of
    /// which `errorMessage()` tells. Called once, in a later turn of the run loop than the call; never once the service
    /// is gone.
    using Finished = std::function<void(const std::exception_ptr& failure)>;
    using Created = std::function<void(const std::shared_ptr<ActivityShare>& share, const std::exception_ptr& failure)>;

    /// What it needs outlives it. Without a container the cloud is unavailable.
    ShareService(platform::RunLoop& runLoop, ConsoleSink& console, const Localization& localization,
                 std::unique_ptr<platform::RecordContainer> container);
    ShareService(const ShareService&) = delete;
    ShareService& operator=(const ShareService&) = delete;
    ~ShareService();  ///< Calls off what is under way.

    /// Newest first.
    [[nodiscard]] const std::vector<std::shared_ptr<ActivityShare>>& shares() const { return shares_; }
    [[nodiscard]] bool isLoading() const { return isLoading_; }
    /// What failed last. It stays until something else fails or a share is created.
    [[nodiscard]] const std::optional<std::string>& errorMessage() const { return errorMessage_; }
    /// Sent when any of these is another.
    Signal<> changed;

    struct NewShare {
        std::string title;
        std::optional<Date> expiresAt{};
        std::vector<Uuid> projectIds{};  ///< empty: all projects
    };

    /// Stores the share and publishes it. One that could not be published stays in the store, and `finished` gets no
    /// share. The context outlives the service, here and below.
    void createShare(const NewShare& share, ModelContext& context, Created finished);

    /// Marks the share as inactive, takes its public record away, and loads the list again. A failure of that last step
    /// stands in `errorMessage()` alone.
    void stopShare(const std::shared_ptr<ActivityShare>& share, ModelContext& context, Finished finished);

    /// Lists the shares of the store, and takes over what the cloud says of those whose token it names.
    void loadShares(ModelContext& context, Finished finished);

    /// The share and its records as JSON, see `shareDocument`. None on failure; `errorMessage()` says why.
    [[nodiscard]] std::optional<Json> exportShareData(const ActivityShare& share,
                                                      const std::vector<std::shared_ptr<ActivityRecord>>& records);

private:
    struct PublicShare;

    void enqueue(std::function<void()> operation);
    void startNext();
    void end(std::function<void()> report);
    template <class Work, class Done>
    void ask(Work work, Done done);
    std::exception_ptr attempt(MessageKey<std::string> failed, const std::function<void()>& step);

    void publish(const std::shared_ptr<ActivityShare>& share, ModelContext& context, const Created& finished);
    void retract(const ActivityShare& share, ModelContext& context, const Finished& finished);
    void load(ModelContext& context, const Finished& finished);
    [[nodiscard]] static std::vector<PublicShare> publicShares(platform::RecordSession& session);
    void takeOver(const std::vector<PublicShare>& found, ModelContext& context);

    platform::RunLoop& runLoop_;
    ConsoleSink& console_;
    const Localization& localization_;
    std::unique_ptr<platform::RecordContainer> container_;
    std::shared_ptr<platform::RecordSession> session_;  ///< while a question is under way
    std::deque<std::function<void()>> waiting_;
    bool isBusy_ = false;  ///< an operation has begun and its end is not reported yet
    std::vector<std::shared_ptr<ActivityShare>> shares_;
    bool isLoading_ = false;
    std::optional<std::string> errorMessage_;
    WeakSource<ShareService> weak_{*this};
};

}  // namespace quorvane
