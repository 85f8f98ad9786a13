#include "scenarios/SimulatedDay.h"

#include "platform/simulated/InMemoryUserDefaults.h"
#include "rules/RuleDraft.h"
#include "store/Project.h"
#include "store/Rule.h"
#include "support/Builders.h"

#include <fmt/format.h>
#include <random>

namespace quorvane {
namespace {

/// A browser whose page is set by the script.
class ScriptedBrowser : public BrowserURLSource {
public:
    std::optional<std::string> frontURL() override {
        ++asked;
        return url;
    }
    std::optional<std::string> toldURL() override { return told; }

    std::optional<std::string> url;
    std::optional<std::string> told;
    int asked = 0;
};

class RecordLifecycleTest : public SimulatedDayTest {
protected:
    void use(TrackerServices services) {
        tracker = std::make_unique<ActivityTracker>(runLoop, desktop, keyboard, mouse, services, console);
        desktop.typeUntil("12:00:00");
    }
    void SetUp() override { use({.windowInfo = windowInfo}); }

    void insertRecord(std::string_view start, std::optional<std::string_view> end) {
        store.context().insert(std::make_shared<ActivityRecord>(
            ActivityRecord::Values{.startTime = runLoop.timeOfDay(start),
                                   .endTime = end ? std::optional<Date>(runLoop.timeOfDay(*end)) : std::nullopt,
                                   .appName = "Older",
                                   .updatedAt = runLoop.timeOfDay(end.value_or("08:41:00"))}));
        store.context().save();
    }
};

TEST_F(RecordLifecycleTest, WhatACrashLeftOpenIsClosedBeforeTheFirstRecord) {
    insertRecord("08:10:00", std::nullopt);
    startTrackingAt("08:50:00");
    playUntil("08:50:01");
    EXPECT_THAT(records(), ElementsAre("Older 08:10:00 to 08:41:00", "Editor 08:50:00.5"));
    EXPECT_THAT(newLines(), Contains("DataCleanupService: 自动结束旧记录 - Older"));
}

TEST_F(RecordLifecycleTest, AStartInsideARecordedRangeMovesBehindIt) {
    insertRecord("08:30:00", "09:10:00");
    insertRecord("09:10:00", "09:20:00");
    startTrackingAt("09:00:00");
    runLoop.playFor(1s);
    EXPECT_EQ(records()[1], "Editor 09:00:00.5");  // the next start lies ahead of now, so now it is
    EXPECT_THAT(newLines(), Contains("新记录会与现有记录重叠，调整开始时间"));
}

TEST_F(RecordLifecycleTest, QuickSwitchesNeverOverlap) {
    startTrackingAt("09:00:00");
    std::mt19937 random(18);
    for (int i = 0; i < 500; ++i) {
        const std::string name = fmt::format("App {}", random() % 5);
        desktop.bringToFront("org.example." + name, name);
        runLoop.playFor(Seconds{0.05 * static_cast<double>(random() % 40)});
        if (random() % 20 == 0) desktop.lock(), desktop.unlock();
    }
    tracker->stop();
    const auto all = storedRecords();
    EXPECT_GT(all.size(), 100U);
    for (std::size_t i = 1; i < all.size(); ++i)
        ASSERT_LE(*all[i - 1]->endTime(), all[i]->startTime()) << i;
}

TEST_F(RecordLifecycleTest, TheShortRecordLineEndsAtTwentySeconds) {
    startTrackingAt("09:00:00");
    playUntil("09:00:20");
    desktop.bringToFront("org.example.mail", "Mail");  // 19.5 s
    playUntil("09:00:40");
    forgetLines();
    desktop.bringToFront("org.example.notes", "Notes");  // 20.0 s
    EXPECT_THAT(newLines(), Not(Contains(HasSubstr("短记录"))));
    desktop.willSleep();
    EXPECT_THAT(newLines(), Contains("短记录 (1.0s) for Notes，等待智能合并处理"));
}

TEST_F(RecordLifecycleTest, ARecordThatTheCleanUpClosedKeepsItsEndAndARemovedOneStaysRemoved) {
    startTrackingAt("09:00:00");
    playUntil("09:10:00");
    tracker->currentRecord()->endTime = runLoop.timeOfDay("09:05:00");
    desktop.bringToFront("org.example.mail", "Mail");
    store.context().remove(tracker->currentRecord());
    store.context().save();
    playUntil("09:12:00");
    desktop.bringToFront("org.example.notes", "Notes");
    EXPECT_THAT(records(), ElementsAre("Editor 09:00:00.5 to 09:05:00", "Notes 09:12:00"));
}

TEST_F(RecordLifecycleTest, SavesThatFailAreReportedAndCarriedByTheNextOne) {
    startTrackingAt("09:00:00");
    playUntil("09:00:05");
    forgetLines();
    Database other({.file = store.file()});
    for (const char* change : {"INSERT", "UPDATE"})
        other.execute(fmt::format("CREATE TRIGGER refuse_{0} BEFORE {0} ON activity_record "
                                  "BEGIN SELECT RAISE(ABORT, 'refused'); END",
                                  change));
    desktop.bringToFront("org.example.mail", "Mail");
    playUntil("09:01:11");
    desktop.willSleep();
    runLoop.runPosted();
    const auto lines = newLines();
    EXPECT_THAT(lines, Contains(AllOf(HasSubstr("Failed to save new record for Mail: "), HasSubstr("refused"))));
    EXPECT_THAT(lines, Contains(HasSubstr("Failed to save current record heartbeat: ")));
    EXPECT_THAT(lines, Contains(HasSubstr("Failed to save finalized record: ")));
    EXPECT_THAT(records(), ElementsAre("Editor 09:00:00.5"));

    for (const char* change : {"INSERT", "UPDATE"})
        other.execute(fmt::format("DROP TRIGGER refuse_{}", change));
    desktop.didWake();
    EXPECT_THAT(records(), ElementsAre("Editor 09:00:00.5 to 09:00:05", "Mail 09:00:05 to 09:01:10", "Mail 09:01:11"));
}

TEST_F(RecordLifecycleTest, PreferenceThenRulesClassifyANewRecordBeforeItsFirstSave) {
    platform::InMemoryUserDefaults defaults;
    CategoryTagManager categories(defaults, console);
    categories.setPreference("Editor", {.category = "深度", .tags = {"draft", "book"}});
    use({.windowInfo = windowInfo, .categories = &categories});
    auto rule = std::make_shared<Rule>();
    RuleDraft draft;
    draft.name = "drafts";
    draft.value = "chapter";
    draft.field = RuleDraft::Field::windowTitle;
    draft.tags = "writing";
    draft.projectId = insertProject(store.context(), "Book")->id();
    draft.writeTo(*rule);
    store.context().insert(rule);
    store.context().save();
    desktop.setWindowTitle("Chapter one");
    startTrackingAt("09:00:00");
    runLoop.playFor(1s);
    EXPECT_THAT(newLines(), Contains("自动应用 Editor 的分类偏好"));
    const auto record = storedRecords().back();
    EXPECT_EQ(record->category(), "深度");
    EXPECT_EQ(record->tags(), "draft,book,writing");
    EXPECT_EQ(record->source(), "system|rule:drafts");
    EXPECT_EQ(record->project()->name(), "Book");
    tracker.reset();
}

TEST_F(RecordLifecycleTest, ARememberedChoiceWithoutACategoryStillBringsItsTags) {
    platform::InMemoryUserDefaults defaults;
    CategoryTagManager categories(defaults, console);
    categories.setPreference("Editor", {.tags = {"draft"}});
    use({.windowInfo = windowInfo, .categories = &categories});
    startTrackingAt("09:00:00");
    runLoop.playFor(1s);
    EXPECT_THAT(newLines(), Contains("自动应用 Editor 的分类偏好"));
    EXPECT_EQ(tracker->currentRecord()->category(), std::nullopt);
    EXPECT_EQ(tracker->currentRecord()->tags(), "draft");
    tracker.reset();
}

class BrowserTest : public RecordLifecycleTest {
protected:
    void SetUp() override {
        use({.windowInfo = windowInfo, .browserURL = &browser});
        desktop.setFrontmostSilently("org.mozilla.firefox", "Firefox");
        browser.url = "https://example.org/one";
    }
    void TearDown() override { tracker.reset(); }

    std::optional<std::string> openURL() { return tracker->currentRecord()->url(); }
    ScriptedBrowser browser;
};

TEST_F(BrowserTest, ThePageArrivesAfterTheRecordWasSavedAndTheHeartbeatKeepsIt) {
    runLoop.holdBackground();
    startTrackingAt("09:00:00");
    playUntil("09:00:01");
    EXPECT_EQ(storedRecords().back()->url(), std::nullopt);
    runLoop.releaseBackground();
    runLoop.runPosted();
    EXPECT_EQ(openURL(), "https://example.org/one");
    EXPECT_EQ(storedRecords().back()->url(), std::nullopt);
    playUntil("09:01:11");
    EXPECT_EQ(storedRecords().back()->url(), "https://example.org/one");
}

TEST_F(BrowserTest, ATitleThatMayBePrivateComesWithTheAddress) {
    struct : WindowInfoSource {
        WindowInfo windowInfo(const std::string&) override { return {}; }
    } windows;
    runLoop.holdBackground();
    use({.windowInfo = windows, .browserURL = &browser});
    desktop.setFrontmostSilently("com.google.Chrome", "Chrome");
    desktop.setWindowTitle("News - Google Chrome");
    startTrackingAt("09:00:00");
    playUntil("09:00:01");
    EXPECT_EQ(tracker->currentRecord()->windowTitle(), std::nullopt);
    runLoop.releaseBackground();
    runLoop.runPosted();
    EXPECT_EQ(tracker->currentRecord()->windowTitle(), "News - Google Chrome");
    tracker.reset();
}

TEST_F(BrowserTest, ARelativeOfAWellKnownBrowserIsAskedToo) {
    desktop.setFrontmostSilently("org.example.relative", "Relative");
    startTrackingAt("09:00:00");
    playUntil("09:00:11");
    EXPECT_EQ(openURL(), std::nullopt);
    desktop.automation().setModel("org.example.relative", "org.mozilla.firefox");
    playUntil("09:00:31");
    EXPECT_EQ(openURL(), "https://example.org/one");
}

TEST_F(BrowserTest, APageThatIsAskedForIsRefreshedWhenTwoMinutesOldAndAnotherOneIsAnotherRecord) {
    startTrackingAt("09:00:00");
    playUntil("09:02:00");
    EXPECT_EQ(browser.asked, 1);
    browser.url = "https://example.org/two";
    playUntil("09:02:35");
    EXPECT_EQ(browser.asked, 2);
    EXPECT_THAT(records(), ElementsAre("Firefox 09:00:00.5 to 09:02:20", "Firefox 09:02:20"));
    EXPECT_EQ(storedRecords().front()->url(), "https://example.org/one");
    EXPECT_EQ(openURL(), "https://example.org/two");
    runLoop.holdBackground();
    playUntil("09:30:00");
    runLoop.releaseBackground();
    runLoop.runPosted();
    EXPECT_EQ(browser.asked, 3) << "at most one at a time";
}

TEST_F(BrowserTest, APageThatTheBrowserHasToldIsThereAtTheStartAndOneThatComesLateRunsTheRulesAgain) {
    auto rule = std::make_shared<Rule>();
    RuleDraft draft;
    draft.name = "shop";
    draft.value = "shop.example";
    draft.field = RuleDraft::Field::url;
    draft.tags = "shop";
    draft.writeTo(*rule);
    store.context().insert(rule);
    store.context().save();
    browser.told = browser.url = "https://shop.example/";
    startTrackingAt("09:00:00");
    playUntil("09:00:01");
    EXPECT_EQ(browser.asked, 0);
    EXPECT_EQ(tracker->currentRecord()->tags(), "shop");

    const auto tagsWhenToldLate = [&](const char* changedMeanwhile) {
        desktop.bringToFront("org.example.editor", "Editor");
        runLoop.playFor(5s);
        browser.told = std::nullopt;
        runLoop.holdBackground();
        desktop.bringToFront("org.mozilla.firefox", "Firefox");
        runLoop.playFor(5s);
        EXPECT_EQ(tracker->currentRecord()->tags(), "");
        tracker->currentRecord()->tags = changedMeanwhile;
        runLoop.releaseBackground();
        runLoop.runPosted();
        EXPECT_EQ(openURL(), "https://shop.example/");
        return tracker->currentRecord()->tags();
    };
    EXPECT_EQ(tagsWhenToldLate(""), "shop");
    EXPECT_EQ(tagsWhenToldLate("mine"), "mine");
}

TEST_F(BrowserTest, ALatePageOfAnotherApplicationIsNotWritten) {
    runLoop.holdBackground();
    startTrackingAt("09:00:00");
    playUntil("09:00:05");
    desktop.bringToFront("org.example.editor", "Editor");
    runLoop.releaseBackground();
    runLoop.runPosted();
    EXPECT_EQ(browser.asked, 1);
    EXPECT_EQ(openURL(), std::nullopt);
}

}  // namespace
}  // namespace quorvane
