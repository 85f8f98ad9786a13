#include "shell/state/BillingReviewQueueView.h"

#include "support/Mapped.h"
#include "support/StoreTest.h"

#include <fmt/format.h>

namespace quorvane {
namespace {

/// A queue over a real store, at noon of Monday, 2 March 2026.
class BillingReviewQueueViewTest : public StoreTest {
protected:
    BillingReviewQueueView queue() {
        context().save();
        return {context(), records, {harbour, lumen}, localization};
    }
    /// What another program reads after a save.
    std::vector<std::string> stored() {
        context().save();
        const auto other = store.anotherContext();
        const auto all = other->fetch<ActivityRecord>({.sort = {ascending(&ActivityRecord::startTime)}});
        return mapped(all, [this](const auto& record) {
            return fmt::format("{} {} {}", record->billingStatus(), record->project() ? record->project()->name() : "-",
                               record->updatedAt() == runLoop.now() ? "now" : "before");
        });
    }

    std::shared_ptr<Project> harbour = insertProject(context(), "Harbour");
    std::shared_ptr<Project> lumen = insertProject(context(), "Lumen");
    std::vector<std::shared_ptr<ActivityRecord>> records{
        aRecord().from("09:00:00").to("09:30:00").title("Plan").project(harbour).in(context()),
        aRecord().from("10:00:00").project(harbour).in(context())};
};

TEST_F(BillingReviewQueueViewTest, ARowTellsStartLengthAndConfidence) {
    records[0]->confidence = 0.579;  // its hundred-fold is cut off, not rounded
    records[1]->confidence = BillingReviewQueueView::lowConfidence;
    records.push_back(aRecord().from("11:00:00").to("10:00:00").in(context()));
    const auto view = queue();
    EXPECT_THAT(view.row(0).detail, EndsWith(" - 0.50 h - Confidence 57%"));
    EXPECT_TRUE(view.row(0).hasLowConfidence);
    EXPECT_EQ(view.row(1).title, "Unknown activity");
    EXPECT_THAT(view.row(1).detail, EndsWith(" - In progress - Confidence 90%"));
    EXPECT_FALSE(view.row(1).hasLowConfidence);
    EXPECT_THAT(view.row(2).detail, HasSubstr(" - 0.00 h - "));
    EXPECT_EQ(view.countCaption(), "3 records to review");
}

TEST_F(BillingReviewQueueViewTest, ARecordIsNamedByTheFirstTextThatIsNotEmpty) {
    const std::pair<RecordBuilder, const char*> rows[] = {
        {aRecord().title("Plan").document("/a.txt").url("https://a.example").app("Editor"), "Plan"},
        {aRecord().title("").document("/a.txt").url("https://a.example").app("Editor"), "/a.txt"},
        {aRecord().document("").url("https://a.example").app("Editor"), "https://a.example"},
        {aRecord().url("").app("Editor"), "Editor"},
        {aRecord(), "-"}};
    for (const auto& [record, expected] : rows)
        EXPECT_EQ(displayTitle(*record.make()).value_or("-"), expected);
}

TEST_F(BillingReviewQueueViewTest, DecisionsGoToTheStoreAndSettledRecordsStay) {
    auto view = queue();
    std::vector<std::size_t> changes;
    const auto changed = view.rowChanged.subscribe([&](std::size_t row) { changes.push_back(row); });
    EXPECT_EQ(view.row(1).status, BillingStatus::review);
    view.setStatus(1, BillingStatus::excluded);
    EXPECT_THAT(stored(), ElementsAre("review Harbour before", "excluded Harbour now"));
    EXPECT_THAT(changes, Each(1U));
    EXPECT_EQ(view.row(1).status, BillingStatus::excluded);
    EXPECT_EQ(view.countCaption(), "2 records to review");

    view.setProject(0, lumen);
    view.setProject(1, nullptr);
    EXPECT_THAT(stored(), ElementsAre("review Lumen now", "excluded - now"));
    EXPECT_EQ(view.row(0).project, lumen);
}

TEST_F(BillingReviewQueueViewTest, BulkActionsReachEveryRecordOfTheListAndNoOther) {
    aRecord().from("11:00:00").project(harbour).in(context());
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
