#pragma once

#include "base/Signal.h"
#include "platform/Channel.h"
#include "platform/RunLoop.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <sys/types.h>
#include <wayland-client.h>

class QSocketNotifier;

namespace quorvane::platform {

/// Our own connection to the compositor at WAYLAND_DISPLAY. It comes back by itself when the compositor does. Where
/// there is none it offers nothing, says why, and costs nothing. Main thread only.
///
/// A compositor that doesn't answer holds nobody up: `settle` waits for it a moment, and what comes later is heard in
/// the run loop.
class WaylandConnection {
public:
    /// `runLoop` reads what the compositor sends of its own accord; null: nobody does.
    explicit WaylandConnection(RunLoop* runLoop);
    WaylandConnection(const WaylandConnection&) = delete;
    WaylandConnection& operator=(const WaylandConnection&) = delete;
    ~WaylandConnection();

    [[nodiscard]] RunLoop* runLoop() const { return runLoop_; }

    /// Has the compositor told what it offers?
    [[nodiscard]] bool isReady() const { return isReady_; }

    [[nodiscard]] bool offers(const std::string& interface, std::uint32_t leastVersion = 1) const;

    /// The object behind an interface that the compositor offers, in the version that both know; null if it doesn't.
    /// Whoever binds it destroys it, at `lost` at the latest.
    template <class Object>
    [[nodiscard]] Object* bind(const wl_interface& interface, std::uint32_t mostVersion) {
        return static_cast<Object*>(bindAny(interface, mostVersion));
    }

    /// The process at the other end; 0 if nobody tells.
    [[nodiscard]] pid_t compositor() const;

    /// Waits until the compositor has answered what was asked so far, 0.3 s at most; false if it hasn't.
    bool settle();

    /// `connected`: it is ready, at once if it is already; what was bound before is gone. `lost`: it is about to go
    /// with all of its objects. `settled`: a batch of events was delivered, and what they say together holds.
    Subscription observeConnected(std::function<void()> connected);
    Subscription observeLost(std::function<void()> lost) { return lost_.subscribe(std::move(lost)); }
    Subscription observeSettled(std::function<void()> settled) { return settled_.subscribe(std::move(settled)); }

    /// The answer of a source that stands on the interface, as far as the connection is concerned.
    [[nodiscard]] Channel channel(std::string question, const std::string& interface) const;

private:
    struct Listeners;
    void connect();
    void reconnectLater();
    void lose();
    bool pump(int milliseconds);
    void readInLoop();
    void* bindAny(const wl_interface& interface, std::uint32_t mostVersion);

    struct Global {
        std::uint32_t name;
        std::uint32_t version;
    };

    RunLoop* runLoop_;
    wl_display* display_ = nullptr;
    wl_registry* registry_ = nullptr;
    wl_callback* round_ = nullptr;  ///< until it answers
    std::map<std::string, Global> globals_;
    bool isReady_ = false;
    Seconds untilRetry_;
    std::unique_ptr<QSocketNotifier> notifier_;
    std::unique_ptr<WorkItem> retry_;
    Signal<> connected_;
    Signal<> lost_;
    Signal<> settled_;
};

}  // namespace quorvane::platform
