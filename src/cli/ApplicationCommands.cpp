#include "base/Json.h"
#include "base/TerminalText.h"
#include "cli/CommandContext.h"
#include "cli/CommandGroup.h"
#include "cli/Commands.h"
#include "cli/OrNull.h"
#include "cli/Output.h"
#include "platform/linux/bus/ApplicationRemote.h"
#include "platform/linux/loop/QtRunLoop.h"
#include "platform/linux/process/ProcessLock.h"
#include "session/TrackerLock.h"

#include <CLI/CLI.hpp>
#include <cstdlib>
#include <fmt/format.h>

namespace quorvane::cli {
namespace {

namespace ApplicationRemote = platform::ApplicationRemote;

using ApplicationRemote::Failure;

std::string reasonOf(Failure failure, const std::optional<platform::ProcessLock::Holder>& tracker) {
    switch (failure) {
    case Failure::noBus:
    case Failure::notThere:
        if (tracker) return tracker->description() + " tracks, but it can't be reached over this session's bus";
        return failure == Failure::noBus ? "there is no session bus to reach Quorvane" : "Quorvane is not running";
    case Failure::noAnswer: return "Quorvane is running and does not answer";
    case Failure::notUnderstood:
        return "the Quorvane that is running is of another version; quit it and start it again";
    }
    return {};
}

/// What the running application answers to the question.
template <class Question>
auto answerTo(const CommandContext& context, const Question& question) {
    for (const auto& [isGiven, option] :
         {std::pair(context.store.has_value(), "--store"), {context.now.has_value(), "--now"}})
        if (isGiven)
            throw CommandError(ExitStatus::wrongUsage,
                               fmt::format("{}: the application that is running has its own", option));
    const platform::QtRunLoop runLoop;
    auto answer = question();
    if (const auto* failure = std::get_if<Failure>(&answer))
        throw CommandError(ExitStatus::failed,
                           reasonOf(*failure, platform::ProcessLock::holderOf(trackerLockFile(context.storeFile()))));
    return std::get<0>(std::move(answer));
}

std::string textOf(const ApplicationRemote::Recording& recording) {
    if (!recording.isOn) return "Recording is paused\n";
    if (recording.hindrance.empty()) return "Recording is on\n";
    return fmt::format("Recording is on, but nothing is recorded now: {}\n", harmlessLine(recording.hindrance));
}

void setRecording(const CommandContext& context, bool isOn) {
    const auto recording = answerTo(context, [&] { return ApplicationRemote::setRecording(isOn); });
    Output output;
    output.write(context.json
                     ? jsonText({{"tracking", recording.isOn}, {"hindrance", orNull(recording.hindrance)}}) + "\n"
                     : textOf(recording));
    output.finish();
}

void show(const CommandContext& context) {
    const char* token = std::getenv("XDG_ACTIVATION_TOKEN");
    static_cast<void>(answerTo(context, [&] { return ApplicationRemote::show(token ? token : ""); }));
}

}  // namespace

void addPauseCommand(CLI::App& app, CommandContext& context) {
    addMember(app, context, "pause", "Pause the recording of the application that is running",
              [&context] { setRecording(context, false); });
}

void addStartCommand(CLI::App& app, CommandContext& context) {
    addMember(app, context, "start", "Let the application that is running record again",
              [&context] { setRecording(context, true); });
}

void addShowCommand(CLI::App& app, CommandContext& context) {
    addMember(app, context, "show", "Bring the window of the application that is running to the front",
              [&context] { show(context); });
}

}  // namespace quorvane::cli
