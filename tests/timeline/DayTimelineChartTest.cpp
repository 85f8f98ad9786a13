#include "timeline/DayTimelineChart.h"

#include "support/Mapped.h"
#include "support/StoreTest.h"
#include "timeline/PassedRecords.h"

#include <cstdlib>
#include <fmt/format.h>
#include <functional>

namespace quorvane {

void PrintTo(const ScrollTarget& target, std::ostream* out) {
    *out << target.hour << " at " << target.fraction << " in " << target.duration.count() << " s";
}

namespace {

/// A chart on Monday, 2 March 2026, at noon.
class DayTimelineChartTest : public StoreTest {
protected:
    DayTimelineChartTest() {
        subscription = chart->scrollRequested.subscribe([this](const auto& target) { scrolls.push_back(target); });
    }
    /// What the chart's owner would pass.
    void passRecords() {
        context().save();
        passAllRecords(context(), *chart);
        runLoop.runPosted();
    }
    void show() {
        passRecords();
        chart->appear();
        runLoop.runPosted();
    }
    std::vector<std::string> blocks() {
        return mapped(chart->processedRecords(), [](const auto& item) {
            return fmt::format("{} {:.4g}+{:.4g}", item.appName, item.startHour, item.duration);
        });
    }

    std::unique_ptr<DayTimelineChart> chart = std::make_unique<DayTimelineChart>(context(), runLoop, console);
    std::vector<ScrollTarget> scrolls;
    Subscription subscription;
};

TEST_F(DayTimelineChartTest, ShowsTheDaysRecordsOnceItIsOnScreen) {
    aRecord().from("09:00:00").to("10:00:00").app("Editor").in(context());
    aRecord().from("2026-03-01 09:00:00").to("2026-03-01 10:00:00").app("Mail").in(context());
    passRecords();
    EXPECT_THAT(blocks(), ElementsAre());  // not on screen yet
    chart->appear();
    runLoop.runPosted();
    EXPECT_THAT(blocks(), ElementsAre("Editor 9+1"));
    EXPECT_EQ(chart->sidebarTotalHours(), 1);
    EXPECT_EQ(chart->sidebarRecords().front().startTime, at("09:00:00"));
    EXPECT_EQ(chart->sidebarRecords().front().endTime, at("10:00:00"));
    EXPECT_EQ(chart->activityHours(), std::set<int>{9});
    EXPECT_EQ(chart->layout().totalHeight(), 180 + 23 * 16);

    const auto record = context().fetch<ActivityRecord>().front();
    record->endTime = at("09:30:00");
    passRecords();
    EXPECT_THAT(blocks(), ElementsAre("Editor 9+0.5"));
    chart->stepDate(-1);
    EXPECT_THAT(blocks(), ElementsAre());
    EXPECT_TRUE(chart->sidebarRecords().empty());
    runLoop.runPosted();
    EXPECT_THAT(blocks(), ElementsAre("Mail 9+1"));
}

TEST_F(DayTimelineChartTest, AnOpenRecordOfTodayGrowsOnceAMinute) {
    aRecord().from("11:00:00").app("Editor").in(context());
    show();
    EXPECT_THAT(blocks(), ElementsAre("Editor 11+1"));
    runLoop.playUntil("12:30:00");
    EXPECT_THAT(blocks(), ElementsAre("Editor 11+1.5"));
    chart->setViewMode(TimelineViewMode::week);
    runLoop.playUntil("12:45:00");
    EXPECT_THAT(blocks(), ElementsAre());
    chart->setViewMode(TimelineViewMode::day);
    passRecords();
    runLoop.playUntil("13:00:00");
    EXPECT_THAT(blocks(), ElementsAre("Editor 11+2"));
}

TEST_F(DayTimelineChartTest, TheDayIsThatOfTheZoneToWhichTheUserHasCome) {
    aRecord().from("09:00:00").to("10:00:00").app("Editor").in(context());
    show();
    EXPECT_THAT(blocks(), ElementsAre("Editor 9+1"));
    chart->selectTimeRange({9, 10});
    setenv("TZ", "Asia/Tokyo", 1);
    runLoop.playFor(61s);
    setenv("TZ", "UTC", 1);
    EXPECT_THAT(blocks(), ElementsAre("Editor 18+1"));
    EXPECT_FALSE(chart->selectedTimeRange());
}

TEST_F(DayTimelineChartTest, ARangeIsWhatTheClockShowsAndAsLongAsItLasts) {
    setenv("TZ", "America/New_York", 1);
    chart->selectDate(at("2026-03-08T17:00:00Z"));
    chart->selectTimeRange({1, 9});
    EXPECT_EQ(chart->selectedLength(), 7h);
    chart->assignTo(insertProject(context(), "Web"));
    setenv("TZ", "UTC", 1);
    const auto annotation = context().fetch<ProjectTimeAnnotation>().front();
    EXPECT_EQ(annotation->startTime(), at("2026-03-08T06:00:00Z"));
    EXPECT_EQ(annotation->endTime(), at("2026-03-08T13:00:00Z"));
    aRecord().from("09:00:07").to("10:30:41").app("Editor").in(context());
    show();
    chart->selectDate(at("12:00:00"));
    runLoop.runPosted();
    chart->selectNeighbour(1);
    chart->selectTimeRangeOfActivity();
    EXPECT_EQ(chart->selectedLength(), 1h + 30min + 34s);
}

TEST_F(DayTimelineChartTest, WhoComesBackOnANewDaySeesItIfTodayWasLeft) {
    const Date newDay = at("2026-03-03 09:00:00");
    const Date yesterday = at("2026-03-01 12:00:00");
    const struct {
        const char* name;
        Date shown;
        TimelineViewMode mode;
        std::vector<const char*> left;  ///< when the user went to other applications
        Date expected;
    } rows[] = {
        {"left on today", at("13:00:00"), TimelineViewMode::day, {"18:00:00"}, newDay},
        {"never left", at("13:00:00"), TimelineViewMode::day, {}, at("13:00:00")},
        {"left while reading an older day", yesterday, TimelineViewMode::day, {"18:00:00"}, yesterday},
        {"left after midnight", at("13:00:00"), TimelineViewMode::day, {"2026-03-03 00:10:00"}, at("13:00:00")},
        {"left twice without a return",
         at("13:00:00"),
         TimelineViewMode::day,
         {"18:00:00", "2026-03-03 00:10:00"},
         newDay},
        {"a month", at("13:00:00"), TimelineViewMode::month, {"18:00:00"}, at("13:00:00")},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        platform::SimulatedRunLoop loop{at("12:00:00")};
        DayTimelineChart day(context(), loop, console);
        day.selectDate(row.shown);
        day.setViewMode(row.mode);
        day.applicationBecameActive();
        for (const char* const time : row.left) {
            loop.playUntil(at(time));
            day.applicationLeft();
        }
        loop.playUntil(newDay);
        day.applicationBecameActive();
        EXPECT_EQ(day.selectedDate(), row.expected);
        day.selectDate(yesterday);
        day.applicationBecameActive();
        EXPECT_EQ(day.selectedDate(), yesterday) << "one absence, one return";
    }
    EXPECT_THAT(console.lines(), Each(MatchesRegex("DayTimelineChart: 检测到日期变化，从 .*2.* 更新到 .*3.*")));
}

TEST_F(DayTimelineChartTest, AnotherDayLetsGoOfAllThatWasChosen) {
    const auto project = insertProject(context(), "Web");
    aRecord().from("09:00:00").to("10:00:00").app("Editor").in(context());
    show();
    const std::function<void()> ways[] = {
        [&] { chart->stepDate(1); },
        [&] { chart->openDay(at("2026-03-01 12:00:00")); },
        [&] { chart->selectDate(at("2026-03-05 12:00:00")); },
        [&] {
            chart->applicationLeft();
            runLoop.playFor(24h);
            chart->applicationBecameActive();
        },
    };
    for (const auto& goAway : ways) {
        chart->selectDate(runLoop.now());
        runLoop.runPosted();
        chart->selectTimeRange({9, 10});
        chart->drag({100, 100}, {200, 200});
        chart->select(std::make_shared<ProjectTimeAnnotation>());
        chart->selectDate(runLoop.now());
        EXPECT_NE(chart->projectSelector(), nullptr) << "the same day is no change";
        goAway();
        EXPECT_EQ(chart->projectSelector(), nullptr);
        EXPECT_FALSE(chart->selectedTimeRange());
        EXPECT_FALSE(chart->selection());
        EXPECT_EQ(chart->selectedProjectAnnotation(), nullptr);
        chart->assignTo(project);
        EXPECT_EQ(context().count<ProjectTimeAnnotation>(), 0U);
    }
    chart->selectDate(at("12:00:00"));
    runLoop.runPosted();
    chart->selectNeighbour(1);
    ASSERT_TRUE(chart->selectedActivity());
    chart->stepDate(-1);
    EXPECT_FALSE(chart->selectedActivity());
}

TEST_F(DayTimelineChartTest, ZoomsWithinItsBoundsAroundTheClockOrTheMiddleOfTheView) {
    aRecord().from("00:00:00").to("12:00:00").app("Editor").in(context());
    show();
    runLoop.playFor(1s);
    EXPECT_THAT(scrolls, ElementsAre(ScrollTarget{12, 0.5, 0s}, ScrollTarget{12, 0.5, 0.5s}));
    scrolls.clear();
    chart->appear();
    runLoop.playFor(1s);
    EXPECT_THAT(scrolls, ElementsAre());
    for (int i = 0; i < 4; ++i)
        chart->zoomIn();
    EXPECT_EQ(chart->hourHeight(), 360);
    EXPECT_EQ(chart->processedRecords().front().yBottom, 12 * 360);
    runLoop.playFor(1s);
    EXPECT_THAT(scrolls, ElementsAre(ScrollTarget{12, 0.5, 0.3s}));
    scrolls.clear();

    chart->setScrollViewHeight(720);
    chart->noteScroll(1080);
    chart->noteScroll(1100);  // too little to note
    chart->zoomOut();
    runLoop.playFor(1s);
    // 360 + 1080 points down stood 4:00.
    EXPECT_THAT(scrolls, ElementsAre(ScrollTarget{4, 0.5, 0.3s}));
    for (int i = 0; i < 9; ++i)
        chart->zoomOut();
    EXPECT_EQ(chart->hourHeight(), 30);
}

TEST_F(DayTimelineChartTest, DeletesTheSelectedBarAndARecordByItsBlock) {
    aRecord().from("09:00:00").to("10:00:00").app("Editor").in(context());
    const auto annotation = assign(nullptr, "09:00:00", "10:00:00");
    show();
    EXPECT_EQ(chart->projectAnnotations().size(), 1);
    chart->deleteSelectedProjectAnnotation();
    EXPECT_EQ(chart->projectAnnotations().size(), 1);
    chart->select(annotation);
    chart->deleteSelectedProjectAnnotation();
    chart->selectNeighbour(1);
    const auto item = *chart->selectedActivity();
    chart->deleteActivity(item);
    EXPECT_FALSE(chart->selectedActivity());
    chart->deleteActivity(item);
    EXPECT_THAT(console.lines(), ElementsAre("ProjectTimeAnnotation deleted", "ActivityRecord deleted: Editor",
                                             "ActivityRecord not found for deletion"));
    EXPECT_EQ(store.anotherContext()->count<ActivityRecord>(), 0);
    EXPECT_EQ(store.anotherContext()->count<ProjectTimeAnnotation>(), 0);
}

TEST_F(DayTimelineChartTest, FailuresOfTheStoreArePrinted) {
    const auto project = insertProject(context(), "Web");
    show();
    Database other({.file = store.file()});
    for (const char* table : {"project_time_annotation", "project"})
        other.execute(
            fmt::format("CREATE TRIGGER refuse_{0} BEFORE INSERT ON {0} BEGIN SELECT RAISE(ABORT, 'no'); END", table));
    chart->selectTimeRange({9, 10});
    chart->assignTo(project);
    EXPECT_EQ(chart->projectSelector(), nullptr);
    chart->selectTimeRange({11, 12});
    chart->projectSelector()->setNewProjectName("New");
    chart->createProjectAndAssign();
    EXPECT_THAT(console.lines(), ElementsAre(StartsWith("Failed to save ProjectTimeAnnotation: "),
                                             StartsWith("Failed to save Project: ")));
}

}  // namespace
}  // namespace quorvane
