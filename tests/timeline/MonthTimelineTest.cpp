#include "timeline/MonthTimeline.h"

#include "store/ProjectTimeAnnotation.h"
#include "support/Mapped.h"
#include "support/Matchers.h"
#include "support/Matching.h"
#include "support/RecordingConsole.h"
#include "support/TemporaryStore.h"
#include "timeline/AppColorPalette.h"
#include "timeline/OverviewBuilders.h"
#include "timeline/ProjectTone.h"

namespace quorvane {
namespace {

using Records = std::vector<TimelineRecordSnapshot>;
using Annotations = std::vector<TimelineAnnotation>;

std::vector<std::string> linesOf(const MonthSimpleCell& cell) {
    return mapped(cell.lines, [](const MonthCellLine& line) { return line.name + " " + line.duration; });
}

class MonthTimelineTest : public testing::Test {
protected:
    MonthSimpleCell cellOn(int day, const Records& records, const Annotations& annotations = {}) {
        RecordingConsole console;
        const auto grid = MonthTimeline::grid(
            march(15, "12:00:00"), {.records = records, .annotations = annotations, .now = now, .height = height},
            console, Calendar("en_US", "UTC"), mondayFirst());
        return grid.cells.at(static_cast<std::size_t>(day - 1));
    }

    Date now = march(20, "15:00:00");
    double height = MonthTimeline::cellHeight;
};

TEST_F(MonthTimelineTest, BlankCellsFollowTheFirstWeekdayOfTheUser) {
    struct Row {
        const char* locale;
        const char* zone;
        const char* within;
        int leading;
        std::size_t days;
        int lastDay;
    };
    const Row rows[] = {
        {"en_US", "UTC", "2026-03-04T15:00:00Z", 0, 31, 31},  // from a Sunday
        {"de_DE", "UTC", "2026-03-04T15:00:00Z", 6, 31, 31},
        {"ar_EG", "UTC", "2026-03-04T15:00:00Z", 1, 31, 31},  // weeks from Saturday
        {"en_US", "UTC", "2024-02-29T12:00:00Z", 4, 29, 29},
        {"de_DE", "America/New_York", "2026-04-01T03:59:59Z", 6, 31, 31},
        {"de_DE", "America/Asuncion", "2023-10-15T12:00:00Z", 6, 31, 31},  // the 1st has no midnight
        {"de_DE", "Pacific/Apia", "2011-12-10T12:00:00Z", 3, 30, 31},      // the 30th was left out
        {"fa_IR", "Asia/Tehran", "2026-03-25T12:00:00Z", 0, 31, 31},       // from 21 March, a Saturday
    };
    RecordingConsole console;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.locale + std::string(" ") + row.zone + " " + row.within);
        const Calendar user(row.locale, row.zone);
        const auto grid = MonthTimeline::grid(at(row.within), {.now = now}, console, user, Calendar::mondayFirst(user));
        EXPECT_EQ(grid.leading, row.leading);
        ASSERT_EQ(grid.cells.size(), row.days);
        EXPECT_EQ(grid.cells.front().dayOfMonth, 1);
        EXPECT_EQ(grid.cells.back().dayOfMonth, row.lastDay);
        for (const auto& cell : grid.cells)
            EXPECT_EQ(user.startOfDay(cell.date), cell.date);
    }
}

TEST_F(MonthTimelineTest, RoomIsForThreeToFiveLines) {
    const std::pair<double, int> rows[] = {{0, 3}, {77.9, 3}, {78, 4}, {85, 4}, {90.9, 4}, {91, 5}, {300, 5}};
    for (const auto& [cell, expected] : rows)
        EXPECT_EQ(MonthTimeline::room(cell), expected) << cell;
}

TEST_F(MonthTimelineTest, ListsAnnotationsThenTheLongestRecordsAndCountsTheRest) {
    auto first = activity("Twin 1", march(3, "14:00:00"), march(3, "14:20:00"));
    auto second = activity("Twin 2", march(3, "13:00:00"), march(3, "13:20:00"));
    first.id = *Uuid::parse("00000000-0000-4000-8000-000000000002");
    second.id = *Uuid::parse("00000000-0000-4000-8000-000000000001");
    const Records records{activity("Late", march(3, "22:00:00"), march(4, "00:30:00")), first, second,
                          activity("Long", march(3, "09:00:00"), march(3, "12:00:00")),
                          activity("Short", march(3, "08:00:00"), march(3, "08:04:59"))};
    EXPECT_THAT(linesOf(cellOn(3, records)), ElementsAre("Long 3h", "Late 2h30m", "Twin 2 20m", "Twin 1 20m"));
    EXPECT_EQ(cellOn(3, records).more, 0);
    EXPECT_EQ(cellOn(3, records).fallback, std::nullopt);
    EXPECT_THAT(linesOf(cellOn(4, records)), ElementsAre("Late 2h30m"));

    const Annotations annotations{given("B", march(3, "20:00:00"), march(3, "20:01:00")),
                                  given("A", march(2, "20:00:00"), march(3, "01:00:00"))};
    const auto cut = cellOn(3, records, annotations);
    EXPECT_THAT(linesOf(cut), ElementsAre("B 1m", "A 5h", "Long 3h", "Late 2h30m"));
    EXPECT_EQ(cut.more, 2);
    EXPECT_EQ(cut.lines[0].mark, AppColorPalette::projectColor("mint", true));
    EXPECT_EQ(cut.lines[2].mark, AppColorPalette::appColor({}, "Long"));
    height = 300;
    EXPECT_EQ(cellOn(3, records, annotations).more, 1);
    height = 0;
    EXPECT_EQ(cellOn(3, records, annotations).more, 3);
    const Annotations many(6, annotations[0]);
    EXPECT_THAT(linesOf(cellOn(3, records, many)), ElementsAre("B 1m", "B 1m", "B 1m"));
    EXPECT_EQ(cellOn(3, records, many).more, 7);
}

TEST_F(MonthTimelineTest, OpenRecordsCountUpToTheStartOfTheDay) {
    const Records records{activity("Open", march(18, "21:00:00"), {})};
    EXPECT_THAT(linesOf(cellOn(18, records)), IsEmpty());
    EXPECT_EQ(cellOn(18, records).fallback, std::nullopt) << "the sum is below zero";
    EXPECT_THAT(linesOf(cellOn(19, records)), ElementsAre("Open 3h"));
    EXPECT_THAT(linesOf(cellOn(20, records)), ElementsAre("Open 27h"));
    EXPECT_TRUE(cellOn(20, records).isToday);
    EXPECT_THAT(linesOf(cellOn(21, records)), IsEmpty()) << "a coming day";
    EXPECT_FALSE(cellOn(21, records).isToday);
    now = march(18, "23:00:00");
    const Records planned{activity("Planned", march(18, "22:00:00"), march(19, "03:00:00"))};
    EXPECT_THAT(linesOf(cellOn(19, planned)), IsEmpty());
    EXPECT_THAT(linesOf(cellOn(18, planned)), ElementsAre("Planned 1h"));
}

TEST_F(MonthTimelineTest, ShortRecordsAddUpWhereNoItemStands) {
    Records records;
    for (int i = 0; i < 18; ++i)
        records.push_back(activity("A", march(3, "09:00:00") + i * 10min, march(3, "09:04:00") + i * 10min));
    EXPECT_EQ(cellOn(3, records).fallback, "1.2h");
    EXPECT_EQ(cellOn(4, records).fallback, std::nullopt);
    const Annotations annotations{given("B", march(3, "20:00:00"), march(3, "20:01:00"))};
    EXPECT_EQ(cellOn(3, records, annotations).fallback, std::nullopt);
    records.push_back(activity("B", march(3, "20:00:00"), march(3, "20:05:00")));
    EXPECT_EQ(cellOn(3, records).fallback, std::nullopt);
    EXPECT_THAT(linesOf(cellOn(3, records)), ElementsAre("B 5m"));
}

TEST(TimelineAnnotationTest, ThoseThatTouchARangeComeNewestFirstWithTheirProject) {
    TemporaryStore store;
    auto& context = store.context();
    const auto web = insertProject(context, "Web");
    web->color = "mint";
    const auto insert = [&](const char* id, Date start, Date end, const std::shared_ptr<Project>& project) {
        const auto annotation = std::make_shared<ProjectTimeAnnotation>();
        annotation->id = *Uuid::parse(fmt::format("{}0000000-0000-4000-8000-000000000000", id));
        annotation->startTime = start;
        annotation->endTime = end;
        annotation->project = project;
        context.insert(annotation);
    };
    insert("1", march(1, "09:00:00"), march(3, "00:00:00"), web);  // ends as the range begins
    insert("2", march(1, "09:00:00"), march(3, "00:01:00"), web);
    insert("4", march(3, "09:00:00"), march(3, "10:00:00"), nullptr);
    insert("3", march(3, "09:00:00"), march(3, "11:00:00"), web);
    insert("5", march(4, "00:00:00"), march(4, "01:00:00"), web);  // begins as it ends
    context.save();
    const auto text = [](const TimelineAnnotation& found) {
        return found.id.string().substr(0, 1) + found.projectName.value_or("-") + found.projectColor.value_or("-");
    };
    EXPECT_THAT(mapped(annotationsTouching(context, {march(3, "00:00:00"), march(4, "00:00:00")}), text),
                ElementsAre("3Webmint", "4--", "2Webmint"));
}

}  // namespace
}  // namespace quorvane
