#include "timeline/AppStatistics.h"

#include "support/Builders.h"
#include "support/Mapped.h"
#include "support/Matching.h"
#include "timeline/AppColorPalette.h"

#include <set>

namespace quorvane {
namespace {

using Text = std::optional<std::string>;

TimelineRecordSnapshot record(const Text& bundleId, const Text& appName, const char* start, const char* end) {
    return {.id = Uuid::random(),
            .startTime = at(start),
            .endTime = end ? std::optional(at(end)) : std::nullopt,
            .bundleId = bundleId,
            .appName = appName};
}

/// What can be said in advance: all but the identifiers.
using Row = std::tuple<std::string, double, std::string, double>;

std::vector<Row> rowsOf(const AppStatistics& statistics) {
    return mapped(statistics.appStats, [](const AppStat& stat) {
        return Row(stat.appName, stat.hours, hexText(stat.color), stat.percentage);
    });
}

std::string hashed(const char* seed) {
    return hexText(AppColorPalette::hashedColor(seed));
}

TEST(AppStatisticsTest, AddsUpTheHoursOfEachNameMostFirstAndAmongEqualsTheFirstThatCame) {
    const auto statistics =
        appStatistics({record("org.gimp.gimp", "Gimp", "09:00:00", "09:30:00"),
                       record({}, "editor", "09:30:00", "10:00:00"), record({}, "Editor", "10:00:00", "10:15:00"),
                       record({}, {}, "10:15:00", "11:15:00"), record({}, "Editor", "11:45:00", nullptr)},
                      at("12:00:00"));
    EXPECT_THAT(rowsOf(statistics),
                ElementsAre(Row("未知应用", 1, hashed("unknown"), 40), Row("Gimp", 0.5, hashed("org.gimp.gimp"), 20),
                            Row("editor", 0.5, hashed("editor"), 20), Row("Editor", 0.5, hashed("editor"), 20)));
    EXPECT_EQ(statistics.totalHours, 2.5);
    const auto ids = mapped(statistics.appStats, &AppStat::id);
    EXPECT_THAT(std::set<Uuid>(ids.begin(), ids.end()), SizeIs(4));
}

TEST(AppStatisticsTest, CountsTimeThatRunsBackwardsAndGivesNoSharesWithoutTime) {
    EXPECT_EQ(appStatistics({}, at("12:00:00")), AppStatistics());
    const auto open = record({}, "B", "12:00:00", nullptr);
    const auto future = record({}, "B", "13:00:00", nullptr);
    EXPECT_THAT(rowsOf(appStatistics({record({}, "A", "09:00:00", "09:00:00"), open}, at("12:00:00"))),
                ElementsAre(Row("A", 0, hashed("a"), 0), Row("B", 0, hashed("b"), 0)));
    EXPECT_THAT(rowsOf(appStatistics({record({}, "A", "09:00:00", "10:00:00"), future}, at("12:00:00"))),
                ElementsAre(Row("A", 1, hashed("a"), 0), Row("B", -1, hashed("b"), 0)));
}

TEST(AppStatisticsTest, TakesTheColorOfTheLastRecordByBundleOrName) {
    const auto browser = record("org.example.browser", "Web", "09:00:00", "10:00:00");
    const auto named = record({}, "Safari", "10:00:00", "10:30:00");
    const auto first = record("com.apple.Safari", "Web", "08:00:00", "08:30:00");
    EXPECT_THAT(rowsOf(appStatistics({first, browser, named}, at("12:00:00"))),
                ElementsAre(Row("Web", 1.5, hashed("org.example.browser"), 75), Row("Safari", 0.5, "#1B7AE9", 25)));
}

}  // namespace
}  // namespace quorvane
