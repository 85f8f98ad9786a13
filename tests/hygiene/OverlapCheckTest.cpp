#include "store/OverlapDetectionService.h"

#include "hygiene/HygieneTest.h"
#include "support/Matchers.h"

#include <gmock/gmock.h>

namespace quorvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::StartsWith;

/// A check that reads two records in a turn, and what happens between its turns.
class OverlapCheckTest : public HygieneTest {
protected:
    OverlapCheckTest() {
        add("A", "09:00:00", "09:10:00");
        add("B", "09:09:00", "09:30:00");
        add("C", "10:00:00", "10:10:00");
        add("D", "10:09:00", "10:30:00");
        add("E", "11:00:00", "11:10:00");
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
    EXPECT_THAT(newLines(), ElementsAre("OverlapDetectionService: 开始检测重叠记录..."));
    int turns = 0;
    runLoop.post([&] { ++turns; });
    runLoop.post([&] {
        EXPECT_THAT(newLines(), IsEmpty());
        ++turns;
    });
    runLoop.runPosted();
    EXPECT_EQ(turns, 2);
    EXPECT_THAT(newLines(), ElementsAre("OverlapDetectionService: 发现 2 个重叠组",
                                        "OverlapDetectionService: 处理重叠组，包含 2 条记录",
                                        "OverlapDetectionService: 调整 A 结束时间到 2026-03-02 09:09:00 +0000",
                                        "OverlapDetectionService: 处理重叠组，包含 2 条记录",
                                        "OverlapDetectionService: 调整 C 结束时间到 2026-03-02 10:09:00 +0000",
                                        "OverlapDetectionService: 重叠处理完成"));
}

TEST_F(OverlapCheckTest, WhatBeginsDuringTheCheckIsLeftToTheNextOne) {
    begin();
    add("New", "11:09:00");  // of the time that is being recorded, a part of a minute
    runLoop.setClock(at("11:09:10"));
    runLoop.runPosted();
    EXPECT_EQ(newLines().size(), 7);
    EXPECT_THAT(stored(), IsSupersetOf({isRecord("E", "11:00:00", "11:10:00"), isRecord("New", "11:09:00")}));
    begin();
    runLoop.runPosted();
    EXPECT_THAT(newLines(), testing::Contains("OverlapDetectionService: 删除短记录 - New"));
}

TEST_F(OverlapCheckTest, WhatChangesDuringTheCheckCountsAsItIsAtTheEnd) {
    begin();
    runLoop.runPosted();
    newLines();
    add("F", "12:00:00", "12:10:00");
    add("G", "12:09:00", "12:30:00");
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
    EXPECT_THAT(newLines(),
                ElementsAre("OverlapDetectionService: 开始检测重叠记录...", "OverlapDetectionService: 发现 1 个重叠组",
                            "OverlapDetectionService: 处理重叠组，包含 2 条记录",
                            "OverlapDetectionService: 调整 F 结束时间到 2026-03-02 12:09:00 +0000",
                            "OverlapDetectionService: 重叠处理完成"));
}

TEST_F(OverlapCheckTest, TheCheckEndsQuietlyWithItsContext) {
    begin();
    store.close();
    runLoop.runPosted();
    EXPECT_THAT(newLines(), ElementsAre("OverlapDetectionService: 开始检测重叠记录..."));
}

TEST_F(OverlapCheckTest, AStoreThatBreaksDuringTheCheckEndsIt) {
    begin();
    hideRecords();
    runLoop.runPosted();
    EXPECT_THAT(newLines(), ElementsAre("OverlapDetectionService: 开始检测重叠记录...",
                                        StartsWith("OverlapDetectionService: 检测重叠失败: ")));
}

}  // namespace
}  // namespace quorvane
