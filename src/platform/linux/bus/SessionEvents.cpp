#include "platform/linux/bus/SessionEvents.h"

#include "platform/linux/bus/LogindSession.h"
#include "platform/linux/bus/ScreenSaverSignals.h"
#include "platform/linux/bus/SessionLock.h"

#include <array>
#include <utility>

namespace quorvane::platform {

struct SessionEvents::Sources {
    explicit Sources(RunLoop& runLoop)
        : lock(runLoop,
               [this](bool isLocked) { send(isLocked, SystemEvent::screenLocked, SystemEvent::screenUnlocked); }),
          background(runLoop,
                     [this](bool isIn) { send(isIn, SystemEvent::sessionDidLeave, SystemEvent::sessionDidReturn); }),
          logind({.willSleep = [this] { signal(SystemEvent::willSleep).send(); },
                  .didWake = [this] { signal(SystemEvent::didWake).send(); },
                  .lockRequested = [this](bool request) { lock.noteRequest(request); },
                  .lockReported = [this](bool isLocked) { lock.noteState(isLocked); },
                  .frontReported = [this](bool isInFront) { background.noteState(!isInFront); }}),
          screenSaver([this](bool isActive) { lock.noteState(isActive); }) {
        lock.begin(logind.wasLocked());
        background.begin(!logind.wasInFront());
    }

    Signal<>& signal(SystemEvent event) { return signals[static_cast<std::size_t>(event)]; }
    void send(bool which, SystemEvent ifTrue, SystemEvent ifFalse) { signal(which ? ifTrue : ifFalse).send(); }

    std::array<Signal<>, static_cast<std::size_t>(SystemEvent::screenUnlocked) + 1> signals;
    SessionLock lock;
    SessionLock background;  ///< behind another session it is as good as locked
    LogindSession logind;
    ScreenSaverSignals screenSaver;
};

SessionEvents::SessionEvents(RunLoop& runLoop) : sources_(std::make_unique<Sources>(runLoop)) {}

SessionEvents::~SessionEvents() = default;

Subscription SessionEvents::observe(SystemEvent event, std::function<void()> happened) {
    return sources_->signal(event).subscribe(std::move(happened));
}

// Only keys and buttons come here, and no server that has lost its screen hears any.
void SessionEvents::noteInput() {
    if (sources_->background.isDoubtful()) sources_->background.noteState(false);
    if (!sources_->lock.isDoubtful()) return;
    sources_->screenSaver.ask([this](bool isActive) {
        if (!isActive && sources_->lock.isDoubtful()) sources_->lock.noteState(false);
    });
}

std::vector<Channel> SessionEvents::channels() const {
    Channel sleep{.question = "sleep and wake", .name = "logind PrepareForSleep"};
    sleep.reason = sources_->logind.sleepProblem();
    sleep.isAvailable = sleep.reason.empty();
    if (!sleep.isAvailable)
        sleep.remedy = "Run systemd-logind or elogind; without it a sleep shows only as a gap in time.";

    Channel lock{.question = "lock and unlock", .isAvailable = true};
    const auto logindProblem = sources_->logind.lockProblem();
    const auto screenSaverProblem = sources_->screenSaver.problem();
    if (logindProblem.empty()) {
        lock.name = screenSaverProblem.empty() ? "logind session and screen saver ActiveChanged" : "logind session";
    } else {
        lock.name = "screen saver ActiveChanged";
        lock.isAvailable = screenSaverProblem.empty();
    }
    if (!lock.isAvailable) {
        lock.name = "logind session, screen saver ActiveChanged";
        lock.reason = logindProblem + "; " + screenSaverProblem;
        lock.remedy = "Use a locker that reports to logind or to the session bus, as those of the desktops do.";
    }
    return {std::move(sleep), std::move(lock)};
}

bool SessionEvents::isOutOfReach() const {
    return sources_->lock.isLocked() || sources_->background.isLocked();
}

std::vector<Subscription> SessionEvents::observeReach(const std::function<void(bool)>& changed) {
    std::vector<Subscription> subscriptions;
    for (const auto event : {SystemEvent::screenLocked, SystemEvent::screenUnlocked, SystemEvent::sessionDidLeave,
                             SystemEvent::sessionDidReturn})
        subscriptions.push_back(observe(event, [this, changed] { changed(isOutOfReach()); }));
    return subscriptions;
}

}  // namespace quorvane::platform
