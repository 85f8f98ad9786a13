#pragma once

#include "base/Signal.h"
#include "cloud/ShareService.h"
#include "l10n/Localization.h"
#include "platform/RunLoop.h"
#include "store/ActivityShare.h"
#include "store/ModelContext.h"

#include <memory>
#include <optional>
#include <string>

namespace quorvane {

/// A share in a list, with the ways to stop and to delete it. What it is made on outlives it. Main thread only.
class ShareItemView {
public:
    static constexpr const char* deleteIconName = "trash";

    ShareItemView(std::shared_ptr<ActivityShare> share, ModelContext& modelContext, ShareService& shareService,
                  platform::RunLoop& runLoop);
    ShareItemView(const ShareItemView&) = delete;
    ShareItemView& operator=(const ShareItemView&) = delete;

    [[nodiscard]] const ActivityShare& share() const { return *share_; }

    enum class State { active, stopped, expired };
    /// Whoever reads a share sees to its expiry; nothing is stored when it comes.
    [[nodiscard]] State state() const;

    /// A question, with the way out first.
    struct Confirmation {
        std::string title;
        std::string message;
        std::string cancel;
        std::string confirm;
        friend bool operator==(const Confirmation&, const Confirmation&) = default;
    };

    /// What has to be read before a share is stopped.
    [[nodiscard]] static std::string stopWarning(const Localization& localization);
    /// Takes the share out of the cloud; the object stays, inactive.
    void stop();

    [[nodiscard]] static Confirmation deleteConfirmation(const Localization& localization);
    void askToDelete();
    void cancelDeleting();
    /// Removes the object from the store; a public record stays where it is. Only after `askToDelete`.
    void confirmDelete();
    [[nodiscard]] bool showingDeleteConfirmation() const { return showingDeleteConfirmation_; }
    /// Is the object gone from the store?
    [[nodiscard]] bool isDeleted() const { return isDeleted_; }
    /// Why the last attempt to delete failed.
    [[nodiscard]] const std::optional<std::string>& errorMessage() const { return errorMessage_; }

    Signal<> changed;

private:
    std::shared_ptr<ActivityShare> share_;
    ModelContext& modelContext_;
    ShareService& shareService_;
    platform::RunLoop& runLoop_;
    bool showingDeleteConfirmation_ = false;
    bool isDeleted_ = false;
    std::optional<std::string> errorMessage_;
};

}  // namespace quorvane
