#include "base/Iso8601.h"
#include "base/TerminalText.h"
#include "cli/Arguments.h"
#include "cli/CommandContext.h"
#include "cli/Commands.h"
#include "cli/Output.h"
#include "cloud/module/CloudModule.h"
#include "platform/Clock.h"

#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <functional>
#include <iostream>
#include <sstream>
#include <unistd.h>

namespace quorvane::cli {
namespace {

/// A closed pipe and a full disk are ordinary failures of a write, and no file that is opened later may take the place
/// of a standard stream that the caller closed: reads from it, writes to it fail as they would have.
void prepareProcess() {
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor)
        if (::fcntl(descriptor, F_GETFD) == -1)
            static_cast<void>(::open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY));
    std::ios::sync_with_stdio(false);
    CloudModule::verifyServersByDefault();
}

int end(ExitStatus status, const std::string& message) {
    if (status == ExitStatus::readerGone) return static_cast<int>(status);  // as `head` does once it has its lines
    const std::string line = "quorvane-cli: " + harmlessLine(message) + "\n";
    std::fwrite(line.data(), 1, line.size(), stderr);
    return static_cast<int>(status);
}

/// What can't be understood, in our own words where the library's would mislead.
std::string usageError(const CLI::App& app, const CLI::ParseError& error) {
    std::string text = error.what();
    std::string chosen;  // "projects "
    const CLI::App* group = &app;
    for (; !group->get_subcommands().empty(); group = group->get_subcommands().front())
        chosen += group->get_subcommands().front()->get_name() + " ";
    const bool hasCommands = !group->get_subcommands([](const CLI::App*) { return true; }).empty();
    const bool lacksCommand = dynamic_cast<const CLI::RequiredError*>(&error) != nullptr ||
                              dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr;
    if (lacksCommand && hasCommands) {
        const auto unknown = app.remaining(true);
        if (unknown.empty())
            text = chosen.empty() ? "a command is required" : chosen + "needs a command";
        else if (unknown.front().starts_with('-'))
            text = "there is no option " + unknown.front();
        else
            text = "there is no command " + chosen + unknown.front();
    }
    return text + " (see quorvane-cli " + chosen + "--help)";
}

void describeCommands(CLI::App& app) {
    for (auto* command : app.get_subcommands({})) {
        command->group("Commands");
        command->footer("--store, --now and --json may stand here, too.");
        describeCommands(*command);
    }
}

void describe(CLI::App& app, CommandContext& context) {
    app.name("quorvane-cli");
    app.get_formatter()->label("SUBCOMMAND", "COMMAND");
    app.description("Quorvane's store from the command line: for scripts, backups and terminals");
    app.require_subcommand(1);
    app.fallthrough();
    app.set_version_flag("--version", "quorvane-cli " QUORVANE_VERSION);
    app.add_option("--store", context.store, "The store file; the application's own if left out")->type_name("FILE");
    addInstantOption(app, "--now", context.now, "Read this instant wherever the clock is read");
    app.add_flag("--json", context.json, "Machine-readable output where a command has both forms");
    for (const auto add :
         {addDumpCommand,      addLoadCommand,   addRecordsCommand,  addExportCsvCommand,  addStatusCommand,
          addTrackCommand,     addDoctorCommand, addSanitizeCommand, addCleanupCommand,    addOverlapsCommand,
          addProjectsCommand,  addReportCommand, addWeekCommand,     addMonthCommand,      addTimelineCommand,
          addAnnotateCommand,  addStatsCommand,  addRulesCommand,    addCategoriesCommand, addClassifyCommand,
          addPraiseCommand,    addCardCommand,   addBrowserCommand,  addDesktopCommand,    addSyncCommand,
          addSharesCommand,    addCloudCommand,  addPauseCommand,    addStartCommand,      addShowCommand,
          addWorkHoursCommand, addTrashCommand})
        add(app, context);
    describeCommands(app);
}

void perform(const CommandContext& context) {
    std::optional<platform::ClockOverride> clock;
    if (context.now) clock.emplace([now = *context.now] { return now; });
    context.command();
}

void print(const std::string& text) {
    Output output;
    output.write(text);
    output.finish();
}

/// What the line asks for. Words that nobody knows are refused beside `--help`, too.
std::function<void()> read(CLI::App& app, CommandContext& context, int argc, char** argv) {
    try {
        app.parse(argc, argv);
        return [&context] { perform(context); };
    } catch (const CLI::Success& asked) {
        if (const auto unknown = app.remaining(true); !unknown.empty()) throw CLI::ExtrasError(app.get_name(), unknown);
        std::ostringstream text;  // of help or version
        app.exit(asked, text, text);
        return [text = text.str()] { print(text); };
    }
}

int run(const std::function<void()>& work) {
    try {
        work();
        return static_cast<int>(ExitStatus::done);
    } catch (const CommandError& error) {
        return end(error.status(), error.what());
    } catch (const std::exception& error) {
        return end(ExitStatus::failed, error.what());
    }
}

int main(int argc, char** argv) {
    prepareProcess();
    CLI::App app;
    CommandContext context;
    describe(app, context);
    std::function<void()> work;
    try {
        work = read(app, context, argc, argv);
    } catch (const CLI::ParseError& error) {
        return end(ExitStatus::wrongUsage, usageError(app, error));
    }
    return run(work);
}

}  // namespace
}  // namespace quorvane::cli

int main(int argc, char** argv) {
    return quorvane::cli::main(argc, argv);
}
