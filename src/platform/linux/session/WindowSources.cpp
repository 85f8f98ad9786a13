#include "platform/linux/session/WindowSources.h"

#include "platform/linux/session/DisplaySession.h"
#include "platform/linux/wayland/WaylandReturnSource.h"
#include "platform/linux/wayland/WlrToplevels.h"
#include "platform/linux/windows/ToplevelApplications.h"
#include "platform/linux/windows/ToplevelForegroundSource.h"
#include "platform/linux/x11/SyncReturnSource.h"
#include "platform/linux/x11/X11ForegroundSource.h"
#include "platform/linux/x11/X11IdleSource.h"
#include "platform/linux/x11/X11RunningApplications.h"

namespace quorvane::platform {
namespace {

class X11Sources final : public WindowSources {
public:
    X11Sources(RunLoop& runLoop, X11Connection& x11, const ApplicationIdentity& identity, SessionEvents& session)
        : foreground_(runLoop, x11, identity, session), idle_(x11), returns_(x11),
          applications_(connectToDisplay(X11Connection::Reader::nobody), identity, session) {}

    ForegroundSource& foreground() override { return foreground_; }
    IdleSource& idle() override { return idle_; }
    ReturnSource& returns() override { return returns_; }
    WindowApplications& applications() override { return applications_; }
    Channel titleChannel() const override { return foreground_.titleChannel(); }

private:
    X11ForegroundSource foreground_;
    X11IdleSource idle_;
    SyncReturnSource returns_;
    X11RunningApplications applications_;
};

class WaylandSources final : public WindowSources {
public:
    WaylandSources(RunLoop& runLoop, const ApplicationIdentity& identity, SessionEvents& session)
        : connection_(&runLoop), foreground_(windows_, identity, session), idle_(runLoop, connection_),
          returns_(runLoop, idle_), applications_(windows_, identity, session) {}

    ForegroundSource& foreground() override { return foreground_; }
    IdleSource& idle() override { return idle_; }
    ReturnSource& returns() override { return returns_; }
    WindowApplications& applications() override { return applications_; }
    Channel titleChannel() const override { return foreground_.titleChannel(); }

private:
    WaylandConnection connection_;
    WlrToplevels windows_{connection_};
    ToplevelForegroundSource foreground_;
    WaylandIdleSource idle_;
    WaylandReturnSource returns_;
    ToplevelApplications applications_;
};

}  // namespace

std::unique_ptr<WindowSources> WindowSources::make(RunLoop& runLoop, X11Connection& x11,
                                                   const ApplicationIdentity& identity, SessionEvents& session) {
    if (isOfWaylandSession(x11)) return std::make_unique<WaylandSources>(runLoop, identity, session);
    return std::make_unique<X11Sources>(runLoop, x11, identity, session);
}

Channel WindowSources::frontWindowChannel() {
    const auto x11 = connectToDisplay(X11Connection::Reader::nobody);
    if (!isOfWaylandSession(*x11)) return X11ForegroundSource::channelOf(*x11);
    WaylandConnection connection(nullptr);
    return WlrToplevels(connection).channel();
}

}  // namespace quorvane::platform
