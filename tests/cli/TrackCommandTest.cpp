#include "cli/CliFixture.h"

#include "platform/linux/process/ProcessLock.h"
#include "session/TrackerLock.h"

#include <csignal>

namespace quorvane {
namespace {

using TrackCommandTest = CliTest;

/// What the tracker prints once it runs and hears signals.
constexpr const char* started = "ActivityTracker: Starting tracking with modelContext: true\n";

TEST_F(TrackCommandTest, EndsWhereItCanNotSeeAnythingAndSaysWhatDoctorSays) {
    expectRefusal({"track", "--for", "60"}, 1,
                  "nothing can be seen: no display: DISPLAY is not set, and no Wayland compositor answers. "
                  "Start it from a terminal inside the desktop session.");
}

TEST_F(TrackCommandTest, WhoAsksForTheApplicationHearsWhoTracksInstead) {
    EXPECT_THAT(runBare({"pause"}).err, isRefusal(HasSubstr("there is no session bus to reach Quorvane")));
    const auto own = folder_ / ".local/share/quorvane/quorvane.sqlite";
    std::filesystem::create_directories(own.parent_path());
    const auto lock = platform::ProcessLock::tryAcquire(trackerLockFile(own), "quorvane-cli track");
    EXPECT_THAT(runBare({"start"}),
                isRefused(1, AllOf(HasSubstr("quorvane-cli track (process "), HasSubstr("can't be reached"))));
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
    setting_.environment["QUORVANE_CONSOLE"] = "1";
    ProgramRun application(QUORVANE, {}, setting_);
    ASSERT_TRUE(application.hasWritten(started));
    const auto second = ProgramRun(QUORVANE, {}, setting_).wait();
    EXPECT_EQ(second.status, 1);
    EXPECT_THAT(second.err, MatchesRegex("quorvane: quorvane \\(process [0-9]+\\) tracks already\n"));
    EXPECT_THAT(runBare({"track"}).err, isRefusal(HasSubstr("tracks already")));
    EXPECT_THAT(runBare({"status"}).out, HasSubstr("Can see:      nothing: no display"));
    application.sendSignal(SIGTERM);
    EXPECT_EQ(application.wait().status, 0);
}

}  // namespace
}  // namespace quorvane
