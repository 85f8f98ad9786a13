#include "session/TrackingSession.h"

#include "platform/Clock.h"
#include "platform/simulated/InMemoryUserDefaults.h"
#include "platform/simulated/SimulatedDesktop.h"
#include "session/RecordAnnouncer.h"
#include "store/AppSettings.h"
#include "support/Matchers.h"
#include "support/RecordingConsole.h"
#include "support/TemporaryStore.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace quorvane {
namespace {

class TrackingSessionTest : public testing::Test {
protected:
    /// What a program that opens the store afterwards finds.
    std::vector<std::shared_ptr<ActivityRecord>> storedRecords() {
        other_ = store_.anotherContext();
        return other_->fetch<ActivityRecord>({.sort = {ascending(&ActivityRecord::startTime)}});
    }

    TemporaryStore store_;
    platform::SimulatedRunLoop runLoop_{at("09:00:00")};
    platform::ClockOverride clock_{[this] { return runLoop_.now(); }};
    platform::SimulatedDesktop desktop_{runLoop_};
    platform::InMemoryUserDefaults defaults_;
    RecordingConsole console_;
    std::unique_ptr<ModelContext> other_;
};

TEST_F(TrackingSessionTest, RecordsWhatIsInFrontWithItsTitleAndSavesTheOpenRecordAtTheEnd) {
    std::vector<std::string> lines;
    const RecordAnnouncer announcer(store_.context(), [&](const std::string& line) { lines.push_back(line); });
    TrackingSession session(runLoop_, desktop_, store_.context(), defaults_, console_);
    desktop_.typeUntil("10:00:00");
    desktop_.bringToFront("org.example.editor", "Editor");
    desktop_.setWindowTitle("main.cpp");
    session.start();
    runLoop_.playUntil("09:05:00");
    desktop_.bringToFront("org.example.mail", "Mail");
    desktop_.setWindowTitle("Inbox");
    runLoop_.playUntil("09:10:00");
    EXPECT_TRUE(session.stop());
    EXPECT_THAT(storedRecords(),
                ElementsAre(isRecord("Editor", "09:00:00.5", "09:05:00"), isRecord("Mail", "09:05:00", "09:10:00")));
    EXPECT_EQ(storedRecords().front()->windowTitle(), "main.cpp");
    EXPECT_THAT(lines, ElementsAre("09:00:00  opened  Editor — main.cpp", "09:05:00  closed  Editor  0:04:59",
                                   testing::StartsWith("09:05:00  opened  Mail"), "09:10:00  closed  Mail  0:05:00"));
}

TEST_F(TrackingSessionTest, SaysSoWhenTheLastRecordCannotBeSaved) {
    TrackingSession session(runLoop_, desktop_, store_.context(), defaults_, console_);
    desktop_.typeUntil("10:00:00");
    desktop_.bringToFront("org.example.editor", "Editor");
    session.start();
    runLoop_.playUntil("09:05:00");
    Database other({.file = store_.file()});
    other.execute("BEGIN IMMEDIATE");
    EXPECT_FALSE(session.stop());
    other.execute("ROLLBACK");
    EXPECT_THAT(console_.lines(),
                testing::Contains(testing::HasSubstr("TrackingSession: Failed to save at the end: ")));
}

TEST_F(TrackingSessionTest, AUsersPauseHoldsInLaterRunsUntilTheUserEndsIt) {
    const auto isTracking = [&](bool toggles) {
        TrackingSession session(runLoop_, desktop_, store_.context(), defaults_, console_);
        session.start();
        const bool started = session.tracker().isTracking();
        EXPECT_EQ(session.tracker().pausedSince().has_value(), !started);
        if (toggles) session.tracker().toggle();
        runLoop_.playFor(60s);
        session.stop();
        return started;
    };
    EXPECT_TRUE(isTracking(true));
    EXPECT_FALSE(isTracking(false));
    EXPECT_FALSE(isTracking(true));
    EXPECT_TRUE(isTracking(false)) << "the end of a run is no pause";
}

TEST_F(TrackingSessionTest, LeavesNothingRunningBehind) {
    const int before = runLoop_.pendingTimers();
    {
        TrackingSession session(runLoop_, desktop_, store_.context(), defaults_, console_);
        session.start();
        runLoop_.playUntil("09:01:00");
        session.stop();
    }
    runLoop_.runPosted();
    EXPECT_EQ(store_.anotherContext()->count<AppSettings>(), 1U) << "but the first settings";
    EXPECT_EQ(runLoop_.pendingTimers(), before);
    EXPECT_EQ(desktop_.keyTaps(), 0);
    EXPECT_EQ(desktop_.activationObservers(), 0);
}

}  // namespace
}  // namespace quorvane
