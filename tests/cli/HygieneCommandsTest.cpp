#include "cli/CliFixture.h"

#include "base/Json.h"
#include "platform/linux/process/ProcessLock.h"
#include "session/TrackerLock.h"

#include <SQLiteCpp/SQLiteCpp.h>

namespace quorvane {
namespace {

class HygieneCommandsTest : public CliTest {
protected:
    /// Runs the command on the morning of the examples; it has to succeed.
    ProgramResult runAtNoon(Arguments arguments) {
        arguments.insert(arguments.begin(), {"--now", "2026-03-04T12:00:00Z"});
        const auto result = run(arguments);
        EXPECT_EQ(result.status, 0) << result.err;
        return result;
    }

    /// The first letters of the records' ids with their ends, newest first.
    [[nodiscard]] std::vector<std::string> records() {
        std::vector<std::string> found;
        for (const Json& row : parseJson(outputOf({"records", "--json"})).value_or(Json()))
            found.push_back(row["id"].get<std::string>().substr(0, 1) + " " +
                            (row["end_time"].is_null() ? "open" : row["end_time"].get<std::string>().substr(0, 19)));
        return found;
    }

    void loadDebris() {
        load(recordLine("E", "2026-02-01T00:00:00Z", "2026-02-02T06:00:00Z") +
             recordLine("A", "2026-03-01T00:00:00Z", "2026-03-02T01:00:00Z") +
             recordLine("C", "2026-03-03T09:00:00Z", "2026-03-03T09:00:05Z") +
             recordLine("D", "2026-03-03T09:00:10Z", "2026-03-03T09:01:10Z") +
             recordLine("B", "2026-03-04T10:00:00Z", ""));
    }
};

TEST_F(HygieneCommandsTest, TheBackgroundCleanUpRunsToItsEndAndLooksBackFourteenDays) {
    loadDebris();
    const auto result = runAtNoon({"cleanup"});
    EXPECT_EQ(result.out, "{\"deleted\":2,\"changed\":1}\n");
    EXPECT_THAT(result.err, EndsWith("DataCleanupService: 数据清理完成\n"));
    EXPECT_THAT(records(), ElementsAre("B 2026-03-04T10:00:01", "D 2026-03-03T09:01:10", "E 2026-02-02T06:00:00"));
    EXPECT_EQ(runAtNoon({"cleanup"}).out, "{\"deleted\":0,\"changed\":0}\n");
}

TEST_F(HygieneCommandsTest, TheSynchronousCleanUpLooksAtEverythingAndKeepsShortRecords) {
    loadDebris();
    const auto result = runAtNoon({"cleanup", "--synchronous"});
    EXPECT_EQ(result.out, "{\"deleted\":2,\"changed\":1}\n");
    EXPECT_THAT(result.err, EndsWith("DataCleanupService: 同步数据清理完成\n"));
    EXPECT_THAT(records(), ElementsAre("B 2026-03-04T10:00:01", "D 2026-03-03T09:01:10", "C 2026-03-03T09:00:05"));
}

TEST_F(HygieneCommandsTest, OverlapsAreMendedEverywhereOrOnOneLocalDay) {
    setting_.environment["TZ"] = "Asia/Tokyo";  // whose days begin at 15:00 UTC
    load(recordLine("A", "2026-03-02T14:40:00Z", "2026-03-02T14:50:00Z") +
         recordLine("B", "2026-03-02T14:49:00Z", "2026-03-02T14:55:00Z") +
         recordLine("C", "2026-03-02T15:10:00Z", "2026-03-02T15:20:00Z") +
         recordLine("D", "2026-03-02T15:14:00Z", "2026-03-02T15:19:00Z"));
    EXPECT_EQ(runAtNoon({"overlaps", "--date", "2026-03-02"}).out, "{\"deleted\":0,\"changed\":1}\n");
    EXPECT_THAT(records(), ElementsAre("D 2026-03-02T15:19:00", "C 2026-03-02T15:20:00", "B 2026-03-02T14:55:00",
                                       "A 2026-03-02T14:49:00"));
    EXPECT_EQ(runAtNoon({"overlaps"}).out, "{\"deleted\":1,\"changed\":0}\n");
    EXPECT_THAT(records(), ElementsAre("C 2026-03-02T15:20:00", "B 2026-03-02T14:55:00", "A 2026-03-02T14:49:00"));
}

TEST_F(HygieneCommandsTest, BesideATrackerTheNewestOpenRecordIsItsOwn) {
    load(recordLine("A", "2026-03-03T09:00:00Z", "") + recordLine("B", "2026-03-04T08:00:00Z", ""));
    const auto lock = platform::ProcessLock::tryAcquire(trackerLockFile(store()), "quorvane");
    EXPECT_EQ(runAtNoon({"cleanup"}).out, "{\"deleted\":0,\"changed\":1}\n");
    EXPECT_EQ(runAtNoon({"overlaps"}).out, "{\"deleted\":0,\"changed\":0}\n");
    EXPECT_THAT(records(), ElementsAre("B open", "A 2026-03-03T09:00:01"));
}

TEST_F(HygieneCommandsTest, WhatWentIsListedComesBackForGoodOrIsEmptied) {
    loadDebris();
    runAtNoon({"cleanup"});
    const auto trash = [&] {
        std::vector<std::string> found;
        for (const Json& row : parseJson(outputOf({"trash", "list", "--json"})).value_or(Json()))
            found.push_back(row["pass"].get<std::string>() + " " + row["record"]["id"].get<std::string>().substr(0, 1) +
                            " " + row["removed_at"].get<std::string>());
        return found;
    };
    EXPECT_THAT(trash(), UnorderedElementsAre("tooLong A 2026-03-04T12:00:00Z", "fragment C 2026-03-04T12:00:00Z"));
    EXPECT_THAT(outputOf({"trash", "list"}), HasSubstr("2026-03-03 09:00:05"));
    const std::string a = "A0000000-0000-4000-8000-000000000000";
    expectRefusal({"trash", "restore", a, "D0000000-0000-4000-8000-000000000000"}, 1,
                  "there is no record D0000000-0000-4000-8000-000000000000 in the trash");
    EXPECT_EQ(trash().size(), 2) << "all or none";
    EXPECT_EQ(outputOf({"trash", "restore", "--json", a}), "{\"restored\":1}\n");
    EXPECT_EQ(runAtNoon({"cleanup"}).out, "{\"deleted\":0,\"changed\":0}\n");
    EXPECT_THAT(records(), Contains("A 2026-03-02T01:00:00"));
    EXPECT_EQ(outputOf({"trash", "empty", "--json"}), "{\"removed\":1}\n");
    EXPECT_THAT(trash(), IsEmpty());
}

TEST_F(HygieneCommandsTest, AMissingStoreIsMade) {
    EXPECT_EQ(runAtNoon({"cleanup"}).out, "{\"deleted\":0,\"changed\":0}\n");
    EXPECT_EQ(runAtNoon({"overlaps"}).out, "{\"deleted\":0,\"changed\":0}\n");
    EXPECT_THAT(names(), ElementsAre("store.sqlite"));
}

TEST_F(HygieneCommandsTest, WhatCouldNotBeSavedIsAFailure) {
    const std::string name = R"(,"app_name":"保存失败: x")";  // no failure by itself
    load(recordLine("A", "2026-03-02T09:00:00Z", "2026-03-02T09:10:00Z", name) +
         recordLine("B", "2026-03-02T09:09:00Z", "2026-03-02T09:20:00Z", name));
    {
        SQLite::Database other(store().string(), SQLite::OPEN_READWRITE);
        other.exec("BEGIN IMMEDIATE");
        const auto result = run({"overlaps"});
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.out, "");
        EXPECT_THAT(result.err, HasSubstr("OverlapDetectionService: 保存失败: "));
        EXPECT_THAT(result.err, EndsWith("\nquorvane-cli: a part of the work failed; the lines above say which\n"));
        other.exec("ROLLBACK");
    }
    EXPECT_EQ(runAtNoon({"overlaps"}).out, "{\"deleted\":0,\"changed\":1}\n");
}

}  // namespace
}  // namespace quorvane
