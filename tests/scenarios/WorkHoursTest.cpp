#include "scenarios/SimulatedDay.h"

namespace quorvane {
namespace {

class WorkHoursTest : public SimulatedDayTest {
protected:
    void SetUp() override {
        saveSettings([](AppSettings& settings) {
            settings.onlyTrackWorkHours = true;
            settings.workDays = "3";  // Wednesday where weeks begin on Sunday
            settings.workEndHour = 17;
        });
    }
};

TEST_F(WorkHoursTest, TheClosingMinuteIsInsideAndTheRecordEndsWithTheFirstTickThatLearnsOfTheEnd) {
    playUntil("16:59:00");
    desktop.typeUntil("18:00:00");
    startTrackingAt("16:59:00");
    playUntil("17:03:50");
    EXPECT_THAT(records(), ElementsAre("Editor 16:59:00.5"));  // the answer of 16:59 is good for 300 s
    forgetLines();
    playUntil("17:04:10");
    EXPECT_THAT(trackerLines(), ElementsAre("执行定期数据清理和合并...", "⏰ 当前时间不在工作时间内，停止记录",
                                            "Finalized record for Editor duration: 309.5s"));
    EXPECT_THAT(records(), ElementsAre("Editor 16:59:00.5 to 17:04:10"));
    playUntil("17:04:20");
    EXPECT_THAT(newLines(), ElementsAre("⏰ 当前时间不在工作时间内，停止记录", "  当前时间: 17:04, 星期4",
                                        "  💡 提示: 如需24小时记录，请在设置中关闭'仅追踪工作时间'",
                                        "No currentRecord to finalize"));
}

TEST_F(WorkHoursTest, OpeningTimeIsNoticedAsLateAndNeverBackDated) {
    desktop.typeUntil("10:00:00");
    startTrackingAt("08:58:00");
    playUntil("09:02:50");
    EXPECT_THAT(records(), IsEmpty());
    playUntil("09:03:10");
    EXPECT_THAT(records(), ElementsAre("Editor 09:03:10"));
}

TEST_F(WorkHoursTest, AnAnswerOfBeforeMidnightDoesNotOutliveTheDay) {
    store.context().fetch<AppSettings>().front()->workEndHour = 23;
    store.context().fetch<AppSettings>().front()->workEndMinute = 59;
    store.context().save();
    playUntil("23:58:00");
    desktop.typeUntil(runLoop.now() + 10min);
    startTrackingAt("23:58:00");
    runLoop.playFor(2min);
    EXPECT_THAT(records(), ElementsAre("Editor 23:58:00.5 to 00:00:00"));
}

}  // namespace
}  // namespace quorvane
