#include "shell/state/AbsenceOffer.h"

#include "shell/state/TrackedScene.h"
#include "store/Absence.h"
#include "store/AppSettings.h"
#include "store/ProjectTimeAnnotation.h"
#include "support/Matching.h"
#include "timeline/AnnotationAssignment.h"
#include "timeline/PassedRecords.h"

namespace quorvane {
namespace {

/// Somebody is away from 9:05 until 9:32, and the chart shows that day.
class AbsenceOfferTest : public testing::Test {
protected:
    void comeBack() {
        scene.desktop.setFrontmostSilently("org.example.editor", "Editor");
        scene.desktop.typeUntil(at("09:05:00"));
        scene.session.start();
        scene.runLoop.playUntil("09:32:00");
        scene.desktop.pressKey();
        passAllRecords(scene.store.context(), chart);
        chart.appear();
        scene.runLoop.runPosted();
    }
    [[nodiscard]] bool isOffered() const {
        const DateInterval time{at("09:05:00"), at("09:32:00")};
        return offer.content() == AbsenceOffer::Content{.time = time, .isReturn = true};
    }

    TrackedScene scene;
    DayTimelineChart chart{scene.store.context(), scene.runLoop, scene.console};
    AbsenceOffer offer{chart, scene.session.tracker(), scene.store.context(), scene.runLoop};
};

TEST_F(AbsenceOfferTest, AReturnIsOfferedOnceAndLaterTheGapThatIsChosen) {
    comeBack();
    EXPECT_TRUE(isOffered());
    offer.dismiss();
    EXPECT_EQ(offer.content(), std::nullopt);
    EXPECT_EQ(chart.gaps().size(), 1U) << "which stays on the day";
    chart.click({100, chart.layout().yPosition(9.3)}, 510);
    ASSERT_TRUE(offer.content());
    EXPECT_FALSE(offer.content()->isReturn);
    offer.leaveEmpty();
    EXPECT_EQ(offer.content(), std::nullopt);
    EXPECT_TRUE(scene.store.anotherContext()->fetch<Absence>().front()->isLeftEmpty());
    chart.selectGap(chart.gaps().front().id);
    EXPECT_TRUE(offer.content()->isLeftEmpty);
}

TEST_F(AbsenceOfferTest, AssigningGivesTheVeryGapToAProjectWhateverDayIsShown) {
    comeBack();
    chart.stepDate(-1);
    chart.setViewMode(TimelineViewMode::week);
    offer.assign();
    scene.runLoop.runPosted();
    EXPECT_EQ(offer.content(), std::nullopt) << "while the panel is open";
    chart.assignTo(insertProject(scene.store.context(), "Web"));
    const auto given = scene.store.context().fetch<ProjectTimeAnnotation>();
    ASSERT_EQ(given.size(), 1U);
    EXPECT_EQ(given.front()->startTime(), at("09:05:00"));
    EXPECT_EQ(given.front()->endTime(), at("09:32:00"));
    EXPECT_TRUE(chart.gaps().empty());
    EXPECT_EQ(chart.currentViewMode(), TimelineViewMode::day);
    EXPECT_EQ(offer.content(), std::nullopt);
}

TEST_F(AbsenceOfferTest, WhatAProjectHasIsNotOfferedAgain) {
    comeBack();
    const DateInterval rest{at("09:08:00"), at("09:32:00")};
    const auto give = [&](DateInterval time) {
        (void)createAnnotation(scene.store.context(), insertProject(scene.store.context(), "Web"), {{}, time},
                               scene.console);
        scene.runLoop.runPosted();
    };
    give({at("09:00:00"), rest.start});
    ASSERT_TRUE(offer.content());
    EXPECT_EQ(offer.content()->time, rest);
    give(rest);
    EXPECT_EQ(offer.content(), std::nullopt);
}

TEST_F(AbsenceOfferTest, NoAnswerWithinTenMinutesLeavesItAsItIs) {
    comeBack();
    scene.runLoop.playUntil("09:41:59");
    EXPECT_TRUE(isOffered());
    scene.runLoop.playUntil("09:42:01");
    EXPECT_EQ(offer.content(), std::nullopt);
}

TEST_F(AbsenceOfferTest, TheSettingsCanForbidIt) {
    const auto settings = scene.store.context().fetch<AppSettings>();
    settings.front()->offersAbsences = false;
    comeBack();
    EXPECT_EQ(offer.content(), std::nullopt);
    EXPECT_EQ(chart.gaps().size(), 1U);
}

}  // namespace
}  // namespace quorvane
