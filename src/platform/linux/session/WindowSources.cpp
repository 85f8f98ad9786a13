#include "platform/linux/session/WindowSources.h"

#include "platform/linux/loop/QtRunLoop.h"
#include "platform/linux/session/ChosenIdle.h"
#include "platform/linux/session/ChosenToplevels.h"
#include "platform/linux/session/DisplaySession.h"
#include "platform/linux/windows/ToplevelApplications.h"
#include "platform/linux/windows/ToplevelForegroundSource.h"
#include "platform/linux/x11/SyncReturnSource.h"
#include "platform/linux/x11/X11ForegroundSource.h"
#include "platform/linux/x11/X11IdleSource.h"
#include "platform/linux/x11/X11RunningApplications.h"

namespace quorvane::platform {
namespace {

/// Who has touched something within this is at work.
constexpr Seconds atWork = 10s;

/// Programs on the bus answer within some milliseconds, where the machine isn't busy.
constexpr Seconds patience = 1s;

struct X11Sources {
    X11Sources(RunLoop& runLoop, X11Connection& x11, const ApplicationIdentity& identity, SessionEvents& session)
        : foreground(runLoop, x11, identity, session), idle(x11), returns(x11),
          applications(connectToDisplay(X11Connection::Reader::nobody), identity, session) {}

    X11ForegroundSource foreground;
    X11IdleSource idle;
    SyncReturnSource returns;
    X11RunningApplications applications;
};

struct WaylandSources {
    WaylandSources(RunLoop& runLoop, const ApplicationIdentity& identity, SessionEvents& session)
        : connection(&runLoop), names(runLoop, ChosenToplevels::busNames()), idle(runLoop, connection, names),
          returns(idle), windows(runLoop, connection, names, [this] { return isSomebodyThere(); }),
          applications(windows, identity, session), foreground(windows, identity, session) {}

    [[nodiscard]] bool isSomebodyThere() {
        const Seconds untouched = idle.secondsSinceLastInput();
        return untouched >= 0s && untouched < atWork;
    }

    WaylandConnection connection;
    BusNames names;
    ChosenIdle idle;
    ChosenReturns returns;
    ChosenToplevels windows;
    ToplevelApplications applications;  ///< hears of a switch before those who then ask it
    ToplevelForegroundSource foreground;
};

template <class Parts>
WindowSources sourcesOf(std::shared_ptr<Parts> parts) {
    return {.parts = parts,
            .foreground = parts->foreground,
            .titleChannel = [&foreground = parts->foreground] { return foreground.titleChannel(); },
            .idle = parts->idle,
            .returns = parts->returns,
            .applications = parts->applications};
}

}  // namespace

WindowSources WindowSources::make(RunLoop& runLoop, X11Connection& x11, const ApplicationIdentity& identity,
                                  SessionEvents& session) {
    if (isOfWaylandSession(x11)) return sourcesOf(std::make_shared<WaylandSources>(runLoop, identity, session));
    return sourcesOf(std::make_shared<X11Sources>(runLoop, x11, identity, session));
}

Channel frontWindowChannel() {
    const auto x11 = connectToDisplay(X11Connection::Reader::nobody);
    if (!isOfWaylandSession(*x11)) return X11ForegroundSource::channelOf(*x11);
    QtRunLoop runLoop;
    WaylandConnection connection(&runLoop);
    BusNames names(runLoop, ChosenToplevels::busNames());
    const ChosenToplevels windows(runLoop, connection, names, [] { return false; });
    runLoop.runUntil([&] { return windows.channel().isAvailable; }, patience);
    return windows.channel();
}

}  // namespace quorvane::platform
