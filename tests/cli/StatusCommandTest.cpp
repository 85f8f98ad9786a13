#include "cli/CliFixture.h"

#include "base/Json.h"
#include "platform/linux/process/ProcessLock.h"
#include "session/CaptureNote.h"
#include "session/TrackerLock.h"
#include "store/ModelContainer.h"
#include "support/Builders.h"
#include "tracking/PresenceNote.h"

namespace quorvane {
namespace {

class StatusCommandTest : public CliTest {
protected:
    [[nodiscard]] Json status(const std::string& now) {
        return parseJson(outputOf({"--now", now, "--json", "status"})).value_or(Json());
    }
};

TEST_F(StatusCommandTest, TellsOfAnEmptyStore) {
    load("");
    EXPECT_EQ(
        outputOf({"--json", "status"}),
        R"({"tracking":false,"paused_since":null,"away_since":null,"open_record":null,"today_seconds":0.0,)"
        R"("today_records":0,)"
        R"("capture":{"can_see":false,"sees":"nothing","in_part":false,"reason":"no display: DISPLAY is not set, and no Wayland compositor answers",)"
        R"("remedy":"Start it from a terminal inside the desktop session."}})"
        "\n");
    EXPECT_EQ(outputOf({"status"}),
              "Tracking:     no\n"
              "Can see:      nothing: no display: DISPLAY is not set, and no Wayland compositor answers\n"
              "              -> Start it from a terminal inside the desktop session.\n"
              "Open record:  none\nToday:        0:00:00 in 0 records\n");
}

TEST_F(StatusCommandTest, TakesTrackingForAliveUntilTheHeartbeatIsTwoMinutesOld) {
    load(recordLine("A", "2026-03-04T09:00:00Z", ""));
    EXPECT_TRUE(status("2026-03-04T09:01:59.999Z")["tracking"].get<bool>());
    EXPECT_FALSE(status("2026-03-04T09:02:00Z")["tracking"].get<bool>());
    EXPECT_EQ(status("2026-03-04T09:02:00Z")["open_record"]["id"], "A0000000-0000-4000-8000-000000000000");
}

TEST_F(StatusCommandTest, WhatATrackerCanSeeIsSaidByTheTrackerAndNotByOurOwnSession) {
    ModelContainer container({.file = store()});
    const auto lock = platform::ProcessLock::tryAcquire(trackerLockFile(store()), "quorvane");
    const std::string now = "2026-03-04T09:00:00Z";
    EXPECT_TRUE(status(now)["capture"]["can_see"].get<bool>());
    CaptureNote::keep(container.mainContext(), {.reason = "the view is gone", .remedy = "Look again."});
    EXPECT_EQ(status(now)["capture"]["reason"], "the view is gone");
    EXPECT_EQ(status(now)["capture"]["remedy"], "Look again.");
    CaptureNote::keep(container.mainContext(),
                      {.sight = platform::Sight::titles, .isPartial = true, .reason = "a part", .remedy = {}});
    EXPECT_TRUE(status(now)["capture"]["can_see"].get<bool>());
    EXPECT_EQ(status(now)["capture"]["sees"], "titles");
    EXPECT_THAT(outputOf({"--now", now, "status"}), HasSubstr("Can see:      some applications and titles: a part\n"));
    CaptureNote::keep(container.mainContext(), {.sight = platform::Sight::applications});
    EXPECT_TRUE(status(now)["capture"]["can_see"].get<bool>());
}

TEST_F(StatusCommandTest, TellsOfAPauseAndWhileATrackerRunsOfAnAbsence) {
    ModelContainer container({.file = store()});
    const auto keepAwaySince = [&](const char* time) { PresenceNote::keepAbsence(container.mainContext(), at(time)); };
    const Arguments arguments{"--now", "2026-03-02T09:00:00Z", "status"};
    keepAwaySince("08:38:00");
    EXPECT_THAT(outputOf(arguments), StartsWith("Tracking:     no\n")) << "of a run that crashed";
    const auto lock = platform::ProcessLock::tryAcquire(trackerLockFile(store()), "quorvane");
    EXPECT_THAT(outputOf(arguments), StartsWith("Tracking:     no, away since 2026-03-02 08:38:00\n"));
    EXPECT_EQ(status("2026-03-02T09:00:00Z")["away_since"], "2026-03-02T08:38:00.000000Z");
    PresenceNote::keepPause(container.mainContext(), at("08:50:00"));
    EXPECT_THAT(outputOf(arguments), StartsWith("Tracking:     no, paused by you since 2026-03-02 08:50:00\n"));
    EXPECT_EQ(status("2026-03-02T09:00:00Z")["paused_since"], "2026-03-02T08:50:00.000000Z");
}

TEST_F(StatusCommandTest, AddsUpWhatStartsOnTheLocalDayAndOpenRecordsUpToNow) {
    // The day on which the clocks of Berlin go forward has 23 hours: from 23:00 UTC to 22:00 UTC.
    setting_.environment["TZ"] = "Europe/Berlin";
    load(recordLine("A", "2026-03-28T22:59:59Z", "2026-03-29T01:00:00Z") +
         recordLine("B", "2026-03-28T23:00:00Z", "2026-03-28T23:00:10.25Z") +
         recordLine("C", "2026-03-29T21:59:59Z", "2026-03-29T22:00:00Z") +
         recordLine("D", "2026-03-29T22:00:00Z", "2026-03-29T23:00:00Z") +
         recordLine("E", "2026-03-29T10:00:00Z", "2026-03-29T09:00:00Z") + recordLine("F", "2026-03-29T12:00:00Z", ""));
    const Json found = status("2026-03-29T12:00:30Z");
    EXPECT_EQ(found["today_records"], 4);
    EXPECT_EQ(found["today_seconds"], 41.25);
}

TEST_F(StatusCommandTest, WritesForPeople) {
    load(recordLine("A", "2026-03-04T09:00:00Z", "", R"(,"app_name":"Editor","window_title":"main.cpp\n")"));
    EXPECT_EQ(outputOf({"--now", "2026-03-04T09:01:05Z", "status"}),
              "Tracking:     yes\nOpen record:  Editor — main.cpp , since 2026-03-04 09:00:00 (0:01:05)\n"
              "Today:        0:01:05 in 1 record\n");
}

TEST_F(StatusCommandTest, TellsWhetherAnInstantIsWithinTheWorkHours) {
    const char* from9To18 = R"({"entity":"AppSettings","only_track_work_hours":true,"work_days":"0,1,2,3,4,5,6"})";
    const std::tuple<const char*, Arguments, std::string, const char*> rows[] = {
        {R"({"entity":"AppSettings"})", {}, "true", "Recording is not bound to work hours\n"},
        {from9To18, {"--at", "2026-03-04T18:00:59+01:00"}, "true", "Within the work hours\n"},
        {from9To18, {"--now", "2026-03-04T08:59:59+01:00"}, "false", "Outside the work hours: nothing is recorded\n"}};
    setting_.environment["TZ"] = "Europe/Berlin";
    for (auto [settings, arguments, json, text] : rows) {
        std::filesystem::remove(store());
        load(settings);
        arguments.insert(arguments.begin(), "work-hours");
        EXPECT_EQ(outputOf(arguments), text);
        arguments.emplace_back("--json");
        EXPECT_EQ(outputOf(arguments), R"({"within":)" + json + "}\n") << text;
    }
}

}  // namespace
}  // namespace quorvane
