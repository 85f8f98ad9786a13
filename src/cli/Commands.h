#pragma once

namespace CLI {
class App;
}

namespace quorvane::cli {

struct CommandContext;

// Each adds one command with its options to the command line. The context must outlive it.
void addDumpCommand(CLI::App& app, CommandContext& context);
void addLoadCommand(CLI::App& app, CommandContext& context);
void addRecordsCommand(CLI::App& app, CommandContext& context);
void addExportCsvCommand(CLI::App& app, CommandContext& context);
void addStatusCommand(CLI::App& app, CommandContext& context);
void addTrackCommand(CLI::App& app, CommandContext& context);
void addDoctorCommand(CLI::App& app, CommandContext& context);
void addSanitizeCommand(CLI::App& app, CommandContext& context);
void addCleanupCommand(CLI::App& app, CommandContext& context);
void addOverlapsCommand(CLI::App& app, CommandContext& context);
void addTrashCommand(CLI::App& app, CommandContext& context);
void addCategoriesCommand(CLI::App& app, CommandContext& context);
void addClassifyCommand(CLI::App& app, CommandContext& context);
void addRulesCommand(CLI::App& app, CommandContext& context);
void addProjectsCommand(CLI::App& app, CommandContext& context);
void addReportCommand(CLI::App& app, CommandContext& context);
void addWeekCommand(CLI::App& app, CommandContext& context);
void addMonthCommand(CLI::App& app, CommandContext& context);
void addStatsCommand(CLI::App& app, CommandContext& context);
void addPraiseCommand(CLI::App& app, CommandContext& context);
void addCardCommand(CLI::App& app, CommandContext& context);
void addTimelineCommand(CLI::App& app, CommandContext& context);
void addAnnotateCommand(CLI::App& app, CommandContext& context);
void addCloudCommand(CLI::App& app, CommandContext& context);
void addBrowserCommand(CLI::App& app, CommandContext& context);
void addDesktopCommand(CLI::App& app, CommandContext& context);
void addSyncCommand(CLI::App& app, CommandContext& context);
void addSharesCommand(CLI::App& app, CommandContext& context);
void addPauseCommand(CLI::App& app, CommandContext& context);
void addStartCommand(CLI::App& app, CommandContext& context);
void addShowCommand(CLI::App& app, CommandContext& context);
void addWorkHoursCommand(CLI::App& app, CommandContext& context);

}  // namespace quorvane::cli
