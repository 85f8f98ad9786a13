#include "shell/state/CloudKitSyncView.h"

#include "platform/simulated/SimulatedRecordContainer.h"
#include "support/StoreTest.h"

#include <fmt/format.h>

namespace quorvane {
namespace {

using platform::AccountStatus;
using platform::CloudFailure;

constexpr const char* unavailable = "The cloud is not available. Check how this computer signs in.";

class CloudKitSyncViewTest : public StoreTest {
protected:
    CloudKitSyncViewTest() : StoreTest("09:00:00") {}

    /// The screen opens; `messages` takes what its alerts say.
    CloudKitSyncView& open() {
        view = std::make_unique<CloudKitSyncView>(*service, context(), runLoop, localization);
        changed = view->changed.subscribe([this] {
            statuses.push_back(view->statusText());
            if (!view->showingSyncAlert()) return;
            messages.push_back((view->hasSucceeded() ? "+ " : "- ") + view->syncMessage());
            view->dismissSyncAlert();
        });
        view->appear();
        return *view;
    }
    void addRecords(int count) {
        for (int i = 0; i < count; ++i)
            aRecord().from("08:00:00").to("08:30:00").app("Editor").in(context());
        context().save();
    }
    [[nodiscard]] std::string problem() const {
        const auto found = view->problem();
        return found ? fmt::format("{}{}|{}", found->isFailure ? "" : "? ", found->text, found->cause) : "none";
    }

    platform::SimulatedCloud cloud;
    std::unique_ptr<CloudKitSyncService> service = std::make_unique<CloudKitSyncService>(
        runLoop, console, localization, std::make_unique<platform::SimulatedRecordContainer>(cloud));
    std::unique_ptr<CloudKitSyncView> view;
    Subscription changed;
    std::vector<std::string> messages;
    std::vector<std::string> statuses;
};

TEST_F(CloudKitSyncViewTest, EachOutcomeHasItsWordsAndLeavesItsTrace) {
    using enum CloudFailure::Kind;
    const std::string timedOutText = "No answer within 30 seconds. Check the network.";
    const std::string busyText = "Cloud error: CKScheduler is busy";
    const std::string downText = "Cloud error: db is down";
    const std::string refusal = std::string("- ") + unavailable;
    // What the two buttons say in the end, and what stands on the screen then.
    const std::tuple<AccountStatus, std::optional<CloudFailure>, std::string, std::string, std::string> rows[] = {
        {AccountStatus::available, {}, "+ The records are synced", "+ The full sync is complete", "none"},
        {AccountStatus::available, CloudFailure(timedOut, "no answer from db"),
         "- The records could not be synced: " + timedOutText,
         "- The full sync could not be completed: " + timedOutText, timedOutText + "|no answer from db"},
        {AccountStatus::available, CloudFailure(unreachable, "db is down"),
         "- The records could not be synced: " + downText, "- The full sync could not be completed: " + downText,
         downText + "|"},
        {AccountStatus::available, CloudFailure(refused, "CKScheduler is busy"), "+ The records are synced",
         "+ The full sync is complete", busyText + "|"},
        {AccountStatus::noAccount, {}, refusal, refusal, std::string(unavailable) + "|nobody knows mia"}};
    for (const auto& [status, failure, records, everything, trouble] : rows) {
        SCOPED_TRACE(trouble);
        cloud.status = status;
        cloud.statusReason = status == AccountStatus::available ? "" : "nobody knows mia";
        cloud.failure = failure;
        messages.clear();
        service = std::make_unique<CloudKitSyncService>(runLoop, console, localization,
                                                        std::make_unique<platform::SimulatedRecordContainer>(cloud));
        auto& screen = open();
        screen.syncActivityRecords();
        EXPECT_FALSE(screen.canSync());
        screen.performFullSync();  // nothing: one at a time
        runLoop.runPosted();
        screen.performFullSync();
        runLoop.runPosted();
        EXPECT_THAT(messages, ElementsAre(records, everything));
        EXPECT_EQ(problem(), trouble);
        EXPECT_TRUE(screen.canSync());
        view.reset();
    }
}

TEST_F(CloudKitSyncViewTest, TheStatusIsAskedForWhenTheScreenOpensAndTheLastAnswerCounts) {
    auto& screen = open();
    EXPECT_EQ(screen.availabilityText(), "Checking…");
    EXPECT_EQ(problem(), "none");
    runLoop.runPosted();
    EXPECT_EQ(screen.availabilityText(), "Available");
    cloud.status = AccountStatus::restricted;
    cloud.statusReason = "mia may read only";
    open();
    runLoop.runPosted();
    EXPECT_EQ(view->availabilityText(), "Not available");
    EXPECT_EQ(problem(), std::string(unavailable) + "|mia may read only");
    EXPECT_TRUE(view->canSync()) << "to try again";
    cloud.status = AccountStatus::available;
    view->syncActivityRecords();
    runLoop.runPosted();
    EXPECT_EQ(view->availabilityText(), "Available");
    EXPECT_THAT(messages, ElementsAre("+ The records are synced"));
}

TEST_F(CloudKitSyncViewTest, WithoutACloudServiceItSaysHowToSetOneUpAndSyncsNothing) {
    service = std::make_unique<CloudKitSyncService>(runLoop, console, localization, nullptr);
    auto& screen = open();
    screen.performFullSync();
    runLoop.runPosted();
    EXPECT_EQ(screen.availabilityText(), "Not available");
    EXPECT_FALSE(screen.canSync());
    EXPECT_TRUE(problem().starts_with("? No cloud database is set up")) << problem();
    EXPECT_THAT(messages, ElementsAre());
    EXPECT_EQ(cloud.sessions, 0);
}

TEST_F(CloudKitSyncViewTest, TheStatusSaysHowFarASyncIsAndWhenTheLastOneWas) {
    addRecords(250);
    auto& screen = open();
    runLoop.runPosted();
    EXPECT_EQ(screen.statusText(), "Never synced");
    EXPECT_STREQ(screen.symbol(), "cloud");
    screen.syncActivityRecords();
    EXPECT_EQ(screen.statusText(), "Syncing…");
    EXPECT_STREQ(screen.symbol(), "refresh");
    runLoop.runPosted();
    for (const char* told : {"Syncing… 0 of 250 uploaded", "Syncing… 200 of 250 uploaded", "Syncing… 250 downloaded"})
        EXPECT_THAT(statuses, Contains(told));
    EXPECT_EQ(screen.statusText(), "Last sync: today, 09:00");
    runLoop.setClock(at("2026-03-03 08:00:00"));
    EXPECT_EQ(screen.statusText(), "Last sync: yesterday, 09:00");
    runLoop.setClock(at("2026-03-04 08:00:00"));
    EXPECT_THAT(screen.statusText(), MatchesRegex("Last sync: .*2026.*"));
}

TEST_F(CloudKitSyncViewTest, RecordsThatTheCloudRefusesAreCountedAfterASuccess) {
    addRecords(2);
    for (const auto& record : context().fetch<ActivityRecord>())
        cloud.refusedRecords[record->id().string()] = "too large";
    open().syncActivityRecords();
    runLoop.runPosted();
    EXPECT_THAT(messages, ElementsAre("+ The records are synced"));
    EXPECT_EQ(problem(), "2 records were refused by the cloud and stay on this computer alone.|");
}

TEST_F(CloudKitSyncViewTest, ASyncThatAnotherOneBeganIsShownAndItsEndTold) {
    runLoop.holdBackground();
    service->performFullSync(context(), [](const auto&) {});
    auto& screen = open();
    EXPECT_TRUE(screen.isSyncing());
    EXPECT_FALSE(screen.canSync());
    runLoop.releaseBackground();
    runLoop.runPosted();
    EXPECT_THAT(messages, ElementsAre("+ The sync is complete"));
    cloud.failure = CloudFailure(CloudFailure::Kind::unreachable, "db is down");
    service->performFullSync(context(), [](const auto&) {});
    runLoop.runPosted();
    EXPECT_THAT(messages, ElementsAre("+ The sync is complete")) << "a failure of another one's stands on the screen";
    EXPECT_EQ(problem(), "Cloud error: db is down|");
}

TEST_F(CloudKitSyncViewTest, ASyncThatBeganDuringTheQuestionIsNotTakenForOnesOwn) {
    auto& screen = open();
    runLoop.runPosted();
    runLoop.holdBackground();
    screen.syncActivityRecords();
    service->performFullSync(context(), [](const auto&) {});
    runLoop.releaseBackground();
    runLoop.runPosted();
    EXPECT_THAT(messages, ElementsAre("+ The sync is complete"));
    EXPECT_TRUE(screen.canSync());
}

TEST_F(CloudKitSyncViewTest, ASyncGoesOnWhenItsScreenCloses) {
    addRecords(3);
    open().performFullSync();
    const auto closing = service->changed.subscribe([this] { runLoop.post([this] { view.reset(); }); });
    runLoop.runPosted();
    EXPECT_EQ(cloud.privateRecords().size(), 3U);
    EXPECT_TRUE(service->lastSyncDate());
    EXPECT_THAT(messages, ElementsAre());
}

}  // namespace
}  // namespace quorvane
