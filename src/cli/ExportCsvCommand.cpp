#include "base/Calendar.h"
#include "billing/CSVExporter.h"
#include "cli/Arguments.h"
#include "cli/CommandContext.h"
#include "cli/Commands.h"
#include "cli/Output.h"
#include "cli/Progress.h"
#include "platform/Clock.h"
#include "store/ModelContext.h"

#include <CLI/CLI.hpp>

namespace quorvane::cli {
namespace {

constexpr int defaultDays = 7;

struct ExportOptions {
    std::optional<Date> from;
    std::optional<Date> to;
    std::unordered_set<Uuid> projects;
    std::optional<std::string> file;
};

CSVExporter::Selection selectionOf(const ExportOptions& options) {
    const Date now = platform::currentDate();
    return {.start = options.from ? *options.from : Calendar::current().addingDays(-defaultDays, now),
            .end = options.to.value_or(now),
            .projects = options.projects};
}

void exportCsv(const CommandContext& context, const ExportOptions& options) {
    ModelContext store(context.open(StoreAccess::read));
    Output output(options.file, context);
    Progress progress("records");
    CSVExporter::writeCSV(store, selectionOf(options), [&](std::string_view piece, std::size_t records) {
        output.write(piece);
        progress.show(records);
    });
    output.finish();
}

}  // namespace

void addExportCsvCommand(CLI::App& app, CommandContext& context) {
    auto* command = app.add_subcommand("export-csv", "Write records as the export screen does");
    const auto options = std::make_shared<ExportOptions>();
    addInstantOption(*command, "--from", options->from, "Start of the earliest record; seven days ago if left out");
    addInstantOption(*command, "--to", options->to, "Start of the latest record; now if left out");
    command
        ->add_option_function<std::vector<std::string>>(
            "--project",
            [options](const std::vector<std::string>& texts) {
                for (const std::string& text : texts)
                    options->projects.insert(readUuid("--project", text));
            },
            "Only records with this project; may be repeated")
        ->type_name("UUID")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    addOutputOption(*command, options->file);
    command->callback([&context, options] { context.command = [&context, options] { exportCsv(context, *options); }; });
}

}  // namespace quorvane::cli
