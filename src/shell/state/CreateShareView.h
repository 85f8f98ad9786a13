#pragma once

#include "base/Signal.h"
#include "base/Weak.h"
#include "cloud/ShareService.h"
#include "l10n/Localization.h"
#include "store/ActivityRecord.h"
#include "store/ModelContext.h"

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace quorvane {

/// Asks for what a new share is called and which activity it shows. What it is made on outlives it. Main thread only.
class CreateShareView {
public:
    static constexpr std::size_t recentLimit = 100;  ///< records to choose from

    /// `dismiss` closes the screen. Throws `StoreError`.
    CreateShareView(ShareService& shareService, ModelContext& modelContext, const Localization& localization,
                    std::function<void()> dismiss);
    CreateShareView(const CreateShareView&) = delete;
    CreateShareView& operator=(const CreateShareView&) = delete;

    /// What the screen says around its fields.
    struct Texts {
        std::string heading;
        std::string title;
        std::string description;
        std::string records;
        std::string cancel;
        std::string create;
        friend bool operator==(const Texts&, const Texts&) = default;
    };
    [[nodiscard]] Texts texts() const;

    std::string title;
    std::string description;  ///< for whoever writes it: a share carries none

    /// A record to choose.
    struct Row {
        Uuid id;
        std::string name;
        const char* iconName = "";  ///< of a chosen one; empty: none
        friend bool operator==(const Row&, const Row&) = default;
    };
    /// The latest records as they were when the screen opened, newest first.
    [[nodiscard]] std::vector<Row> recentRecords() const;
    void toggle(const Uuid& record);
    [[nodiscard]] const std::set<Uuid>& selectedRecords() const { return selectedRecords_; }

    /// The projects of the chosen records, each once. A share knows projects and no single records.
    [[nodiscard]] std::vector<Uuid> projectIds() const;
    /// There is a title, and a project: a share without projects would show all of them.
    [[nodiscard]] bool canCreate() const;
    /// Makes the share, and dismisses once it is published.
    void create();
    [[nodiscard]] bool isCreating() const { return isCreating_; }
    void cancel();
    /// What kept it from being published.
    [[nodiscard]] const std::optional<std::string>& errorMessage() const { return errorMessage_; }

    /// Sent after the choice, the progress or the error have changed.
    Signal<> changed;

private:
    void end(bool isPublished);

    ShareService& shareService_;
    ModelContext& modelContext_;
    const Localization& localization_;
    std::function<void()> dismiss_;
    std::vector<std::shared_ptr<ActivityRecord>> recentRecords_;
    std::set<Uuid> selectedRecords_;
    bool isCreating_ = false;
    std::optional<std::string> errorMessage_;
    WeakSource<CreateShareView> weak_{*this};
};

}  // namespace quorvane
