#include "cli/CliFixture.h"

#include "platform/linux/ProcessLock.h"
#include "session/TrackerLock.h"

#include <csignal>

namespace quorvane {
namespace {

/// Without a display the tracker runs and has nothing to record.
using TrackCommandTest = CliTest;

/// What the tracker prints once it runs and hears signals.
constexpr const char* started = "ActivityTracker: Starting tracking with modelContext: true\n";

TEST_F(TrackCommandTest, MakesTheStoreAndStopsByItself) {
    const auto result = run({"track", "--for", "0.2"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.err, HasSubstr("The front window can't be seen"));
    EXPECT_TRUE(std::filesystem::exists(store()));
}

TEST_F(TrackCommandTest, EndsInGoodOrderOnSignals) {
    for (const int number : {SIGINT, SIGTERM}) {
        SCOPED_TRACE(number);
        ProgramRun tracker(QUORVANE_CLI, {"--store", store().string(), "track"}, setting_);
        ASSERT_TRUE(tracker.hasWritten(started));
        EXPECT_TRUE(platform::ProcessLock::isHeld(trackerLockFile(store())));
        tracker.sendSignal(number);
        EXPECT_EQ(tracker.wait().status, 0);
        EXPECT_FALSE(platform::ProcessLock::isHeld(trackerLockFile(store())));
    }
}

TEST_F(TrackCommandTest, WhoAsksForTheApplicationHearsWhoTracksInstead) {
    EXPECT_THAT(runBare({"pause"}).err, isRefusal(HasSubstr("there is no session bus to reach Quorvane")));
    ProgramRun tracker(QUORVANE_CLI, {"track"}, setting_);
    ASSERT_TRUE(tracker.hasWritten(started));
    const auto result = runBare({"start"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, isRefusal(AllOf(HasSubstr("quorvane-cli track (process "), HasSubstr("can't be reached"))));
}

TEST_F(TrackCommandTest, RefusesAStoreIntoWhichSomebodyTracksAndAClockOfItsOwn) {
    load("");
    auto lock = platform::ProcessLock::tryAcquire(trackerLockFile(store()), "quorvane");
    ASSERT_TRUE(std::holds_alternative<platform::ProcessLock>(lock));
    expectRefusal({"track", "--for", "1"}, 1, "tracks already");
    expectRefusal({"--now", "2026-03-04T09:00:00Z", "track"}, 2, "--now");
}

TEST_F(TrackCommandTest, TheApplicationHoldsItsStoreAgainstASecondOneAndAgainstTheCommand) {
    setting_.environment["QT_QPA_PLATFORM"] = "offscreen";
    ProgramRun application(QUORVANE, {}, setting_);
    ASSERT_TRUE(application.hasWritten(started));
    const auto second = ProgramRun(QUORVANE, {}, setting_).wait();
    EXPECT_EQ(second.status, 1);
    EXPECT_THAT(second.err, MatchesRegex("quorvane: quorvane \\(process [0-9]+\\) tracks already\n"));
    EXPECT_THAT(runBare({"track"}).err, isRefusal(HasSubstr("tracks already")));
    EXPECT_EQ(runBare({"status"}).status, 0);
    application.sendSignal(SIGTERM);
    EXPECT_EQ(application.wait().status, 0);
}

}  // namespace
}  // namespace quorvane
