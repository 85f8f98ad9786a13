#include "cli/Arguments.h"
#include "cli/CommandContext.h"
#include "cli/Commands.h"
#include "cli/Output.h"
#include "platform/Clock.h"
#include "store/AppSettings.h"
#include "store/ModelContext.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

namespace quorvane::cli {
namespace {

std::string textOf(bool areInForce, bool isWithin) {
    if (!areInForce) return "Recording is not bound to work hours\n";
    return isWithin ? "Within the work hours\n" : "Outside the work hours: nothing is recorded\n";
}

void workHours(const CommandContext& context, const std::optional<Date>& at) {
    ModelContext store(context.open(StoreAccess::read));
    const auto stored = store.fetch<AppSettings>({.limit = 1});
    const bool areInForce = !stored.empty() && stored.front()->onlyTrackWorkHours();
    const bool isWithin = !areInForce || stored.front()->isWithinWorkHours(at.value_or(platform::currentDate()));
    Output output;
    output.write(context.json ? fmt::format("{{\"within\":{}}}\n", isWithin) : textOf(areInForce, isWithin));
    output.finish();
}

}  // namespace

void addWorkHoursCommand(CLI::App& app, CommandContext& context) {
    auto* command = app.add_subcommand("work-hours", "Tell whether an instant is within the stored work hours");
    const auto at = std::make_shared<std::optional<Date>>();
    addInstantOption(*command, "--at", *at, "The instant; now if left out");
    command->callback([&context, at] { context.command = [&context, at] { workHours(context, *at); }; });
}

}  // namespace quorvane::cli
