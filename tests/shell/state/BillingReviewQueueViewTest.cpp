#include "shell/state/BillingReviewQueueView.h"

#include "support/Builders.h"
#include "support/TemporaryStore.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

using testing::ElementsAre;

namespace quorvane {
namespace {

/// A queue over a real store, at noon of Monday, 2 March 2026.
class BillingReviewQueueViewTest : public testing::Test {
protected:
    BillingReviewQueueView queue() {
        store.context().save();
        return {store.context(), records, {harbour, lumen}, english};
    }
    /// What another program reads after a save.
    std::vector<std::string> stored() {
        store.context().save();
        std::vector<std::string> lines;
        const auto other = store.anotherContext();
        for (const auto& record : other->fetch<ActivityRecord>({.sort = {ascending(&ActivityRecord::startTime)}}))
            lines.push_back(fmt::format("{} {} {}", record->billingStatus(),
                                        record->project() ? record->project()->name() : "-",
                                        record->updatedAt() == noon ? "now" : "before"));
        return lines;
    }

    Date noon = at("12:00:00");
    platform::ClockOverride clock{[this] { return noon; }};
    TemporaryStore store;
    Localization english{"en"};
    std::shared_ptr<Project> harbour = insertProject(store.context(), "Harbour");
    std::shared_ptr<Project> lumen = insertProject(store.context(), "Lumen");
    std::vector<std::shared_ptr<ActivityRecord>> records{
        aRecord().from("09:00:00").to("09:30:00").title("Plan").project(harbour).in(store.context()),
        aRecord().from("10:00:00").project(harbour).in(store.context())};
};

TEST_F(BillingReviewQueueViewTest, ARecordIsNamedByTheFirstTextThatIsNotEmpty) {
    struct Row {
        const char* name;
        RecordBuilder record;
        std::string expected;
    };
    const Row rows[] = {
        {"window", aRecord().title("Plan").document("/a.txt").url("https://a.example").app("Editor"), "Plan"},
        {"document", aRecord().title("").document("/a.txt").url("https://a.example").app("Editor"), "/a.txt"},
        {"page", aRecord().document("").url("https://a.example").app("Editor"), "https://a.example"},
        {"application", aRecord().url("").app("Editor"), "Editor"},
        {"nothing", aRecord(), "-"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(displayTitle(*row.record.make()).value_or("-"), row.expected);
    }
}

TEST_F(BillingReviewQueueViewTest, ARowTellsStartLengthAndConfidence) {
    records[0]->confidence = 0.579;  // its hundred-fold is cut off, not rounded
    records[1]->confidence = BillingReviewQueueView::lowConfidence;
    records.push_back(aRecord().from("11:00:00").to("10:00:00").in(store.context()));
    const auto view = queue();
    EXPECT_THAT(view.row(0).detail, testing::EndsWith(" - 0.50 h - Confidence 57%"));
    EXPECT_TRUE(view.row(0).hasLowConfidence);
    EXPECT_EQ(view.row(1).title, "Unknown activity");
    EXPECT_THAT(view.row(1).detail, testing::EndsWith(" - In progress - Confidence 90%"));
    EXPECT_FALSE(view.row(1).hasLowConfidence);
    EXPECT_THAT(view.row(2).detail, testing::HasSubstr(" - 0.00 h - "));
    EXPECT_EQ(view.countCaption(), "3 records to review");
}

TEST_F(BillingReviewQueueViewTest, DecisionsGoToTheStoreAndSettledRecordsStay) {
    auto view = queue();
    std::vector<std::size_t> changes;
    const auto changed = view.rowChanged.subscribe([&](std::size_t row) { changes.push_back(row); });
    EXPECT_EQ(view.row(1).status, BillingStatus::review);
    view.setStatus(1, BillingStatus::excluded);
    EXPECT_THAT(stored(), ElementsAre("review Harbour before", "excluded Harbour now"));
    EXPECT_THAT(changes, testing::Each(1U));
    EXPECT_EQ(view.row(1).status, BillingStatus::excluded);
    EXPECT_EQ(view.countCaption(), "2 records to review");

    view.setProject(0, lumen);
    view.setProject(1, nullptr);
    EXPECT_THAT(stored(), ElementsAre("review Lumen now", "excluded - now"));
    EXPECT_EQ(view.row(0).project, lumen);
}

TEST_F(BillingReviewQueueViewTest, BulkActionsReachEveryRecordOfTheListAndNoOther) {
    aRecord().from("11:00:00").project(harbour).in(store.context());
    auto view = queue();
    int messages = 0;
    const auto row = view.rowChanged.subscribe([&](std::size_t) { ++messages; });
    const auto all = view.allChanged.subscribe([&] { ++messages; });
    view.markAllBillable();
    EXPECT_THAT(stored(), ElementsAre("billable Harbour now", "billable Harbour now", "review Harbour before"));
    view.excludeAll();
    EXPECT_THAT(stored(), ElementsAre("excluded Harbour now", "excluded Harbour now", "review Harbour before"));
    EXPECT_EQ(messages, 2);
}

}  // namespace
}  // namespace quorvane
