#pragma once

#include <functional>
#include <string>

namespace CLI {
class App;
}

/// Commands that consist of commands of their own: "projects list".
namespace quorvane::cli {

struct CommandContext;

CLI::App* addGroup(CLI::App& app, const std::string& name, const std::string& help);

/// A command of the group, which does `run`.
CLI::App* addMember(CLI::App& group, CommandContext& context, const std::string& name, const std::string& help,
                    const std::function<void()>& run);

}  // namespace quorvane::cli
