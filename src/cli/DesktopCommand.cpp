#include "base/Json.h"
#include "base/TerminalText.h"
#include "cli/CommandContext.h"
#include "cli/CommandGroup.h"
#include "cli/Commands.h"
#include "cli/OrNull.h"
#include "cli/Output.h"
#include "platform/linux/loop/QtRunLoop.h"
#include "platform/linux/session/DesktopAids.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

namespace quorvane::cli {
namespace {

namespace DesktopAids = platform::DesktopAids;
using DesktopAids::Aid;
using DesktopAids::Status;

Json jsonOf(const Aid& aid, const Status& status) {
    return {{"desktop", aid.desktop},
            {"aid", aid.name},
            {"state", status.state},
            {"file", orNull(status.file)},
            {"says", status.says}};
}

/// Does `what` with each aid that helps here, and prints how it stands then.
void withEach(const CommandContext& context, Status (*Aid::*what)(), const char* verb) {
    const platform::QtRunLoop runLoop;
    Json list = Json::array();
    std::string text;
    for (const Aid& aid : DesktopAids::here()) {
        try {
            const Status status = (aid.*what)();
            list.push_back(jsonOf(aid, status));
            text += fmt::format("{}, {}: {}\n", aid.desktop, aid.name, harmlessLine(status.says));
            if (!status.file.empty()) text += fmt::format("  {}\n", harmlessLine(status.file));
        } catch (const DesktopAids::Error& error) {
            throw CommandError(ExitStatus::failed, fmt::format("{}, {}: {}", aid.desktop, aid.name, error.what()));
        }
    }
    if (text.empty()) text = fmt::format("nothing to {}: {}\n", verb, DesktopAids::reasonForNone());
    Output output;
    output.write(context.json ? jsonText({{"aids", std::move(list)}}) + "\n" : text);
    output.finish();
}

}  // namespace

void addDesktopCommand(CLI::App& app, CommandContext& context) {
    auto* group = addGroup(app, "desktop", "Let this desktop tell Quorvane which window is in front");
    const auto add = [&](const char* name, const char* help, Status (*Aid::*what)(), const char* verb) {
        addMember(*group, context, name, help, [&context, what, verb] { withEach(context, what, verb); });
    };
    add("install", "Install what this desktop needs for that", &Aid::install, "install");
    add("remove", "Take that back", &Aid::remove, "remove");
    add("status", "Tell whether it is there and works", &Aid::status, "install");
}

}  // namespace quorvane::cli
