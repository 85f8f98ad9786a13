#include "store/Absence.h"
#include "scenarios/SimulatedDay.h"
#include "tracking/PresenceNote.h"

namespace quorvane {
namespace {

class AbsenceTest : public SimulatedDayTest {
protected:
    void SetUp() override {
        desktop.typeUntil("09:05:00");
        startTrackingAt("09:00:00");
    }
    /// As another program finds them: "09:05:00 to 09:20:00".
    std::vector<std::string> absences() {
        std::vector<std::string> found;
        for (const auto& absence : store.anotherContext()->fetch<Absence>({.sort = {ascending(&Absence::startTime)}}))
            found.push_back(timeText(absence->startTime()) + " to " + timeText(absence->endTime()));
        return found;
    }
    [[nodiscard]] std::string awaySince() {
        const auto other = store.anotherContext();
        EXPECT_EQ(PresenceNote::awaySince(*other), tracker->awaySince());
        return tracker->awaySince() ? timeText(*tracker->awaySince()) : "here";
    }
};

TEST_F(AbsenceTest, IsToldWhileItLastsAndStoredWithTheReturn) {
    int changes = 0;
    const auto changed = tracker->presenceChanged.subscribe([&] { ++changes; });
    playUntil("09:09:00");
    EXPECT_EQ(awaySince(), "here");
    playUntil("09:20:00");
    EXPECT_EQ(awaySince(), "09:05:00");
    EXPECT_EQ(changes, 1);
    desktop.pressKey();
    EXPECT_EQ(awaySince(), "here");
    EXPECT_EQ(changes, 2);
    EXPECT_THAT(absences(), ElementsAre("09:05:00 to 09:20:00"));
    ASSERT_TRUE(tracker->lastAbsence());
    EXPECT_EQ(timeText(tracker->lastAbsence()->start), "09:05:00");
}

TEST_F(AbsenceTest, ALockIsOneAndAShortOneIsNotAskedAbout) {
    playUntil("09:03:59.5");
    desktop.pressKey();  // within two seconds of the key before, so that the monitors tell nobody
    runLoop.playFor(0.25s);
    desktop.pressKey();
    desktop.lock();
    EXPECT_EQ(awaySince(), "09:03:59.75") << "where the record ends";
    EXPECT_EQ(storedRecords().front()->endTime(), tracker->awaySince());
    playUntil("09:07:00");
    desktop.pressKey();  // the password
    EXPECT_EQ(awaySince(), "09:03:59.75");
    desktop.unlock();
    EXPECT_THAT(absences(), ElementsAre("09:03:59.75 to 09:07:00"));
    EXPECT_FALSE(tracker->lastAbsence()) << "it was below the threshold";
    desktop.lock();
    runLoop.playFor(30s);
    desktop.unlock();
    EXPECT_EQ(absences().size(), 1U) << "not worth a row";
}

TEST_F(AbsenceTest, AWindowThatComesToTheFrontByItselfDoesNotEndIt) {
    playUntil("09:20:00");
    desktop.bringToFront("org.example.mail", "Mail");
    playUntil("09:30:00");
    EXPECT_EQ(awaySince(), "09:05:00");
    desktop.pressKey();
    EXPECT_THAT(absences(), ElementsAre("09:05:00 to 09:30:00"));
}

TEST_F(AbsenceTest, TimeThatNobodyWatchedIsNone) {
    playUntil("09:20:00");
    tracker->stop();
    playUntil("11:00:00");
    tracker->start();
    playUntil("11:10:00");
    EXPECT_EQ(awaySince(), "11:00:00") << "and not since the last input";
    EXPECT_THAT(absences(), ElementsAre("09:05:00 to 09:20:00"));
    runLoop.setClock(runLoop.timeOfDay("12:00:00"));
    desktop.pressKey();
    EXPECT_EQ(absences().size(), 1U) << "nobody can tell which minutes that were";
    EXPECT_FALSE(tracker->lastAbsence());
}

TEST_F(AbsenceTest, AnAbsenceEndsWithTheWorkHours) {
    saveSettings([](AppSettings& settings) {
        settings.onlyTrackWorkHours = true;
        settings.workEndHour = 9;
        settings.workEndMinute = 14;
    });
    playUntil("09:30:00");
    EXPECT_EQ(awaySince(), "here");
    EXPECT_THAT(absences(), ElementsAre("09:05:00 to 09:15:10"));
}

}  // namespace
}  // namespace quorvane
