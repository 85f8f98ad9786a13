#include "base/Json.h"
#include "base/TerminalText.h"
#include "capture/CaptureHealth.h"
#include "cli/CommandContext.h"
#include "cli/Commands.h"
#include "cli/OrNull.h"
#include "cli/Output.h"
#include "cli/SightText.h"
#include "platform/linux/loop/QtRunLoop.h"
#include "platform/linux/process/ProcessLock.h"
#include "platform/linux/session/LinuxDesktop.h"
#include "session/TrackerLock.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <fmt/format.h>

namespace quorvane::cli {
namespace {

struct Findings {
    std::vector<platform::Channel> channels;
    std::vector<std::string> notices;
    std::filesystem::path store;
    std::optional<std::string> storeProblem;  ///< none: it opens
    std::optional<platform::ProcessLock::Holder> tracker;
};

Findings examine(const CommandContext& context) {
    platform::QtRunLoop runLoop;
    platform::LinuxDesktop desktop(runLoop);
    // Those on the bus answer within some milliseconds, where the machine isn't busy.
    runLoop.runUntil([&] { return desktop.foreground().channel().isAvailable; }, 1s);
    Findings findings{.channels = desktop.channels(),
                      .notices = desktop.notices(),
                      .store = context.storeFile(),
                      .tracker = platform::ProcessLock::holderOf(trackerLockFile(context.storeFile()))};
    try {
        static_cast<void>(context.open(StoreAccess::read));
    } catch (const CommandError& error) {
        findings.storeProblem = error.what();
    }
    return findings;
}

std::string jsonOf(const Findings& findings) {
    Json channels = Json::array();
    for (const auto& channel : findings.channels)
        channels.push_back({{"question", channel.question},
                            {"channel", orNull(channel.name)},
                            {"available", channel.isAvailable},
                            {"in_part", channel.isPartial()},
                            {"reason", orNull(channel.reason)},
                            {"remedy", orNull(channel.remedy)}});
    const CaptureHealth health = captureHealth(findings.channels);
    const Json capture = {{"sees", nameOf(health.sight)},
                          {"in_part", health.isPartial},
                          {"reason", orNull(health.reason)},
                          {"remedy", orNull(health.remedy)}};
    Json tracker = nullptr;
    if (findings.tracker) tracker = {{"pid", findings.tracker->pid}, {"program", orNull(findings.tracker->program)}};
    const Json store = {{"file", findings.store.string()},
                        {"opens", !findings.storeProblem},
                        {"problem", orNull(findings.storeProblem.value_or(""))}};
    return jsonText({{"channels", std::move(channels)},
                     {"capture", capture},
                     {"notices", findings.notices},
                     {"store", store},
                     {"tracker", std::move(tracker)}}) +
           "\n";
}

std::string answerOf(const platform::Channel& channel) {
    if (!channel.isAvailable)
        return fmt::format("no, {}: {}", channel.name.empty() ? "by nothing" : channel.name, channel.reason);
    if (channel.isPartial()) return fmt::format("in part, by {}: {}", channel.name, channel.reason);
    return "yes, by " + channel.name;
}

std::string textOf(const Findings& findings) {
    std::size_t width = 0;
    for (const auto& channel : findings.channels)
        width = std::max(width, channel.question.size());
    std::string out;
    const auto add = [&](std::string_view question, std::string_view answer) {
        out += fmt::format("{:<{}}  {}\n", question, width, harmlessLine(answer));
    };
    const CaptureHealth health = captureHealth(findings.channels);
    add("what can be seen", sightInWords(health));
    if (!health.reason.empty()) add("", health.reason);
    if (!health.remedy.empty()) add("", "-> " + health.remedy);
    for (const auto& channel : findings.channels) {
        add(channel.question, answerOf(channel));
        if (!channel.remedy.empty()) add("", "-> " + channel.remedy);
    }
    add("store", findings.storeProblem ? *findings.storeProblem : findings.store.string() + ": opens");
    add("tracker", findings.tracker ? findings.tracker->description() + " tracks" : "nobody tracks");
    for (const std::string& notice : findings.notices)
        add("notice", notice);
    return out;
}

void doctor(const CommandContext& context) {
    const Findings findings = examine(context);
    Output output;
    output.write(context.json ? jsonOf(findings) : textOf(findings));
    output.finish();
}

}  // namespace

void addDoctorCommand(CLI::App& app, CommandContext& context) {
    auto* command = app.add_subcommand("doctor", "Tell what this desktop can answer, and what to do where it can't");
    command->callback([&context] { context.command = [&context] { doctor(context); }; });
}

}  // namespace quorvane::cli
