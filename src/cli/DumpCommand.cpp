#include "cli/Arguments.h"
#include "cli/CommandContext.h"
#include "cli/Commands.h"
#include "cli/Output.h"
#include "cli/Progress.h"
#include "store/StoreDump.h"

#include <CLI/CLI.hpp>

namespace quorvane::cli {
namespace {

void dump(const CommandContext& context, const std::optional<std::string>& file) {
    const auto database = context.open(StoreAccess::read);
    Output output(file, context);
    Progress progress("rows");
    StoreDump::write(*database, [&](std::string_view piece, std::size_t rows) {
        output.write(piece);
        progress.show(rows);
    });
    output.finish();
}

}  // namespace

void addDumpCommand(CLI::App& app, CommandContext& context) {
    auto* command = app.add_subcommand("dump", "Write the whole store as JSON Lines");
    const auto file = std::make_shared<std::optional<std::string>>();
    addOutputOption(*command, *file);
    command->callback([&context, file] { context.command = [&context, file] { dump(context, *file); }; });
}

}  // namespace quorvane::cli
