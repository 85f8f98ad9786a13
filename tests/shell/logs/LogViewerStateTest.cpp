#include "shell/state/LogViewerState.h"

#include "shell/logs/LogScene.h"
#include "shell/state/DiagnosticReportExport.h"
#include "support/Matching.h"
#include "support/TemporaryFolder.h"

#include <fstream>
#include <sstream>

namespace quorvane {
namespace {

class LogViewerStateTest : public testing::Test {
protected:
    std::string shown() { return LogViewerState::messages(state_.displayedLogs()); }

    LogScene scene_;
    AppLogger& logger_ = scene_.logger;
    LogViewerState state_{logger_, scene_.localization};
};

TEST_F(LogViewerStateTest, LevelAndSearchNarrowTheEntriesTogetherAndTheCaptionCountsThem) {
    logger_.addLogEntry("saved", LogLevel::info, "Settings");
    logger_.addLogEntry("late", LogLevel::warning, "Settings");
    int changes = 0;
    const auto changed = state_.entriesChanged.subscribe([&] { ++changes; });
    EXPECT_FALSE(state_.isNarrowed(3));
    state_.setSearchText("SETTINGS");
    EXPECT_EQ(shown(), "saved\nlate");
    state_.setSelectedLevel(LogLevel::warning);
    EXPECT_EQ(shown(), "late");
    EXPECT_EQ(state_.statusCaption(1), "1 of 3 entries");
    EXPECT_TRUE(state_.isNarrowed(1));
    state_.setSelectedLevel(LogLevel::warning);
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(LogViewerState::formattedLogs(state_.displayedLogs()),
              "[2026-03-02 09:00:00.000] [WARNING] [Settings] late");
}

TEST_F(LogViewerStateTest, AReportHoldsWhatWasThereWhenItWasTakenAndTheLogSaysHowItWasSaved) {
    const TemporaryFolder folder;
    const DiagnosticReportExport taken(logger_, scene_.localization, "LogViewer");
    logger_.addLogEntry("later", LogLevel::info, "Settings");
    EXPECT_EQ(taken.fileName(), "Quorvane_Diagnostic_2026-03-02_09-00-00.txt");
    taken.save(folder / "report.txt");
    std::ostringstream content;
    content << std::ifstream(folder / "report.txt").rdbuf();
    EXPECT_EQ(content.str(), taken.report());
    EXPECT_THAT(content.str(), Not(HasSubstr("later")));
    taken.save(folder / "missing" / "report.txt");
    scene_.runLoop.runPosted();
    const auto entries = logger_.recentLogs(2);
    EXPECT_EQ(entries[0].message, "The diagnostic report was saved.");
    EXPECT_EQ(entries[0].module, "LogViewer");
    EXPECT_EQ(entries[1].level, LogLevel::error);
}

}  // namespace
}  // namespace quorvane
