#include "shell/state/SettingsView.h"

#include "platform/simulated/RecordingSystemLog.h"
#include "store/Database.h"
#include "support/StoreTest.h"

#include <cstdlib>

namespace quorvane {
namespace {

/// Monday, 2 March 2026, at noon.
class SettingsViewTest : public StoreTest {
protected:
    SettingsView view() {
        return SettingsView(
            {.context = context(),
             .logger = logger,
             .localization = localization,
             .applyDockVisibility = [this](bool hide, bool activate) { applied.emplace_back(hide, activate); }});
    }
    std::vector<std::shared_ptr<AppSettings>> stored() {
        another = store.anotherContext();
        return another->fetch<AppSettings>();
    }

    std::unique_ptr<ModelContext> another;
    platform::RecordingSystemLog systemLog;
    AppLogger logger{runLoop, systemLog, console, {}};
    std::vector<std::pair<bool, bool>> applied;  ///< hide, activate
};

TEST_F(SettingsViewTest, TheFirstSaveMakesTheRowAndTheSecondChangesIt) {
    auto first = view();
    first.load();
    first.workDays = {6, 0, 2};
    first.selectedLanguage = SupportedLanguage::japanese;
    first.hideDockIcon = true;
    EXPECT_TRUE(first.save());
    runLoop.playFor(60s);
    auto second = view();
    second.load();
    EXPECT_EQ(second.workDays, (std::set<std::int64_t>{0, 2, 6}));
    EXPECT_EQ(second.selectedLanguage, SupportedLanguage::japanese);
    second.hideDockIcon = false;
    second.workEndMinute = 45;
    EXPECT_TRUE(second.splitsRecordsByTitle);
    second.splitsRecordsByTitle = false;
    EXPECT_FALSE(second.countsCallsAsPresence);
    second.countsCallsAsPresence = true;
    second.offersAbsences = false;
    EXPECT_TRUE(second.save());
    EXPECT_TRUE(second.save());
    const auto rows = stored();
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows[0]->workDays(), "0,2,6");
    EXPECT_EQ(rows[0]->preferredLanguage(), "ja");
    EXPECT_EQ(rows[0]->workEndMinute(), 45);
    EXPECT_FALSE(rows[0]->splitsRecordsByTitle());
    EXPECT_TRUE(rows[0]->countsCallsAsPresence());
    EXPECT_FALSE(rows[0]->offersAbsences());
    EXPECT_EQ(rows[0]->createdAt(), at("12:00:00"));
    EXPECT_EQ(rows[0]->updatedAt(), at("12:01:00"));
    EXPECT_THAT(applied, ElementsAre(std::pair(true, false), std::pair(false, true), std::pair(false, false)));
}

TEST_F(SettingsViewTest, TheFormBeginsAsAStoreDoes) {
    setenv("LANGUAGE", "de_DE:en", 1);
    auto form = view();
    form.load();
    unsetenv("LANGUAGE");
    EXPECT_EQ(form.idleThresholdMinutes, 5);
    EXPECT_TRUE(form.enableIdleDetection);
    EXPECT_EQ(form.workEndHour, 18);
    form.hideDockIcon = true;
    EXPECT_TRUE(form.save());
    EXPECT_EQ(stored().front()->preferredLanguage(), "de");
}

TEST_F(SettingsViewTest, WhatIsStoredAndNotOfferedKeepsItsValueUntilAnotherIsChosen) {
    const auto settings = std::make_shared<AppSettings>();
    settings->idleThresholdMinutes = 7;
    settings->preferredLanguage = "xx";
    context().insert(settings);
    context().save();
    auto form = view();
    form.load();
    EXPECT_EQ(form.idleChoice(), std::nullopt);
    EXPECT_TRUE(form.save());
    EXPECT_EQ(stored().front()->idleThresholdMinutes(), 7);
    EXPECT_EQ(stored().front()->preferredLanguage(), "zh");
    form.idleThresholdMinutes = 15;
    EXPECT_EQ(form.idleChoice(), 5U);
}

TEST_F(SettingsViewTest, AFailedSaveIsLoggedAndAppliesNothing) {
    Database(ModelConfiguration{.file = store.file()})
        .execute("CREATE TRIGGER refuse BEFORE INSERT ON app_settings BEGIN SELECT RAISE(ABORT, 'no'); END");
    auto form = view();
    form.hideDockIcon = true;
    EXPECT_FALSE(form.save());
    EXPECT_THAT(console.lines(), ElementsAre(HasSubstr("The settings could not be saved: ")));
    EXPECT_THAT(applied, ElementsAre());
}

TEST_F(SettingsViewTest, TheDaysFollowTheUsersWeek) {
    const std::tuple<const char*, const char*, bool> rows[] = {{"en_US", "Days: Mon, Tue, Wed, Thu, Fri", true},
                                                               {"de_DE", "Days: Tue, Wed, Thu, Fri, Sat", false}};
    auto form = view();
    form.onlyTrackWorkHours = true;
    for (const auto& [locale, expected, isInside] : rows) {
        SCOPED_TRACE(locale);
        const auto preview = form.preview(Calendar(locale, "UTC"));
        EXPECT_EQ(preview.days, expected);
        EXPECT_EQ(preview.isInside, isInside) << "on Monday at noon";
    }
    form.setWorkDay(0, true);
    form.setWorkDay(3, false);
    EXPECT_EQ(form.preview(Calendar("de_DE", "UTC")).days, "Days: Mon, Tue, Wed, Fri, Sat");
}

TEST_F(SettingsViewTest, ThePreviewSaysWhatTheChoicesMean) {
    const Calendar calendar("en_US", "UTC");
    auto form = view();
    EXPECT_EQ(form.preview(calendar), (SettingsView::Preview{.days = "Everything is recorded, at any time of day."}));
    form.onlyTrackWorkHours = true;
    form.workStartHour = 7;
    form.workStartMinute = 5;
    EXPECT_EQ(form.preview(calendar), (SettingsView::Preview{.days = "Days: Mon, Tue, Wed, Thu, Fri",
                                                             .hours = "Hours: 07:05 to 18:00",
                                                             .now = "Right now is inside your work hours.",
                                                             .isInside = true}));
    form.workDays.clear();
    EXPECT_EQ(form.preview(calendar), (SettingsView::Preview{.days = "No day is chosen, so nothing will be recorded.",
                                                             .hours = "Hours: 07:05 to 18:00",
                                                             .now = "Right now is outside your work hours.",
                                                             .isInside = false}));
    EXPECT_TRUE(form.save());
    EXPECT_EQ(stored().front()->workDays(), "");
}

}  // namespace
}  // namespace quorvane
