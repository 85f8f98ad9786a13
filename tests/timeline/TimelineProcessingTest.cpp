#include "timeline/TimelineProcessing.h"

#include "support/Builders.h"
#include "support/Mapped.h"
#include "support/Matching.h"
#include "support/TextTable.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <map>
#include <random>
#include <set>
#include <tuple>
#include <utility>

namespace quorvane {
namespace {

namespace Processing = TimelineProcessing;
using Snapshots = std::vector<TimelineRecordSnapshot>;

const Calendar utc("en_US", "UTC");
const Calendar newYork("en_US", "America/New_York");
const Calendar lordHowe("en_AU", "Australia/Lord_Howe");
/// "09:00:00..09:10:00, 09:12:00..now|org.example.mail/Mail": start, end, and the application's identifier and name,
/// "-" for none; without them it is the editor.
Snapshots records(std::string_view text) {
    const auto cut = [](std::string_view& rest, std::string_view separator) {
        const auto piece = rest.substr(0, rest.find(separator));
        rest.remove_prefix(std::min(piece.size() + separator.size(), rest.size()));
        return std::string(piece);
    };
    const auto orNone = [](std::string given) { return given == "-" ? std::nullopt : std::optional(std::move(given)); };
    Snapshots all;
    while (!text.empty()) {
        const auto one = cut(text, ", ");
        std::string_view app = one;
        const auto times = cut(app, "|");
        std::string_view end = times;
        const auto start = cut(end, "..");
        if (app.empty()) app = "org.example.editor/Editor";
        auto bundleId = orNone(cut(app, "/"));
        all.push_back({.startTime = at(start),
                       .endTime = end == "now" ? std::nullopt : std::optional(at(end)),
                       .bundleId = std::move(bundleId),
                       .appName = orNone(std::string(app))});
    }
    return all;
}

TEST(TimelineProcessingTest, TakesWhatBeginsOnTheDayAndLastsInOrder) {
    for (const auto& row : textTable(QUORVANE_TIMELINE_DATA "/records-of-the-day.txt"))
        EXPECT_EQ(Processing::snapshotsOfDay(records(row[0]), at("13:00:00"), at("18:00:00"), utc),
                  row[1] == "taken" ? records(row[0]) : Snapshots{})
            << row[0];
    const char* mixed = "11:00:00..now, 09:00:00..10:00:00, 09:00:00..10:00:00|-/Mail";
    const char* sorted = "09:00:00..10:00:00, 09:00:00..10:00:00|-/Mail, 11:00:00..now";
    EXPECT_EQ(Processing::snapshotsOfDay(records(mixed), at("00:00:00"), at("18:00:00"), utc), records(sorted));
}

TEST(TimelineProcessingTest, AgreesWithTheCalendarOnDaysOfEveryLength) {
    struct Row {
        Calendar calendar;
        const char* noon;
    };
    const Row rows[] = {{newYork, "2026-03-08T16:00:00Z"},
                        {newYork, "2026-11-01T17:00:00Z"},
                        {lordHowe, "2026-10-04T01:00:00Z"},
                        {lordHowe, "2026-04-05T01:30:00Z"},
                        {{"es_CL", "America/Santiago"}, "2026-09-06T15:00:00Z"},  // no midnight
                        {{"es_CU", "America/Havana"}, "2024-11-03T17:00:00Z"}};   // two
    for (const Row& row : rows) {
        SCOPED_TRACE(row.noon);
        Snapshots all;
        Snapshots expected;
        for (Seconds offset = -30h; offset < 30h; offset += 15min) {
            const Date start = at(row.noon) + offset;
            all.push_back({.startTime = start, .endTime = start + 10min});
            if (row.calendar.isSameDay(start, at(row.noon))) expected.push_back(all.back());
        }
        EXPECT_EQ(Processing::snapshotsOfDay(all, at(row.noon), at(row.noon), row.calendar), expected);
    }
}

TEST(TimelineProcessingTest, JoinsNeighboursOfOneApplication) {
    for (const auto& row : textTable(QUORVANE_TIMELINE_DATA "/joined-records.txt"))
        EXPECT_EQ(Processing::mergeAdjacentRecords(records(row[0]), at("18:00:00")), records(row.back())) << row[0];
    EXPECT_THAT(Processing::mergeAdjacentRecords({}, at("18:00:00")), IsEmpty());
}

TEST(TimelineProcessingTest, FillsWhatTheFirstOfThemLacks) {
    auto all = records("09:00:00..09:05:00, 09:05:00..09:10:00, 09:10:00..09:20:00");
    all[0].id = Uuid::random();
    all[0].windowTitle = "";
    all[1].windowTitle = "b";
    all[1].documentPath = "/b";
    all[1].url = "https://b.example/";
    all[1].tags = "b";
    all[2].url = "https://c.example/";
    all[2].category = "工作";
    all[2].tags = "c";
    const TimelineRecordSnapshot expected{.id = all[0].id,
                                          .startTime = at("09:00:00"),
                                          .endTime = at("09:20:00"),
                                          .bundleId = "org.example.editor",
                                          .appName = "Editor",
                                          .windowTitle = "",
                                          .documentPath = "/b",
                                          .url = "https://b.example/",
                                          .category = "工作",
                                          .tags = "b"};
    EXPECT_THAT(Processing::mergeAdjacentRecords(all, at("18:00:00")), ElementsAre(expected));
}

TEST(TimelineProcessingTest, PlacesBlocksAtTheirTrueTimesSideBySideWhereTheyOverlap) {
    const auto lines = [](const char* given) {
        return mapped(Processing::placeSnapshots(records(given), at("18:00:00"), utc), [](const auto& block) {
            return fmt::format("{:g}+{:g} {}/{}", block.startHour, block.duration, block.lane.index, block.lane.count);
        });
    };
    EXPECT_THAT(lines("09:15:36..09:45:36"), ElementsAre("9.26+0.5 0/1"));
    EXPECT_THAT(lines("09:00:00..09:30:36, 09:30:36..10:00:36"), ElementsAre("9+0.51 0/1", "9.51+0.5 0/1"));
    EXPECT_THAT(lines("09:00:00..09:30:00, 09:15:00..10:00:00"), ElementsAre("9+0.5 0/2", "9.25+0.75 1/2"));
    Snapshots abutting;
    for (Date start = at("11:11:00"); start < at("12:01:00"); start += 60s)
        abutting.push_back(
            {.startTime = start + 7s, .endTime = start + 67s, .appName = fmt::format("{}", abutting.size())});
    const auto drawn = Processing::placeSnapshots(abutting, at("18:00:00"), utc);
    EXPECT_EQ(drawn.size(), 50U);
    EXPECT_EQ(drawn.back().stretch.end, at("12:01:07"));
    EXPECT_NEAR(drawn.back().endHour, 12 + 67 / 3600.0, 1e-9);
    EXPECT_EQ(drawn.back().lane, Lane());
    EXPECT_THAT(lines("17:00:00..now, 16:00:00..15:00:00"), ElementsAre("17+1 0/1", "16+0 0/1"));
}

/// Records of one of a few applications from random minutes of a day, the last one perhaps open.
Snapshots randomDay(std::mt19937& random, DateInterval day, Date now) {
    const bool canOverlap = random() % 2 == 0;
    Snapshots all;
    for (Date start = day.start; start < std::min(day.end, now - 1h);
         start = canOverlap ? start + (random() % 3000) * 1s : *all.back().endTime + (random() % 3) * 60s)
        all.push_back({.id = Uuid::random(),
                       .startTime = start,
                       .endTime = start + (60 + random() % 3000) * 1s,
                       .bundleId = fmt::format("{}", random() % 3)});
    if (random() % 2 == 0 && all.back().startTime < now) all.back().endTime.reset();
    return all;
}

TEST(TimelineProcessingTest, DrawsRandomDaysAsTheyWere) {
    std::mt19937 random(20261101);
    const std::pair<const Calendar*, const char*> days[] = {{&newYork, "2026-03-08T17:00:00Z"},
                                                            {&newYork, "2026-11-01T17:00:00Z"},
                                                            {&lordHowe, "2026-04-05T01:30:00Z"},
                                                            {&utc, "2026-03-02T17:00:00Z"}};
    for (int round = 0; round < 200; ++round) {
        SCOPED_TRACE(round);
        const auto& [calendar, noon] = days[round % 4];
        const Date now = at(noon) + 10h;
        const auto records = randomDay(random, calendar->day(at(noon)), now);
        std::map<Uuid, Date> starts;
        std::set<Date> ends;
        for (const auto& record : records) {
            starts[record.id] = record.startTime;
            ends.insert(record.endTime.value_or(now));
        }
        auto blocks = Processing::process(records, now, *calendar);
        std::ranges::sort(blocks, {}, [](const auto& block) { return block.stretch.start; });
        std::map<int, const TimelineProcessedSnapshot*> last;  // of a lane
        for (const auto& block : blocks) {
            ASSERT_EQ(block.stretch.start, starts[block.id]);
            ASSERT_TRUE(ends.contains(block.stretch.end) && block.stretch.end <= now);
            ASSERT_DOUBLE_EQ(block.duration, (block.stretch.end - block.stretch.start) / 1h);
            const auto time = calendar->components(block.stretch.start);
            ASSERT_NEAR(block.startHour, time.hour + time.minute / 60.0 + time.second / 3600.0, 1e-9);
            const auto* before = std::exchange(last[block.lane.index], &block);
            ASSERT_TRUE(before == nullptr || before->stretch.end <= block.stretch.start);
            ASSERT_LT(block.lane.index, block.lane.count);
        }
    }
}

TEST(TimelineProcessingTest, CarriesWhatABlockSaysToItsItem) {
    auto page = records("09:00:00..09:30:00|com.apple.Safari/-").front();
    page.windowTitle = "Chat";
    page.url = "https://Claude.AI/new";
    page.category = "工作";
    page.tags = "a,b";
    auto noPage = records("10:00:00..10:30:00|-/Firefox").front();
    noPage.url = "claude.ai";
    const ProcessedActivityItem first{.id = page.id,
                                      .stretch = {at("09:00:00"), at("09:30:00")},
                                      .startHour = 9,
                                      .endHour = 9.5,
                                      .duration = 0.5,
                                      .bundleId = page.bundleId,
                                      .appName = "未知应用",
                                      .windowTitle = "Chat",
                                      .url = page.url,
                                      .color = colorFromRgb(0x1B7AE9),
                                      .category = "工作",
                                      .tags = "a,b"};
    const ProcessedActivityItem second{.stretch = {at("10:00:00"), at("10:30:00")},
                                       .startHour = 10,
                                       .endHour = 10.5,
                                       .duration = 0.5,
                                       .appName = "Firefox",
                                       .url = noPage.url,
                                       .color = colorFromRgb(0xE55121)};
    EXPECT_THAT(Processing::makeItems(Processing::process({noPage, page}, at("18:00:00"), utc)),
                ElementsAre(first, second));
    std::stop_source nobodyWaits;
    nobodyWaits.request_stop();
    EXPECT_THAT(Processing::process({noPage}, at("18:00:00"), utc, nobodyWaits.get_token()), IsEmpty());
}

using Hours = std::vector<std::pair<double, double>>;  // start and duration

Hours inDrawOrder(const Hours& hours) {
    std::vector<TimelineProcessedSnapshot> blocks(hours.size());
    for (std::size_t i = 0; i < hours.size(); ++i)
        std::tie(blocks[i].startHour, blocks[i].duration) = hours[i];
    Processing::sortByDrawOrder(blocks);
    return mapped(blocks, [](const auto& block) { return std::pair(block.startHour, block.duration); });
}

TEST(TimelineProcessingTest, DrawsLongBlocksFirst) {
    struct Row {
        const char* name;
        Hours hours;
        Hours expected;
    };
    const Row rows[] = {
        {"by duration", {{9, 0.5}, {10, 2}, {12, 1}}, {{10, 2}, {12, 1}, {9, 0.5}}},
        {"as long, by start", {{12, 1}, {9, 1}, {10, 1}}, {{9, 1}, {10, 1}, {12, 1}}},
        {"about as long", {{12, 1.00009}, {9, 1}}, {{9, 1}, {12, 1.00009}}},
        {"not as long", {{9, 1}, {12, 1.00011}}, {{12, 1.00011}, {9, 1}}},
        {"one between is about as long as both",
         {{1, 1}, {3, 0.99995}, {2, 0.99988}},
         {{1, 1}, {2, 0.99988}, {3, 0.99995}}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(inDrawOrder(row.hours), row.expected);
    }
}

TEST(TimelineProcessingTest, KeepsNeighboursInDrawOrderAlsoWhereTheRuleLeadsInACircle) {
    std::mt19937 random(5);
    for (int round = 0; round < 200; ++round) {
        Hours hours(100);
        for (auto& [start, duration] : hours) {
            start = static_cast<double>(random() % 1440) / 60;
            duration = 1 + static_cast<double>(random() % 100) / 1e5;
        }
        hours = inDrawOrder(hours);
        for (std::size_t i = 1; i < hours.size(); ++i) {
            const double longer = hours[i - 1].second - hours[i].second;
            ASSERT_TRUE(std::abs(longer) < 0.0001 ? hours[i - 1].first <= hours[i].first : longer > 0);
        }
    }
}

TEST(TimelineProcessingTest, FindsTheHoursInWhichSomethingHappened) {
    struct Row {
        const char* name;
        double startHour;
        double duration;
        std::set<int> expected;
    };
    const Row rows[] = {
        {"a whole hour", 9, 1, {9}},        {"over the hour", 9.5, 1, {9, 10}},
        {"of no length", 9.5, 0, {9}},      {"of no length on the hour", 9, 0, {}},
        {"over midnight", 23.8, 0.5, {23}}, {"past 24", 24, 1, {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(Processing::activityHours({{.startHour = row.startHour, .endHour = row.startHour + row.duration}}),
                  row.expected);
    }
}

TEST(TimelineProcessingTest, ShowsNamesThatStandFarEnoughFromTheLastOfTheirKind) {
    struct Block {
        double minute;
        double minutes;
        const char* name = "Editor";
    };
    struct Row {
        const char* name;
        std::vector<Block> blocks;
        std::vector<bool> expected;
    };
    // At 60 points an hour a minute is a point.
    const Row rows[] = {
        {"100 points apart", {{0, 10}, {100, 10}}, {true, true}},
        {"99 points apart", {{0, 10}, {99, 10}}, {true, false}},
        {"middles count", {{0, 40}, {110, 10}}, {true, false}},
        {"other names", {{0, 10}, {20, 10, "Mail"}}, {true, true}},
        {"90 s", {{0, 1.5}}, {true}},
        {"less, which keeps no other away", {{0, 1.49}, {20, 10}}, {false, true}},
        {"what isn't labelled keeps no other away", {{0, 10}, {60, 10}, {120, 10}}, {true, false, true}},
        {"from the top, not in draw order", {{60, 30}, {0, 20}}, {false, true}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        std::vector<ProcessedActivityItem> items;
        for (const auto& block : row.blocks)
            items.push_back({.startHour = block.minute / 60,
                             .endHour = (block.minute + block.minutes) / 60,
                             .duration = block.minutes / 60,
                             .appName = block.name,
                             .shouldShowName = true});
        Processing::layOut(items, HourLayout({0, 1, 2, 3}, 60));
        EXPECT_EQ(mapped(items, &ProcessedActivityItem::shouldShowName), row.expected);
    }
}

}  // namespace
}  // namespace quorvane
