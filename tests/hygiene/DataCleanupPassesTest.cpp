#include "store/DataCleanupPasses.h"

#include "hygiene/HygieneTest.h"
#include "hygiene/RandomHistory.h"
#include "store/RecordTrash.h"
#include "support/Matchers.h"

#include <algorithm>

namespace quorvane {
namespace {

using namespace DataCleanupPasses;

class DataCleanupPassesTest : public HygieneTest {
protected:
    DataCleanupPassesTest() : HygieneTest("DataCleanupService") {}

    /// Runs one pass now and returns its lines.
    std::vector<std::string> linesOf(bool (*pass)(const Scope&), std::optional<Date> cutoff = std::nullopt,
                                     std::optional<Uuid> live = std::nullopt) {
        console.clear();
        pass({.context = context(), .console = console, .now = runLoop.now(), .cutoff = cutoff, .live = live});
        return newLines();
    }

    void removeAll() {
        for (const auto& record : context().fetch<ActivityRecord>())
            context().remove(record);
        context().save();
    }

    /// What the pass took, with its name: "overlap B".
    std::vector<std::string> trash() {
        std::vector<std::string> found;
        for (const auto& trashed : RecordTrash::content(context()))
            found.push_back(trashed->pass() + " " +
                            RecordTrash::recordOf(context(), *trashed)->appName().value_or("-"));
        return found;
    }

    /// A record of a text's type and bundle, for what `mergeAdjacentRecords` may not merge.
    void addWith(std::string_view start, std::string_view end, const std::string& type,
                 const std::optional<std::string>& bundleId) {
        const auto record = add("Editor", start, end);
        record->activityType = type;
        record->appBundleId = bundleId;
        context().save();
    }
};

// --- Abnormal durations -------------------------------------------------------------------------------------------

TEST_F(DataCleanupPassesTest, RecordsOfMoreThanADayGo) {
    given({"Day 2026-02-20 09:00:00 to 2026-02-21 09:00:00", "Longer 2026-02-22 09:00:00 to 2026-02-23 09:00:01",
           "Backwards 2026-02-25 09:00:00 to 2026-02-24 09:00:00", "Open 2026-03-01 11:59:59.5",
           "OpenForADay 2026-03-01 12:00:00", "OpenTomorrow 2026-03-04 12:00:00",
           "Tomorrow 2026-03-05 12:00:00 to 2026-03-06 13:00:00", "- 2026-02-27 09:00:00 to 2026-03-01 21:00:00"});
    EXPECT_THAT(linesOf(removeAbnormalDurations),
                ElementsAre("发现异常记录 - Longer 持续 24.0 小时", "发现异常记录 - 未知应用 持续 60.0 小时",
                            "发现未结束的旧记录 - Open 开始于 24.0 小时前", "发现异常记录 - Tomorrow 持续 25.0 小时",
                            "删除异常记录 - Longer", "删除异常记录 - 未知应用", "删除异常记录 - Open",
                            "删除异常记录 - Tomorrow", "删除了 4 条异常记录"));
    expectStored({"Day 2026-02-20 09:00:00 to 2026-02-21 09:00:00",
                  "Backwards 2026-02-25 09:00:00 to 2026-02-24 09:00:00", "OpenForADay 2026-03-01 12:00:00",
                  "OpenTomorrow 2026-03-04 12:00:00"});
    EXPECT_THAT(linesOf(removeAbnormalDurations), IsEmpty());
}

// --- Future dates -------------------------------------------------------------------------------------------------

TEST_F(DataCleanupPassesTest, WhatStartsLaterThanNowGoes) {
    given({"Now 12:00:00 to 12:10:00", "Tomorrow 2026-03-03 09:00:00", "- 12:00:01 to 11:00:00"});
    EXPECT_THAT(linesOf(removeFutureDates),
                ElementsAre("发现未来日期的记录 - 未知应用 开始时间: 2026-03-02 12:00:01 +0000",
                            "删除未来日期的记录 - 未知应用",
                            "发现未来日期的记录 - Tomorrow 开始时间: 2026-03-03 09:00:00 +0000",
                            "删除未来日期的记录 - Tomorrow", "删除了 2 条未来日期的记录"));
    expectStored({"Now 12:00:00 to 12:10:00"});
    EXPECT_THAT(linesOf(removeFutureDates), IsEmpty());
}

// --- Overlapping pairs --------------------------------------------------------------------------------------------

TEST_F(DataCleanupPassesTest, SmallOverlapsAreCutAndLargeOnesCostTheShorterRecord) {
    given({
        "A 09:00:00 to 09:10:00",
        "B 09:05:00 to 09:30:00",    // 300 s
        "C 09:24:59.5 to 10:00:00",  // 300.5 s: B is shorter
        "D 09:50:00 to 10:25:00.5",  // 600 s, as long as C: the later one goes
        "E 10:25:00.5 to 10:30:00",  // touches
    });
    EXPECT_THAT(linesOf(resolveOverlappingPairs),
                ElementsAre("发现重叠记录 - A 和 B", "调整 A 的结束时间到 2026-03-02 09:05:00 +0000",
                            "发现重叠记录 - B 和 C", "删除较短的记录 - B", "发现重叠记录 - C 和 D",
                            "删除较短的记录 - D", "处理了 2 条重叠记录，修改了 1 条记录"));
    const auto left = expectStored({"A 09:00:00 to 09:05:00", "C 09:24:59.5 to 10:00:00", "E 10:25:00.5 to 10:30:00"});
    EXPECT_EQ(left[0]->updatedAt(), runLoop.now());
    EXPECT_EQ(left[1]->updatedAt(), at("10:00:00"));
    EXPECT_THAT(trash(), UnorderedElementsAre("overlap A", "overlap B", "overlap D"));  // of A what it lost
    EXPECT_THAT(linesOf(resolveOverlappingPairs), IsEmpty());
}

TEST_F(DataCleanupPassesTest, ARecordThatIsToGoStillMeetsItsNextNeighbourAndCountsOnce) {
    given({"Long 09:00:00 to 10:00:00", "Middle 09:10:00 to 09:30:00", "- 09:20:00 to 11:00:00", "Open 10:57:00"});
    EXPECT_THAT(linesOf(resolveOverlappingPairs),
                ElementsAre("发现重叠记录 - Long 和 Middle", "删除较短的记录 - Middle", "发现重叠记录 - Middle 和 未知",
                            "删除较短的记录 - Middle", "发现重叠记录 - 未知 和 Open",
                            "调整 未知 的结束时间到 2026-03-02 10:57:00 +0000",
                            "处理了 1 条重叠记录，修改了 1 条记录"));
    EXPECT_EQ(stored().size(), 3);
}

TEST_F(DataCleanupPassesTest, AnOldOpenRecordSeparatesNobody) {
    given({"OldAndOpen 2026-01-01 09:00:00", "A 09:00:00 to 09:10:00", "B 09:09:00 to 09:30:00"});
    EXPECT_THAT(linesOf(resolveOverlappingPairs, at("2026-02-16 12:00:00")),
                ElementsAre("发现重叠记录 - A 和 B", "调整 A 的结束时间到 2026-03-02 09:09:00 +0000",
                            "处理了 0 条重叠记录，修改了 1 条记录"));
}

// --- Unfinished records -------------------------------------------------------------------------------------------

TEST_F(DataCleanupPassesTest, WhatWasLeftOpenEndsAtItsLastSignOfLife) {
    const struct {
        const char* app;
        const char* start;
        const char* lastSign;
        const char* end;
    } rows[] = {
        {"Friday", "2026-02-27 13:00:00", "2026-02-27 17:20:00", "2026-02-27 17:20:00"},
        {"Now", "11:59:00", "11:59:30", "11:59:30"},
        {"AtOnce", "11:00:00", "11:00:00", "11:00:01"},
        {"Ahead", "10:00:00", "13:00:00", "12:00:00"},
    };
    const auto live = add("Live", "09:00:00");
    for (const auto pass : {endLeftOpenRecords, endActiveRecords}) {
        std::vector<std::shared_ptr<ActivityRecord>> open;
        for (const auto& row : rows) {
            open.push_back(add(row.app, row.start));
            open.back()->updatedAt = at(row.lastSign);
        }
        open[0]->setBillingStatus(BillingStatus::billable);  // without an end nobody knows of how much
        open[0]->updatedAt = at(rows[0].lastSign);
        EXPECT_EQ(linesOf(pass, std::nullopt, live->id()).size(), 5);
        for (std::size_t i = 0; i < std::size(rows); ++i) {
            EXPECT_EQ(open[i]->endTime(), at(rows[i].end)) << rows[i].app;
            EXPECT_EQ(open[i]->updatedAt(), at(rows[i].lastSign)) << "a newer form from the cloud has to win";
        }
        EXPECT_EQ(live->endTime(), std::nullopt);
        EXPECT_THAT(linesOf(pass, std::nullopt, live->id()), IsEmpty());
    }
}

// --- What no pass touches -----------------------------------------------------------------------------------------

/// Something for every pass.
const std::vector<std::string> debris{"Long 2026-02-26 00:00:00 to 2026-02-27 06:00:00",
                                      "Soon 13:00:00 to 13:10:00",
                                      "A 09:00:00 to 09:10:00",
                                      "B 09:09:00 to 09:20:00",
                                      "C 09:12:00 to 09:30:00",
                                      "D 10:00:00 to 10:10:00",
                                      "D 10:10:00 to 10:20:00",
                                      "E 10:40:00 to 10:40:10",
                                      "F 10:40:10 to 10:41:00"};

TEST_F(DataCleanupPassesTest, WhatIsSettledOrBroughtBackStaysAsItIs) {
    const std::function<void(ActivityRecord&)> reasons[] = {
        [](auto& record) { record.billingStatus = "nonBillable"; },
        [](auto& record) { record.cloudKitRecordID = record.id().string(); },
        [this](auto& record) {
            const auto back = std::make_shared<TrashedRecord>();
            back->recordId = record.id();
            back->restoredAt = runLoop.now();
            context().insert(back);
        },
    };
    for (const auto& settle : reasons) {
        given(debris);
        for (const auto& record : context().fetch<ActivityRecord>())
            settle(*record);
        context().save();
        const auto before = stateOf(context());
        for (const auto& pass : backgroundRun)
            EXPECT_FALSE(pass.run({.context = context(), .console = console, .now = runLoop.now()})) << pass.title;
        EXPECT_EQ(stateOf(context()), before);
        removeAll();
    }
}

TEST_F(DataCleanupPassesTest, TheLiveRecordStaysAsItIs) {
    for (std::size_t i = 0; i < debris.size(); ++i) {
        given(debris);
        const auto live = context().fetch<ActivityRecord>()[i];
        const auto before = stateOf(context()).at(live->id());
        for (const auto& pass : backgroundRun)
            pass.run({.context = context(), .console = console, .now = runLoop.now(), .live = live->id()});
        EXPECT_EQ(stateOf(context()).at(live->id()), before) << debris[i];
        removeAll();
    }
}

// --- Adjacent records ---------------------------------------------------------------------------------------------

TEST_F(DataCleanupPassesTest, NeighboursThatAgreeBecomeTheEarlierRecord) {
    const auto earlier = add("Editor", "09:00:00", "09:00:30");
    given({"Editor 09:01:00 to 09:10:00", "Editor 09:10:00 to 09:11:00"});
    EXPECT_THAT(linesOf(mergeAdjacentRecords),
                ElementsAre("发现可合并的相邻记录 - Editor", "  当前记录: 30.0秒, 下一记录: 540.0秒, 间隔: 30.0秒",
                            "合并记录 - Editor 合并后时长 10.0 分钟", "发现可合并的相邻记录 - Editor",
                            "  当前记录: 600.0秒, 下一记录: 60.0秒, 间隔: 0.0秒",
                            "合并记录 - Editor 合并后时长 11.0 分钟", "合并了 2 对相邻记录，删除了 2 条记录"));
    const auto left = expectStored({"Editor 09:00:00 to 09:11:00"});
    EXPECT_EQ(left[0]->id(), earlier->id());
    EXPECT_EQ(left[0]->updatedAt(), runLoop.now());
    EXPECT_THAT(trash(), IsEmpty());  // no minute went
    EXPECT_THAT(linesOf(mergeAdjacentRecords), ElementsAre("没有发现需要合并的相邻记录"));
}

TEST_F(DataCleanupPassesTest, NeighboursThatDifferInAnythingStayApart) {
    const auto alpha = insertProject(context(), "Alpha");
    const std::function<void(ActivityRecord&)> differences[] = {
        [](auto& record) { record.appName = "Other"; },
        [](auto& record) { record.appBundleId = "org.example.other"; },
        [](auto& record) { record.activityType = "url"; },
        [](auto& record) { record.windowTitle = "chapter two"; },
        [](auto& record) { record.documentPath = "/b.txt"; },
        [](auto& record) { record.url = "https://example.org"; },
        [](auto& record) { record.category = "work"; },
        [](auto& record) { record.tags = "urgent"; },
        [&](auto& record) { record.project = alpha; },
        [](auto& record) { record.billingStatus = "billable"; },
        [](auto& record) { record.endTime = std::nullopt; },
    };
    for (const auto& differ : differences) {
        const auto first = add("Editor", "09:00:00", "09:10:00");
        const auto second = add("Editor", "09:10:00", "09:20:00");
        differ(*second);
        context().save();
        EXPECT_EQ(linesOf(mergeAdjacentRecords).size(), 1) << &differ - differences;
        EXPECT_EQ(stored().size(), 2) << &differ - differences;
        context().remove(first);
        context().remove(second);
    }
    given({"Editor 09:00:00 to 09:10:00", "Glance 09:10:00 to 09:10:20", "Editor 09:10:20 to 09:20:00"});
    EXPECT_EQ(linesOf(mergeAdjacentRecords).size(), 1) << "the time between them is another's";
    for (const std::optional<std::string>& bundle : {std::optional<std::string>(""), std::optional<std::string>()}) {
        addWith("10:00:00", "10:10:00", "app", bundle);
        addWith("10:10:00", "10:20:00", "app", bundle);
        EXPECT_EQ(linesOf(mergeAdjacentRecords).size(), 1) << "without an application nobody knows";
    }
}

TEST_F(DataCleanupPassesTest, MergingStaysBehindTheCutOff) {
    const Date cutoff = at("2026-02-16 12:00:00");
    add("Editor", cutoff - 60s, 60s);
    add("Editor", cutoff, 60s);
    EXPECT_THAT(linesOf(mergeAdjacentRecords, cutoff), ElementsAre("没有发现需要合并的相邻记录"));
    EXPECT_EQ(linesOf(mergeAdjacentRecords, cutoff - 60s).size(), 4);
}

// --- Short records ------------------------------------------------------------------------------------------------

TEST_F(DataCleanupPassesTest, ShortRecordsGoInFavourOfTheLongestOfAnyApplication) {
    given({"Long 09:00:00 to 09:01:00", "Short 09:01:00 to 09:01:19.9", "Twenty 09:01:20 to 09:01:40",
           "- 09:01:40 to 09:01:45", "Alone 09:02:00 to 09:02:05"});
    EXPECT_THAT(linesOf(mergeShortRecords),
                ElementsAre("找到 5 条5分钟前的记录", "分成了 2 个2分钟时间窗口",
                            "时间窗口 2026-03-02 09:00:00 +0000 - 2026-03-02 09:02:00 +0000",
                            "  窗口内有 4 条记录，其中 2 条短记录", "  最长记录: Long (60.0秒)",
                            "    删除短记录: Short (19.9秒)", "    删除短记录: 未知 (5.0秒)", "✅ 智能合并完成",
                            "  处理了 1 个时间窗口", "  删除了 2 条短记录", "  节省了约 30.0 秒的记录碎片"));
    expectStored({"Long 09:00:00 to 09:01:00", "Twenty 09:01:20 to 09:01:40", "Alone 09:02:00 to 09:02:05"});
}

TEST_F(DataCleanupPassesTest, OfShortRecordsAloneTheFirstOfTheLongestStays) {
    given({"A 09:00:00 to 09:00:05", "B 09:00:10 to 09:00:19", "C 09:00:20 to 09:00:29",
           "Backwards 09:00:30 to 09:00:25"});
    linesOf(mergeShortRecords);
    expectStored({"B 09:00:10 to 09:00:19"});
}

TEST_F(DataCleanupPassesTest, FragmentsJoinTheirOwnApplicationWhereTheyCan) {
    const auto paid = insertProject(context(), "Alpha");
    given({"A 09:00:00 to 09:01:00", "A 09:01:00 to 09:01:15", "B 09:01:15 to 09:01:25", "C 09:01:25 to 09:01:30",
           "C 09:01:30 to 09:05:00", "D 10:00:00 to 10:01:00", "D 10:01:00 to 10:01:10", "E 10:01:10 to 10:20:00"});
    for (const auto& record : context().fetch<ActivityRecord>()) {
        record->windowTitle = record->id().string();
        if (record->startTime() == at("10:01:00")) record->project = paid;
    }
    context().save();
    EXPECT_THAT(linesOf(mergeShortRecords), IsSupersetOf({"    合并短记录: A (15.0秒)", "    删除短记录: B (10.0秒)",
                                                          "    合并短记录: C (5.0秒)"}));
    expectStored({"A 09:00:00 to 09:01:15", "C 09:01:25 to 09:05:00", "D 10:00:00 to 10:01:00",
                  "D 10:01:00 to 10:01:10", "E 10:01:10 to 10:20:00"});
    EXPECT_THAT(trash(), ElementsAre("fragment B"));
}

TEST_F(DataCleanupPassesTest, NothingOfTheLastFiveMinutesIsTouched) {
    given({"Ended 11:54:00 to 11:54:50", "EndedFourMinutesAgo 11:55:51 to 11:56:00",
           "EndedFiveMinutesAgo 11:54:50 to 11:55:00", "Open 11:54:55"});
    EXPECT_THAT(linesOf(mergeShortRecords),
                ElementsAre("找到 1 条5分钟前的记录", "分成了 1 个2分钟时间窗口", "没有发现需要合并的短时间记录"));
    runLoop.setClock(at("12:00:00.5"));
    EXPECT_EQ(linesOf(mergeShortRecords).back(), "  节省了约 15.0 秒的记录碎片");
}

TEST_F(DataCleanupPassesTest, AWindowWithAShortRecordThatIsItsOnlyLongestLosesNothing) {
    const auto twin = add("A", "09:00:00", "09:00:05");
    const auto other = add("B", "09:00:10", "09:00:15");
    other->id = twin->id();
    context().save();
    EXPECT_EQ(linesOf(mergeShortRecords).back(), "没有发现需要合并的短时间记录");
    EXPECT_EQ(stored().size(), 2);
}

// --- What all passes share ----------------------------------------------------------------------------------------

TEST_F(DataCleanupPassesTest, AmongEqualStartsTheIdentifierDecidesAndNotTheInsertion) {
    std::vector ids{Uuid::random(), Uuid::random()};
    std::ranges::sort(ids);
    add("Inserted first", "09:00:00", "09:10:00")->id = ids[1];
    add("Inserted last", "09:00:00", "09:10:00")->id = ids[0];
    context().save();
    EXPECT_EQ(linesOf(resolveOverlappingPairs)[1], "删除较短的记录 - Inserted first");
}

}  // namespace
}  // namespace quorvane
