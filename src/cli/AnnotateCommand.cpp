#include "base/Calendar.h"
#include "cli/Arguments.h"
#include "cli/CommandContext.h"
#include "cli/Commands.h"
#include "cli/ObjectById.h"
#include "store/ModelContext.h"
#include "timeline/AnnotationAssignment.h"

#include <CLI/CLI.hpp>

namespace quorvane::cli {
namespace {

struct AnnotateOptions {
    Uuid project;
    std::optional<CivilDate> day;
    double fromHour = 0;
    double toHour = 0;
};

/// Keeps the one line that the assignment prints.
class LastLine final : public ConsoleSink {
public:
    void write(std::string_view line) override { line_ = line; }
    [[nodiscard]] const std::string& text() const { return line_; }

private:
    std::string line_;
};

void annotate(const CommandContext& context, const AnnotateOptions& options) {
    if (options.fromHour > 24 || options.toHour > 24 || options.fromHour >= options.toHour)
        throw CommandError(ExitStatus::wrongUsage,
                           "--from-hour and --to-hour must lie between 0 and 24, the first below the second");
    ModelContext store(context.open(StoreAccess::change));
    const auto project = objectById<Project>(store, options.project);
    LastLine line;
    const auto range = chosenRange(DayTimelineGeometry::magnetizedRange(options.fromHour, options.toHour),
                                   Calendar::current().date(*options.day));
    const auto outcome = createAnnotation(store, project, range, line);
    if (outcome != AssignmentOutcome::saved) throw CommandError(ExitStatus::failed, line.text());
    StreamConsole(stderr).write(line.text());
}

}  // namespace

void addAnnotateCommand(CLI::App& app, CommandContext& context) {
    auto* command = app.add_subcommand("annotate", "Give a part of a day to a project, as the day chart does");
    const auto options = std::make_shared<AnnotateOptions>();
    addTextOption(*command, "--project", "UUID", "The project", [options](const std::string& text) {
        options->project = readUuid("--project", text);
    })->required();
    addDateOption(*command, "--date", options->day, "The day")->required();
    addTextOption(*command, "--from-hour", "HOUR", "Where it begins, from 0", [options](const std::string& text) {
        options->fromHour = readNonNegative("--from-hour", text);
    })->required();
    addTextOption(*command, "--to-hour", "HOUR", "Where it ends, at most 24", [options](const std::string& text) {
        options->toHour = readNonNegative("--to-hour", text);
    })->required();
    command->callback([&context, options] { context.command = [&context, options] { annotate(context, *options); }; });
}

}  // namespace quorvane::cli
