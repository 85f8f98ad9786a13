#include "cli/CommandGroup.h"

#include "cli/CommandContext.h"

#include <CLI/CLI.hpp>

namespace quorvane::cli {

CLI::App* addGroup(CLI::App& app, const std::string& name, const std::string& help) {
    auto* group = app.add_subcommand(name, help);
    group->require_subcommand(1);
    return group;
}

CLI::App* addMember(CLI::App& group, CommandContext& context, const std::string& name, const std::string& help,
                    const std::function<void()>& run) {
    auto* command = group.add_subcommand(name, help);
    command->callback([&context, run] { context.command = run; });
    return command;
}

}  // namespace quorvane::cli
