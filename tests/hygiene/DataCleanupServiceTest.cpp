#include "store/DataCleanupService.h"

#include "hygiene/HygieneTest.h"
#include "store/RecordTrash.h"
#include "support/Matchers.h"

#include <optional>

namespace quorvane {
namespace {

class DataCleanupServiceTest : public HygieneTest {
protected:
    DataCleanupServiceTest() : HygieneTest("DataCleanupService") {}

    std::optional<DataCleanupService> service{std::in_place, context(), runLoop, console};
};

TEST_F(DataCleanupServiceTest, ABackgroundRunHasSixPassesInALaterTurn) {
    service->performBackgroundCleanup();
    EXPECT_TRUE(service->isCleanupRunning());
    EXPECT_THAT(newLines(), IsEmpty());
    runLoop.runPosted();
    EXPECT_FALSE(service->isCleanupRunning());
    EXPECT_THAT(newLines(),
                ElementsAre("开始后台数据清理...", "检查未结束的记录...", "检查异常时间记录...",
                            "检查未来日期的记录...", "检查重叠记录...", "检查相邻的相同应用记录...",
                            "没有发现需要合并的相邻记录", "开始智能合并短时间记录...", "找到 0 条5分钟前的记录",
                            "分成了 0 个2分钟时间窗口", "没有发现需要合并的短时间记录", "数据清理完成"));
}

TEST_F(DataCleanupServiceTest, AManualRunHasFivePassesAtOnce) {
    service->performSynchronousCleanup();
    EXPECT_FALSE(service->isCleanupRunning());
    EXPECT_THAT(newLines(), ElementsAre("开始同步数据清理...", "检查未结束的记录...", "检查异常时间记录...",
                                        "检查未来日期的记录...", "检查重叠记录...", "检查相邻的相同应用记录...",
                                        "没有发现需要合并的相邻记录", "同步数据清理完成"));
}

TEST_F(DataCleanupServiceTest, ATriggerDuringARunOnlySaysSo) {
    service->performBackgroundCleanup();
    service->performBackgroundCleanup();
    service->performSynchronousCleanup();
    EXPECT_THAT(newLines(), ElementsAre("已有清理任务运行中，跳过本次触发", "已有清理任务运行中，跳过同步清理"));
    add("Open", "11:59:00");
    service->endAllActiveRecords();  // asks nobody
    EXPECT_THAT(newLines(), ElementsAre("结束所有活跃记录...", "结束活跃记录 - Open", "结束了 1 条活跃记录"));
    runLoop.runPosted();
    EXPECT_EQ(newLines().size(), 12);
    service->performBackgroundCleanup();
    runLoop.runPosted();
    EXPECT_EQ(newLines().size(), 12);
}

TEST_F(DataCleanupServiceTest, AManualRunThatIsUnderWayRefusesToBeginAgain) {
    given({"Longer 2026-02-27 09:00:00 to 2026-03-01 09:00:00"});
    const auto again =
        context().didChange.subscribe([&](const EntityChange&) { service->performSynchronousCleanup(); });
    service->performSynchronousCleanup();
    EXPECT_THAT(newLines(), Contains("已有清理任务运行中，跳过同步清理").Times(2));
}

TEST_F(DataCleanupServiceTest, AContextThatIsGoneLeavesNothingToDo) {
    service->performBackgroundCleanup();
    store.close();
    runLoop.runPosted();
    service->endAllActiveRecords();
    EXPECT_THAT(newLines(), ElementsAre("开始后台数据清理...", "数据清理完成"));
    EXPECT_FALSE(service->isCleanupRunning());
}

TEST_F(DataCleanupServiceTest, ABackgroundRunLooksBackFourteenDays) {
    const Date cutoff = runLoop.now() - 1209600s;
    add("JustBefore", cutoff - 1s, 25h);
    add("JustThen", cutoff, 25h);
    add("OldAndOpen", "2026-01-01 09:00:00");
    service->performBackgroundCleanup();
    runLoop.runPosted();
    expectStored({"OldAndOpen 2026-01-01 09:00:00 to 2026-01-01 09:00:01",
                  "JustBefore 2026-02-16 11:59:59 to 2026-02-17 12:59:59"});
    service->performSynchronousCleanup();
    EXPECT_EQ(stored().size(), 1);
}

TEST_F(DataCleanupServiceTest, APassThatCannotReadSaysSoAndTheNextOneRuns) {
    hideRecords();
    service->performBackgroundCleanup();
    runLoop.runPosted();
    service->endAllActiveRecords();
    EXPECT_THAT(newLines(),
                ElementsAre("开始后台数据清理...", "检查未结束的记录...", StartsWith("处理未结束记录失败: "),
                            "检查异常时间记录...", StartsWith("清理异常时间记录失败: "), "检查未来日期的记录...",
                            StartsWith("清理未来日期记录失败: "), "检查重叠记录...", StartsWith("清理重叠记录失败: "),
                            "检查相邻的相同应用记录...", StartsWith("合并相邻记录失败: "), "开始智能合并短时间记录...",
                            StartsWith("智能合并短时间记录失败: "), "数据清理完成", "结束所有活跃记录...",
                            StartsWith("结束活跃记录失败: ")));
    EXPECT_FALSE(service->isCleanupRunning());
}

TEST_F(DataCleanupServiceTest, WhatAFailedSaveLeftBehindGoesWithTheNextOne) {
    given({"Longer 2026-02-27 09:00:00 to 2026-03-01 09:00:00", "Future 13:00:00 to 13:10:00"});
    refuse("DELETE");
    service->performSynchronousCleanup();
    // Until then every save carries the deletion, and so the later pass fails as well.
    EXPECT_THAT(newLines(), IsSupersetOf({StartsWith("清理异常时间记录失败: "), StartsWith("清理未来日期记录失败: ")}));
    expectStored({"Longer 2026-02-27 09:00:00 to 2026-03-01 09:00:00", "Future 13:00:00 to 13:10:00"});
    const auto inTrash = [&] { return RecordTrash::content(*store.anotherContext()).size(); };
    EXPECT_EQ(inTrash(), 0);
    allow("DELETE");
    add("Other", "11:59:00", "11:59:30");
    expectStored({"Other 11:59:00 to 11:59:30"});
    EXPECT_EQ(inTrash(), 2);
}

TEST_F(DataCleanupServiceTest, TheTrashKeepsThirtyDaysAndGivesBackWhatWasTaken) {
    const auto longer = add("Longer", "2026-02-27 09:00:00", "2026-03-01 09:00:00");
    const Uuid id = longer->id();
    longer->project = insertProject(context(), "Alpha");
    longer->windowTitle = "it's \"so\"\n";
    longer->tags = "a,b";
    given({"Soon 13:00:00 to 13:10:00"});
    service->performSynchronousCleanup();
    expectStored({});
    const auto back = RecordTrash::restore(context(), id, runLoop.now());
    context().save();
    for (const auto& attribute : ActivityRecord::description().attributes)
        EXPECT_EQ(compare(attribute.get(*back), attribute.get(*longer)), 0) << attribute.name;
    EXPECT_THROW(RecordTrash::restore(context(), id, runLoop.now()), RecordTrash::Error);
    const auto left = [&](Date now) {
        runLoop.setClock(now);
        service->performBackgroundCleanup();
        runLoop.runPosted();
        return RecordTrash::content(context()).size();
    };
    const Date then = runLoop.now();
    EXPECT_EQ(left(then + 30 * 24h), 1);
    EXPECT_EQ(left(then + 30 * 24h + 1s), 0);
    EXPECT_EQ(stored().size(), 1) << "what is back stays";
}

TEST_F(DataCleanupServiceTest, FromAnotherThreadThePassesMoveToTheMainOne) {
    add("Longer", "2026-02-27 09:00:00", "2026-03-01 09:00:00");
    const auto open = add("Open", "11:59:00");
    runLoop.background([&] {
        service->endAllActiveRecords();
        service->performSynchronousCleanup();
        EXPECT_THAT(newLines(), ElementsAre("开始同步数据清理...", "同步数据清理完成"));
    });
    runLoop.runPosted();
    EXPECT_THAT(newLines(), Contains("删除了 1 条异常记录"));
    EXPECT_EQ(open->endTime(), at("11:59:01"));
}

TEST_F(DataCleanupServiceTest, WhatWaitsForItsTurnGoesWithTheService) {
    add("Longer", "2026-02-28 09:00:00", "2026-03-01 10:00:00");
    const auto open = add("Open", "11:59:00");
    runLoop.background([&] {
        service->endAllActiveRecords();
        service.reset();
    });
    service->performBackgroundCleanup();
    runLoop.runPosted();
    EXPECT_THAT(newLines(), ElementsAre("deinit - 清理资源"));
    EXPECT_EQ(stored().size(), 2);
    EXPECT_EQ(open->endTime(), std::nullopt);
}

}  // namespace
}  // namespace quorvane
