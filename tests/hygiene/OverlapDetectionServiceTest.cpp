#include "store/OverlapDetectionService.h"

#include "hygiene/HygieneTest.h"
#include "support/Matchers.h"

#include <cstdlib>

namespace quorvane {
namespace {

class OverlapDetectionServiceTest : public HygieneTest {
protected:
    OverlapDetectionService service{context(), runLoop, console};
};

/// Another time zone while it lives.
class InZone {
public:
    explicit InZone(const char* zone) { ::setenv("TZ", zone, 1); }
    InZone(const InZone&) = delete;
    InZone& operator=(const InZone&) = delete;
    ~InZone() { ::setenv("TZ", "UTC", 1); }
};

// --- All records --------------------------------------------------------------------------------------------------

TEST_F(OverlapDetectionServiceTest, GroupsAreMendedInOrderAndSavedOnce) {
    given({
        "A 09:00:00 to 09:10:00",
        "B 09:05:00.5 to 09:30:00",  // 299.5 s: A ends earlier
        "C 09:25:00 to 09:31:00",    // 300 s: C is shorter
        "D 09:30:30 to 09:40:00",    // 30 s with C: C ends earlier, although it is gone
        "Alone 10:00:00 to 10:10:00",
        "- 11:00:00 to 11:00:29.5",
        "Half 11:00:29 to 11:00:59",
    });
    service.detectAndResolveOverlaps();
    EXPECT_THAT(newLines(), ElementsAre("开始检测重叠记录...", "发现 2 个重叠组", "处理重叠组，包含 4 条记录",
                                        "调整 A 结束时间到 2026-03-02 09:05:00 +0000", "删除较短记录 - C",
                                        "调整 C 结束时间到 2026-03-02 09:30:30 +0000", "处理重叠组，包含 2 条记录",
                                        "删除短记录 - 未知", "重叠处理完成"));
    const auto left = expectStored({"A 09:00:00 to 09:05:00.5", "B 09:05:00.5 to 09:30:00", "D 09:30:30 to 09:40:00",
                                    "Alone 10:00:00 to 10:10:00", "Half 11:00:29 to 11:00:59"});
    EXPECT_EQ(left[0]->updatedAt(), runLoop.now());
    EXPECT_EQ(left[1]->updatedAt(), at("09:30:00"));
}

TEST_F(OverlapDetectionServiceTest, LongRecordsAroundAShortOneAreComparedDirectly) {
    given({"A 09:00:00 to 09:10:00", "Tiny 09:05:00 to 09:05:10", "B 09:05:05 to 09:30:00"});
    service.detectAndResolveOverlaps();
    expectStored({"A 09:00:00 to 09:05:05", "B 09:05:05 to 09:30:00"});
    given({
        "C 10:00:00 to 10:10:00", "Tiny 10:09:55 to 10:10:05",
        "D 10:10:00 to 10:20:00",  // touches C
    });
    service.detectAndResolveOverlaps();
    EXPECT_THAT(newLines(), Contains("删除短记录 - Tiny").Times(2));
    expectStored(
        {"A 09:00:00 to 09:05:05", "B 09:05:05 to 09:30:00", "C 10:00:00 to 10:10:00", "D 10:10:00 to 10:20:00"});
}

TEST_F(OverlapDetectionServiceTest, WhatCannotBeReadOrSavedIsReported) {
    given({"A 09:00:00 to 09:10:00", "B 09:09:00 to 09:30:00"});
    refuse("UPDATE");
    service.detectAndResolveOverlaps();
    EXPECT_THAT(newLines().back(), StartsWith("保存失败: "));
    allow("UPDATE");
    add("Other", "11:00:00", "11:10:00");
    EXPECT_THAT(stored()[0], isRecord("A", "09:00:00", "09:09:00"));
    hideRecords();
    service.detectAndResolveOverlaps();
    EXPECT_THAT(newLines(), ElementsAre("开始检测重叠记录...", StartsWith("检测重叠失败: ")));
}

// --- One day ------------------------------------------------------------------------------------------------------

TEST_F(OverlapDetectionServiceTest, ADayKnowsWhatTouchesIt) {
    given({"Before 2026-02-28 20:00:00 to 2026-02-28 23:00:00", "Night 2026-02-28 22:59:00 to 2026-03-01 00:10:00",
           "Morning 2026-03-01 00:09:00 to 2026-03-01 09:00:00", "Evening 2026-03-01 23:00:00 to 2026-03-02 00:30:00",
           "NextDay 2026-03-02 00:29:00 to 2026-03-02 09:00:00"});
    service.detectAndResolveOverlaps(at("2026-03-01 15:00:00"));
    EXPECT_THAT(newLines(), ElementsAre("在 2026-03-01 15:00:00 +0000 发现 1 个重叠组", "处理重叠组，包含 2 条记录",
                                        "调整 Night 结束时间到 2026-03-01 00:09:00 +0000", "重叠处理完成"));
    service.detectAndResolveOverlaps(at("2026-03-01 15:00:00"));
    EXPECT_THAT(newLines(), ElementsAre("在 2026-03-01 15:00:00 +0000 未发现重叠记录"));
}

TEST_F(OverlapDetectionServiceTest, ADayEndsWhereTheUsersCalendarSaysSo) {
    const InZone berlin("Europe/Berlin");  // its 29 March has 23 hours, from 23:00 to 22:00 in UTC
    runLoop.setClock(at("2026-03-31T12:00:00Z"));
    const auto touchesTheDay = [&](const char* instant) {
        const auto a = add("A", at(instant), 60s);
        const auto b = add("B", at(instant) + 30s, 120s);
        service.detectAndResolveOverlaps(at("2026-03-29T10:00:00Z"));
        context().remove(a);
        context().remove(b);
        context().save();
        return newLines().size() > 1;
    };
    EXPECT_FALSE(touchesTheDay("2026-03-28T22:58:00Z"));
    EXPECT_TRUE(touchesTheDay("2026-03-28T22:59:30Z"));
    EXPECT_TRUE(touchesTheDay("2026-03-29T21:59:00Z"));
    EXPECT_FALSE(touchesTheDay("2026-03-29T22:00:00Z"));
}

TEST_F(OverlapDetectionServiceTest, TheLiveRecordTouchesTheDaysUntilNowAndWhatWasLeftOpenEndsFirst) {
    given({"Long 2026-03-01 10:00:00 to 2026-03-01 11:00:00", "Left 2026-02-28 09:00:00"});
    const Uuid live = add("Live", "2026-02-27 09:00:00")->id();
    OverlapDetectionService service{context(), runLoop, console, 10, [live] { return live; }};
    service.detectAndResolveOverlaps(at("2026-03-03 09:00:00"));
    EXPECT_THAT(console.lines(), Contains("OverlapDetectionService: 在 2026-03-03 09:00:00 +0000 未发现重叠记录"));
    expectStored({"Live 2026-02-27 09:00:00", "Left 2026-02-28 09:00:00 to 2026-02-28 09:00:01",
                  "Long 2026-03-01 10:00:00 to 2026-03-01 11:00:00"});
    service.detectAndResolveOverlaps(at("2026-03-01 09:00:00"));
    expectStored({"Live 2026-02-27 09:00:00", "Left 2026-02-28 09:00:00 to 2026-02-28 09:00:01"});
    hideRecords();
    console.clear();
    service.detectAndResolveOverlaps(at("2026-03-01 09:00:00"));
    EXPECT_THAT(newLines(), ElementsAre(StartsWith("检测日期重叠失败: ")));
}

// --- Questions ----------------------------------------------------------------------------------------------------

TEST_F(OverlapDetectionServiceTest, ARangeOverlapsWhatReachesIntoIt) {
    const auto ended = add("Ended", "09:00:00", "10:00:00");
    const auto open = add("Open", "10:30:00");
    add("Changed", "08:00:00", "09:00:00")->endTime = at("08:30:00");
    aRecord().app("Unsaved").from("08:40:00").to("08:50:00").in(context());
    add("Future", "13:00:00");
    const auto twin = aRecord().app("Other").make();
    twin->id = ended->id();
    const struct {
        const char* name;
        const char* start;
        const char* end;
        bool expected;
        const ActivityRecord* excluding = nullptr;
    } rows[] = {
        {"inside", "09:10:00", "09:20:00", true},
        {"around", "08:55:00", "10:20:00", true},
        {"up to its start", "08:55:00", "09:00:00", false},
        {"half a second further", "08:55:00", "09:00:00.5", true},
        {"from its end", "10:00:00", "10:20:00", false},
        {"half a second earlier", "09:59:59.5", "10:20:00", true},
        {"excluded", "09:10:00", "10:20:00", false, ended.get()},
        {"excluded by its identifier", "09:10:00", "10:20:00", false, twin.get()},
        {"a further one besides the excluded", "09:10:00", "10:40:00", true, ended.get()},
        {"an open one until now", "11:59:59", "12:00:00", true},
        {"an open one from the future ends now", "12:30:00", "14:00:00", false},
        {"a record that is not saved", "08:30:00", "08:45:00", true},
    };
    for (const auto& row : rows)
        EXPECT_EQ(service.hasOverlap(at(row.start), at(row.end), row.excluding), row.expected) << row.name;
    EXPECT_EQ(service.suggestedEndTime(at("08:30:00")), at("08:40:00"));
    EXPECT_THAT(newLines(), IsEmpty());
}

TEST_F(OverlapDetectionServiceTest, TheSuggestedEndIsTheNextStartAtTheLatestNow) {
    given({"A 09:00:00 to 10:00:00", "B 11:00:00 to 11:30:00", "Future 13:00:00 to 13:30:00"});
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"before all", "08:00:00", "09:00:00"},           {"at a start", "09:00:00", "11:00:00"},
        {"next in the future", "11:00:00", "12:00:00"},   {"nothing later", "13:00:00", "12:00:00"},
        {"a date in the future", "18:00:00", "12:00:00"},
    };
    for (const auto& [name, after, expected] : rows)
        EXPECT_EQ(service.suggestedEndTime(at(after)), at(expected)) << name;
}

TEST_F(OverlapDetectionServiceTest, ABrokenStoreAnswersSoThatTrackingGoesOn) {
    hideRecords();
    EXPECT_FALSE(service.hasOverlap(at("09:00:00"), at("10:00:00")));
    EXPECT_EQ(service.suggestedEndTime(at("09:00:00")), runLoop.now());
    EXPECT_THAT(newLines(), ElementsAre(StartsWith("检查重叠失败: "), StartsWith("获取建议结束时间失败: ")));
}

// --- Between the turns of a check ---------------------------------------------------------------------------------

/// A check that reads two records in a turn, and what happens between its turns.
class OverlapCheckTest : public HygieneTest {
protected:
    OverlapCheckTest() {
        given({"A 09:00:00 to 09:10:00", "B 09:09:00 to 09:30:00", "C 10:00:00 to 10:10:00", "D 10:09:00 to 10:30:00",
               "E 11:00:00 to 11:10:00"});
    }

    void begin() { OverlapDetectionService(context(), runLoop, console, 2).detectAndResolveOverlaps(); }

    std::shared_ptr<ActivityRecord> recordOf(const char* app) {
        return context()
            .fetch<ActivityRecord>({.predicate = field(&ActivityRecord::appName) == std::string(app)})
            .front();
    }
};

TEST_F(OverlapCheckTest, ALargeStoreIsCheckedInLaterTurnsAlsoWithoutTheService) {
    begin();
    EXPECT_THAT(newLines(), ElementsAre("开始检测重叠记录..."));
    int turns = 0;
    runLoop.post([&] { ++turns; });
    runLoop.post([&] {
        EXPECT_THAT(newLines(), IsEmpty());
        ++turns;
    });
    runLoop.runPosted();
    EXPECT_EQ(turns, 2);
    EXPECT_THAT(newLines(), ElementsAre("发现 2 个重叠组", "处理重叠组，包含 2 条记录",
                                        "调整 A 结束时间到 2026-03-02 09:09:00 +0000", "处理重叠组，包含 2 条记录",
                                        "调整 C 结束时间到 2026-03-02 10:09:00 +0000", "重叠处理完成"));
}

TEST_F(OverlapCheckTest, WhatBeginsDuringTheCheckIsLeftToTheNextOne) {
    begin();
    add("New", "11:09:00");  // of the time that is being recorded, a part of a minute
    runLoop.setClock(at("11:09:10"));
    runLoop.runPosted();
    EXPECT_EQ(newLines().size(), 7);
    expectStored({"A 09:00:00 to 09:09:00", "B 09:09:00 to 09:30:00", "C 10:00:00 to 10:09:00",
                  "D 10:09:00 to 10:30:00", "E 11:00:00 to 11:10:00", "New 11:09:00"});
    recordOf("New")->endTime = runLoop.now();
    begin();
    runLoop.runPosted();
    EXPECT_THAT(newLines(), Contains("删除短记录 - New"));
}

TEST_F(OverlapCheckTest, WhatChangesDuringTheCheckCountsAsItIsAtTheEnd) {
    begin();
    runLoop.runPosted();
    newLines();
    given({"F 12:00:00 to 12:10:00", "G 12:09:00 to 12:30:00"});
    recordOf("A")->endTime = at("09:10:00");
    recordOf("C")->endTime = at("10:10:00");
    context().save();
    begin();
    // A slice of two shows no end of a group, so that each pair takes two turns: A and B are known after the first of
    // these, C and D after the last.
    runLoop.post([this] {
        recordOf("A")->endTime = at("09:05:00");  // apart from B now
        context().save();
        runLoop.post([this] {
            recordOf("F")->endTime = at("12:09:30");
            context().save();
            runLoop.post([this] { context().remove(recordOf("D")); });  // leaves C alone
        });
    });
    runLoop.runPosted();
    EXPECT_THAT(newLines(), ElementsAre("开始检测重叠记录...", "发现 1 个重叠组", "处理重叠组，包含 2 条记录",
                                        "调整 F 结束时间到 2026-03-02 12:09:00 +0000", "重叠处理完成"));
}

TEST_F(OverlapCheckTest, AStoreThatClosesDuringTheCheckEndsItQuietlyAndOneThatBreaksWithALine) {
    begin();
    store.close();
    runLoop.runPosted();
    EXPECT_THAT(newLines(), ElementsAre("开始检测重叠记录..."));
    store.reopen();
    begin();
    hideRecords();
    runLoop.runPosted();
    EXPECT_THAT(newLines(), ElementsAre("开始检测重叠记录...", StartsWith("检测重叠失败: ")));
}

}  // namespace
}  // namespace quorvane
