#include "praise/EffectiveUsage.h"

#include "support/Builders.h"
#include "support/Matching.h"
#include "timeline/AppColorPalette.h"

#include <fmt/format.h>

namespace quorvane {
namespace {

TimelineRecordSnapshot record(const std::optional<std::string>& app, std::string_view from,
                              const std::optional<std::string>& to = std::nullopt) {
    return {.startTime = at(from), .endTime = to ? std::optional(at(*to)) : std::nullopt, .appName = app};
}

/// "Editor 1.5h 75%", one for each application.
std::vector<std::string> usage(const std::vector<TimelineRecordSnapshot>& records) {
    std::vector<std::string> lines;
    for (const AppStat& stat : effectiveUsage(records, at("12:00:00")))
        lines.push_back(fmt::format("{} {:.4g}h {:.4g}%", stat.appName, stat.hours, stat.percentage));
    return lines;
}

TEST(EffectiveUsageTest, AddsUpEachApplicationAndPutsTheMostUsedFirst) {
    EXPECT_THAT(usage({}), IsEmpty());
    EXPECT_THAT(usage({record("Mail", "09:00:00", "09:30:00"), record("Editor", "09:30:00", "10:00:00"),
                       record(std::nullopt, "10:00:00", "11:00:00"), record("Editor", "11:00:00")}),
                ElementsAre("Editor 1.5h 50%", "unknown 1h 33.33%", "Mail 0.5h 16.67%"));
    EXPECT_THAT(usage({record("B", "09:00:00", "10:00:00"), record("A", "10:00:00", "11:00:00")}),
                ElementsAre("B 1h 50%", "A 1h 50%"));
}

TEST(EffectiveUsageTest, WhatRecordsCoverAtOnceCountsForNone) {
    const std::tuple<const char*, std::vector<TimelineRecordSnapshot>, std::vector<std::string>> rows[] = {
        {"partly",
         {record("A", "09:00:00", "10:00:00"), record("B", "09:45:00", "10:45:00")},
         {"A 0.75h 50%", "B 0.75h 50%"}},
        {"within",
         {record("A", "09:00:00", "11:00:00"), record("B", "09:30:00", "10:00:00")},
         {"A 1.5h 100%", "B 0h 0%"}},
        {"two over the same time",
         {record("A", "09:00:00", "11:00:00"), record("B", "09:30:00", "10:00:00"),
          record("C", "09:30:00", "10:30:00")},
         {"A 1h 100%", "B 0h 0%", "C 0h 0%"}},
        {"the same twice", {record("A", "09:00:00", "10:00:00"), record("A", "09:00:00", "10:00:00")}, {"A 0h 0%"}},
        {"touching",
         {record("A", "09:00:00", "10:00:00"), record("B", "10:00:00", "11:00:00")},
         {"A 1h 50%", "B 1h 50%"}},
        {"backwards and empty",
         {record("A", "10:00:00", "09:00:00"), record("B", "09:15:00", "09:45:00"), record("C", "09:30:00", "09:30:00"),
          record("D", "13:00:00")},
         {"B 0.5h 100%", "A 0h 0%", "C 0h 0%", "D 0h 0%"}},
    };
    for (const auto& [name, records, expected] : rows)
        EXPECT_EQ(usage(records), expected) << name;
}

TEST(EffectiveUsageTest, ColorsAreThoseOfTheBlocks) {
    const auto stats = effectiveUsage(
        {record("Viewer", "09:00:00", "10:00:00"), record("Slack", "10:00:00", "10:30:00")}, at("12:00:00"));
    EXPECT_EQ(stats[0].color, AppColorPalette::appColor({}, "Viewer"));
    EXPECT_EQ(stats[1].color, colorFromRgb(0x764FA9));
}

}  // namespace
}  // namespace quorvane
