#include "platform/linux/wayland/WaylandConnection.h"

#include "platform/linux/process/LocalSocket.h"

#include <QSocketNotifier>
#include <algorithm>
#include <cerrno>
#include <chrono>
#include <poll.h>
#include <utility>

namespace quorvane::platform {
namespace {

constexpr Seconds patienceForAnswers = 0.3s;
constexpr Seconds firstRetry = 1s;
constexpr Seconds longestRetry = 30s;

}  // namespace

/// What the compositor calls; the data is the connection.
struct WaylandConnection::Listeners {
    static WaylandConnection& of(void* data) { return *static_cast<WaylandConnection*>(data); }

    static constexpr wl_registry_listener registry{
        .global =
            [](void* data, wl_registry*, std::uint32_t name, const char* interface, std::uint32_t version) {
                of(data).globals_.insert_or_assign(interface, Global{name, version});
            },
        .global_remove =
            [](void* data, wl_registry*, std::uint32_t name) {
                std::erase_if(of(data).globals_, [&](const auto& global) { return global.second.name == name; });
            }};

    static constexpr wl_callback_listener round{.done = [](void* data, wl_callback* callback, std::uint32_t) {
        wl_callback_destroy(callback);
        of(data).round_ = nullptr;
    }};
};

WaylandConnection::WaylandConnection(RunLoop* runLoop) : runLoop_(runLoop), untilRetry_(firstRetry) {
    connect();
    if (display_ != nullptr) settle();
}

WaylandConnection::~WaylandConnection() {
    lose();
}

void WaylandConnection::connect() {
    display_ = wl_display_connect(nullptr);
    if (display_ == nullptr) return;
    registry_ = wl_display_get_registry(display_);
    wl_registry_add_listener(registry_, &Listeners::registry, this);
    round_ = wl_display_sync(display_);
    wl_callback_add_listener(round_, &Listeners::round, this);
    wl_display_flush(display_);
    if (runLoop_ == nullptr) return;
    notifier_ = std::make_unique<QSocketNotifier>(wl_display_get_fd(display_), QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { readInLoop(); });
}

void WaylandConnection::reconnectLater() {
    if (runLoop_ == nullptr) return;
    retry_ = runLoop_->after(untilRetry_, [this] {
        connect();
        if (display_ == nullptr) reconnectLater();
    });
    untilRetry_ = std::min(untilRetry_ * 2, longestRetry);
}

void WaylandConnection::lose() {
    if (display_ == nullptr) return;
    if (isReady_) lost_.send();
    isReady_ = false;
    globals_.clear();
    notifier_.reset();
    if (round_ != nullptr) wl_callback_destroy(std::exchange(round_, nullptr));
    wl_registry_destroy(std::exchange(registry_, nullptr));
    wl_display_disconnect(std::exchange(display_, nullptr));
}

/// Takes what has come, and waits so long for something to come; false once the compositor has gone.
bool WaylandConnection::pump(int milliseconds) {
    while (wl_display_prepare_read(display_) != 0)
        if (wl_display_dispatch_pending(display_) < 0) return false;
    if (wl_display_flush(display_) < 0 && errno != EAGAIN) {
        wl_display_cancel_read(display_);
        return false;
    }
    pollfd descriptor{.fd = wl_display_get_fd(display_), .events = POLLIN, .revents = 0};
    if (poll(&descriptor, 1, milliseconds) <= 0)
        wl_display_cancel_read(display_);
    else if (wl_display_read_events(display_) < 0 || wl_display_dispatch_pending(display_) < 0)
        return false;
    if (!isReady_ && round_ == nullptr) {
        isReady_ = true;
        untilRetry_ = firstRetry;
        connected_.send();
    }
    // What the listeners have asked for goes out now and not with the next event.
    wl_display_flush(display_);
    return true;
}

void WaylandConnection::readInLoop() {
    if (pump(0)) return settled_.send();
    lose();
    reconnectLater();
}

bool WaylandConnection::settle() {
    if (display_ == nullptr) return false;
    if (round_ == nullptr) {
        round_ = wl_display_sync(display_);
        wl_callback_add_listener(round_, &Listeners::round, this);
    }
    const auto end = std::chrono::steady_clock::now() + patienceForAnswers;
    while (round_ != nullptr) {
        const Seconds left = end - std::chrono::steady_clock::now();
        if (left <= 0s) return false;
        if (pump(static_cast<int>(left / 1ms) + 1)) continue;
        lose();
        reconnectLater();
        return false;
    }
    settled_.send();
    return true;
}

bool WaylandConnection::offers(const std::string& interface, std::uint32_t leastVersion) const {
    const auto global = globals_.find(interface);
    return global != globals_.end() && global->second.version >= leastVersion;
}

pid_t WaylandConnection::compositor() const {
    return display_ != nullptr ? LocalSocket::peerOf(wl_display_get_fd(display_)) : 0;
}

void* WaylandConnection::bindAny(const wl_interface& interface, std::uint32_t mostVersion) {
    const auto global = globals_.find(interface.name);
    if (global == globals_.end()) return nullptr;
    return wl_registry_bind(registry_, global->second.name, &interface, std::min(global->second.version, mostVersion));
}

Subscription WaylandConnection::observeConnected(std::function<void()> connected) {
    if (isReady_) {
        connected();
        wl_display_flush(display_);
    }
    return connected_.subscribe(std::move(connected));
}

Channel WaylandConnection::channel(std::string question, const std::string& interface) const {
    Channel channel{.question = std::move(question), .name = "Wayland " + interface};
    if (display_ == nullptr) {
        channel.reason = retry_ ? "the compositor has gone; Quorvane looks for it again" : "no compositor answers";
        channel.obstacle = retry_ ? Obstacle::other : Obstacle::noDisplay;
    } else if (!isReady_) {
        channel.reason = "the compositor doesn't answer";
        channel.obstacle = Obstacle::other;
    } else if (!offers(interface)) {
        channel.reason = "the compositor doesn't offer it";
        channel.obstacle = Obstacle::wayland;
    }
    channel.isAvailable = channel.reason.empty();
    return channel;
}

}  // namespace quorvane::platform
