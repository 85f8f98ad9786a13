#include "capture/CaptureHealth.h"
#include "cli/CommandContext.h"
#include "cli/Commands.h"
#include "cli/Output.h"
#include "diagnostics/ConsoleSink.h"
#include "diagnostics/SilentConsole.h"
#include "platform/linux/loop/QtRunLoop.h"
#include "platform/linux/loop/UnixSignals.h"
#include "platform/linux/process/ProcessLock.h"
#include "platform/linux/session/LinuxDesktop.h"
#include "platform/linux/system/IniUserDefaults.h"
#include "platform/linux/system/JournalStream.h"
#include "session/RecordAnnouncer.h"
#include "session/TrackerLock.h"
#include "session/TrackingSession.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <csignal>
#include <cstdlib>
#include <fmt/format.h>
#include <unistd.h>

namespace quorvane::cli {
namespace {

/// At login a tracker may be there before the window manager is.
constexpr Seconds patienceForWindowManager = 5s;

constexpr Seconds patienceForWorkers = 2s;

/// What a timer can count.
constexpr Seconds longestRun = 480h;

Seconds readSeconds(const std::string& text) {
    double seconds = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
    if (error != std::errc() || end != text.data() + text.size() || !(seconds >= 0 && Seconds{seconds} <= longestRun))
        throw CLI::ValidationError("--for", fmt::format("\"{}\" is no number of seconds from 0 to {}", text,
                                                        static_cast<std::int64_t>(longestRun.count())));
    return Seconds{seconds};
}

platform::ProcessLock lockFor(const std::filesystem::path& store) {
    auto lock = platform::ProcessLock::tryAcquire(trackerLockFile(store), "quorvane-cli track");
    if (auto* refusal = std::get_if<platform::ProcessLock::Refusal>(&lock))
        throw CommandError(ExitStatus::failed, refusal->holder ? fmt::format("{}: {} tracks already", store.string(),
                                                                             refusal->holder->description())
                                                               : refusal->reason);
    return std::move(std::get<platform::ProcessLock>(lock));
}

/// Titles and paths are in clear in what is said of a record. The journal, which keeps what it gets, hears none unless
/// somebody asks for that.
bool mayTellTitles(int descriptor) {
    const char* const wanted = std::getenv("QUORVANE_CONSOLE");
    return !platform::leadsToJournal(descriptor) || (wanted != nullptr && std::string_view(wanted) == "1");
}

std::unique_ptr<ConsoleSink> serviceConsole() {
    if (mayTellTitles(STDERR_FILENO)) return std::make_unique<StreamConsole>(stderr);
    return std::make_unique<SilentConsole>();
}

/// The lines of people's interest on standard output. Who can't write them any more ends the tracking.
class Announcements {
public:
    explicit Announcements(platform::QtRunLoop& runLoop) : runLoop_(runLoop) {}

    void write(const std::string& line) {
        if (failure_) return;
        try {
            Output output;
            output.write(line + "\n");
            output.finish();
        } catch (const CommandError& error) {
            failure_ = error;
            runLoop_.quit();
        }
    }

    void throwIfFailed() const {
        if (failure_) throw CommandError(*failure_);
    }

private:
    platform::QtRunLoop& runLoop_;
    std::optional<CommandError> failure_;
};

CaptureHealth healthOf(platform::Desktop& desktop) {
    return captureHealth(desktop.sight());
}

CommandError blindness(const CaptureHealth& health) {
    return {ExitStatus::failed, "nothing can be seen: " + health.sentence()};
}

/// Ends a tracking that sees nothing and won't: at once if that will last, else if nothing was ever seen. A window
/// manager may be about to start, and may be replaced by another.
class View {
public:
    View(platform::QtRunLoop& runLoop, platform::Desktop& desktop, ActivityTracker& tracker)
        : runLoop_(runLoop), desktop_(desktop),
          changed_(tracker.captureHealthChanged.subscribe([this, &tracker] { judge(tracker.captureHealth()); })),
          untilItHasToBeSeen_(runLoop.after(patienceForWindowManager, [this] { judgeBeginning(); })) {}

    /// To be called at the end, too: a short run may not have come to a judgement.
    void judgeBeginning() {
        const auto health = healthOf(desktop_);
        hasSeen_ = hasSeen_ || health.canSee();
        if (!hasSeen_) fail(health);
    }

    void throwIfFailed() const {
        if (failure_) throw blindness(*failure_);
    }

private:
    void judge(const CaptureHealth& health) {
        if (health.canSee()) hasSeen_ = true;
        if (health.isLasting()) fail(health);
    }

    void fail(const CaptureHealth& health) {
        if (!failure_) failure_ = health;
        runLoop_.quit();
    }

    platform::QtRunLoop& runLoop_;
    platform::Desktop& desktop_;
    bool hasSeen_ = false;
    std::optional<CaptureHealth> failure_;
    Subscription changed_;
    std::unique_ptr<platform::WorkItem> untilItHasToBeSeen_;
};

void track(const CommandContext& context, std::optional<Seconds> duration) {
    if (context.now) throw CommandError(ExitStatus::wrongUsage, "--now: tracking needs the clock as it is");
    ModelContext store(context.open(StoreAccess::write));
    const auto lock = lockFor(context.storeFile());
    const auto console = serviceConsole();
    platform::QtRunLoop runLoop;
    platform::LinuxDesktop desktop(runLoop);
    for (const std::string& notice : desktop.notices())
        StreamConsole(stderr).write(notice);
    if (const auto health = healthOf(desktop); health.isLasting()) throw blindness(health);
    Announcements announcements(runLoop);
    const RecordAnnouncer announcer(
        store, [&](const std::string& line) { announcements.write(line); },
        mayTellTitles(STDOUT_FILENO) ? RecordAnnouncer::Titles::shown : RecordAnnouncer::Titles::leftOut);
    desktop.listenToBrowsers([&](const std::string& line) { console->write(line); });
    platform::IniUserDefaults defaults;
    TrackingSession session(runLoop, desktop, store, defaults, *console);
    const platform::UnixSignals signals({SIGINT, SIGTERM, SIGHUP}, [&](int) { runLoop.quit(); });
    const auto timeOut = duration ? runLoop.after(*duration, [&] { runLoop.quit(); }) : nullptr;
    View view(runLoop, desktop, session.tracker());
    session.start();
    if (!session.tracker().isTracking()) session.tracker().toggle();  // who calls this wants it recorded from now on
    runLoop.run();
    view.judgeBeginning();
    const bool isSaved = session.stop();
    // A worker may hang in a file of a dead network or in another program; what there was to save is saved.
    if (!runLoop.finishBackground(patienceForWorkers))
        ::_exit(static_cast<int>(isSaved ? ExitStatus::done : ExitStatus::failed));
    announcements.throwIfFailed();
    view.throwIfFailed();
    if (!isSaved) throw CommandError(ExitStatus::failed, "the last record could not be saved");
}

}  // namespace

void addTrackCommand(CLI::App& app, CommandContext& context) {
    auto* command = app.add_subcommand("track", "Track without a window until interrupted");
    const auto duration = std::make_shared<std::optional<Seconds>>();
    command
        ->add_option_function<std::string>(
            "--for", [duration](const std::string& text) { *duration = readSeconds(text); },
            "Stop by itself after this")
        ->type_name("SECONDS");
    command->callback([&context, duration] { context.command = [&context, duration] { track(context, *duration); }; });
}

}  // namespace quorvane::cli
