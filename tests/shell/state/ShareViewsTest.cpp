#include "platform/simulated/SimulatedRecordContainer.h"
#include "shell/state/CreateShareView.h"
#include "shell/state/ShareItemView.h"
#include "support/Mapped.h"
#include "support/StoreTest.h"

namespace quorvane {
namespace {

using platform::CloudFailure;

class ShareViewsTest : public StoreTest {
protected:
    std::shared_ptr<ActivityRecord> record(const char* start, const char* app,
                                           const std::shared_ptr<Project>& project = nullptr) {
        auto builder = aRecord().from(start).project(project);
        if (*app != '\0') builder.app(app);
        return builder.in(context());
    }
    std::vector<std::shared_ptr<ActivityShare>> shares() { return context().fetch<ActivityShare>(); }

    platform::SimulatedCloud cloud;
    ShareService service{runLoop, console, localization, std::make_unique<platform::SimulatedRecordContainer>(cloud)};
};

class CreateShareViewTest : public ShareViewsTest {
protected:
    int dismissals = 0;
    std::shared_ptr<Project> harbour = insertProject(context(), "Harbour");
    std::shared_ptr<Project> orchard = insertProject(context(), "Orchard");
    std::shared_ptr<ActivityRecord> loose = record("08:00:00", "");
    std::shared_ptr<ActivityRecord> early = record("09:00:00", "Editor", harbour);
    std::shared_ptr<ActivityRecord> late = record("10:00:00", "Browser", harbour);
    std::shared_ptr<ActivityRecord> latest = record("11:00:00", "Mail", orchard);
    CreateShareView view{service, context(), localization, [this] { ++dismissals; }};
};

TEST_F(CreateShareViewTest, RecordsAreListedNewestFirstAndCheckedWhenChosen) {
    view.toggle(early->id());
    view.toggle(latest->id());
    view.toggle(latest->id());
    const auto rowText = [](const auto& row) { return row.name + " " + row.iconName; };
    EXPECT_THAT(mapped(view.recentRecords(), rowText),
                ElementsAre("Mail ", "Browser ", "Editor check-circle", "Unknown app "));
    EXPECT_THAT(view.selectedRecords(), ElementsAre(early->id()));
}

TEST_F(CreateShareViewTest, AShareNeedsATitleAndARecordOfAProject) {
    const std::tuple<const char*, std::vector<std::shared_ptr<ActivityRecord>>, bool> rows[] = {
        {" \n", {early}, false}, {"Week", {}, false}, {"Week", {loose}, false}, {"Week", {early, loose}, true}};
    for (const auto& [title, chosen, canCreate] : rows) {
        CreateShareView fresh(service, context(), localization, [] {});
        fresh.title = title;
        for (const auto& each : chosen)
            fresh.toggle(each->id());
        EXPECT_EQ(fresh.canCreate(), canCreate) << title << chosen.size();
        fresh.create();
        EXPECT_EQ(fresh.isCreating(), canCreate);
    }
}

TEST_F(CreateShareViewTest, AShareOfTheChosenProjectsIsPublishedAndTheScreenDismissed) {
    view.title = " Week 10 ";
    for (const auto& each : {early, late, latest})
        view.toggle(each->id());
    view.create();
    EXPECT_FALSE(view.canCreate()) << "once is enough";
    runLoop.runPosted();
    ASSERT_THAT(shares(), SizeIs(1));
    EXPECT_EQ(shares()[0]->title(), "Week 10");
    EXPECT_THAT(shares()[0]->projectIds(), ElementsAre(orchard->id(), harbour->id()));
    EXPECT_TRUE(cloud.publicRecords().contains(shares()[0]->shareToken()));
    EXPECT_EQ(dismissals, 1);
}

TEST_F(CreateShareViewTest, AFailureStaysOnTheScreenUntilTheNextAttempt) {
    cloud.failure = CloudFailure(CloudFailure::Kind::timedOut, "no answer");
    view.title = "Week 10";
    view.toggle(early->id());
    view.create();
    runLoop.runPosted();
    EXPECT_EQ(view.errorMessage(), "The share could not be created: No answer within 30 seconds. Check the network.");
    EXPECT_EQ(dismissals, 0);
    cloud.failure.reset();
    view.create();
    EXPECT_EQ(view.errorMessage(), std::nullopt);
    runLoop.runPosted();
    EXPECT_EQ(dismissals, 1);
}

class ShareItemViewTest : public ShareViewsTest {
protected:
    ShareItemViewTest() {
        context().insert(share);
        context().save();
    }
    std::shared_ptr<ActivityShare> share = std::make_shared<ActivityShare>();
    ShareItemView view{share, context(), service, runLoop};
};

TEST_F(ShareItemViewTest, AShareIsActiveUntilItIsStoppedOrExpires) {
    using State = ShareItemView::State;
    share->expiresAt = at("13:00:00");
    EXPECT_EQ(view.state(), State::active);
    runLoop.setClock(at("13:00:00"));
    EXPECT_EQ(view.state(), State::expired);
    EXPECT_TRUE(share->isActive());
    view.stop();
    runLoop.runPosted();
    EXPECT_EQ(view.state(), State::stopped);
    EXPECT_THAT(shares(), SizeIs(1));
}

TEST_F(ShareItemViewTest, DeletingAsksFirstAndRemovesTheObjectAlone) {
    view.confirmDelete();
    view.askToDelete();
    view.cancelDeleting();
    view.confirmDelete();
    EXPECT_THAT(shares(), SizeIs(1));
    view.askToDelete();
    EXPECT_TRUE(view.showingDeleteConfirmation());
    view.confirmDelete();
    EXPECT_TRUE(view.isDeleted());
    EXPECT_THAT(store.anotherContext()->fetch<ActivityShare>(), IsEmpty());
    view.stop();
    view.askToDelete();
    EXPECT_FALSE(view.showingDeleteConfirmation());
}

}  // namespace
}  // namespace quorvane
