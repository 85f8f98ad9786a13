#include "platform/linux/wayland/WaylandIdleSource.h"

#include <ext-idle-notify-v1-client.h>
#include <idle-client.h>

namespace quorvane::platform {
namespace {

constexpr Seconds granularity = 1s;
constexpr std::uint32_t granularityMilliseconds = 1000;
constexpr std::uint32_t versionForInputAlone = 2;

}  // namespace

/// The objects of one connection.
struct WaylandIdleSource::Notification {
    Notification(WaylandIdleSource& toTell, WaylandConnection& connection) : owner(toTell) {
        seat = connection.bind<wl_seat>(wl_seat_interface, 1);
        if (seat == nullptr) return;
        if (notifier = connection.bind<ext_idle_notifier_v1>(ext_idle_notifier_v1_interface, versionForInputAlone);
            notifier != nullptr)
            listen(connection.offers(ext_idle_notifier_v1_interface.name, versionForInputAlone)
                       ? ext_idle_notifier_v1_get_input_idle_notification(notifier, granularityMilliseconds, seat)
                       : ext_idle_notifier_v1_get_idle_notification(notifier, granularityMilliseconds, seat));
        else if (idle = connection.bind<org_kde_kwin_idle>(org_kde_kwin_idle_interface, 1); idle != nullptr)
            listen(org_kde_kwin_idle_get_idle_timeout(idle, seat, granularityMilliseconds));
    }
    Notification(const Notification&) = delete;
    Notification& operator=(const Notification&) = delete;
    ~Notification() {
        if (notification != nullptr) ext_idle_notification_v1_destroy(notification);
        if (notifier != nullptr) ext_idle_notifier_v1_destroy(notifier);
        if (timeout != nullptr) org_kde_kwin_idle_timeout_release(timeout);
        if (idle != nullptr) org_kde_kwin_idle_destroy(idle);
        if (seat != nullptr) wl_seat_destroy(seat);
    }

    void listen(ext_idle_notification_v1* made) {
        static constexpr ext_idle_notification_v1_listener listener{
            .idled = [](void* data, ext_idle_notification_v1*) { of(data).becameIdle(); },
            .resumed = [](void* data, ext_idle_notification_v1*) { of(data).resumed(); }};
        notification = made;
        ext_idle_notification_v1_add_listener(notification, &listener, this);
    }

    void listen(org_kde_kwin_idle_timeout* made) {
        static constexpr org_kde_kwin_idle_timeout_listener listener{
            .idle = [](void* data, org_kde_kwin_idle_timeout*) { of(data).becameIdle(); },
            .resumed = [](void* data, org_kde_kwin_idle_timeout*) { of(data).resumed(); }};
        timeout = made;
        org_kde_kwin_idle_timeout_add_listener(timeout, &listener, this);
    }

    static WaylandIdleSource& of(void* data) { return static_cast<Notification*>(data)->owner; }

    WaylandIdleSource& owner;
    wl_seat* seat = nullptr;
    ext_idle_notifier_v1* notifier = nullptr;
    ext_idle_notification_v1* notification = nullptr;
    org_kde_kwin_idle* idle = nullptr;
    org_kde_kwin_idle_timeout* timeout = nullptr;
};

WaylandIdleSource::WaylandIdleSource(RunLoop& runLoop, WaylandConnection& connection)
    : runLoop_(runLoop), connection_(connection),
      connected_(
          connection.observeConnected([this] { notification_ = std::make_unique<Notification>(*this, connection_); })),
      lost_(connection.observeLost([this] {
          notification_.reset();
          lastInput_.reset();
      })) {}

WaylandIdleSource::~WaylandIdleSource() = default;

void WaylandIdleSource::becameIdle() {
    lastInput_ = runLoop_.uptime() - granularity;
}

void WaylandIdleSource::resumed() {
    if (!lastInput_) return;
    lastInput_.reset();
    returned_.send();
}

Seconds WaylandIdleSource::secondsSinceLastInput() {
    if (!channel().isAvailable) return -1s;
    return lastInput_ ? runLoop_.uptime() - *lastInput_ : 0s;
}

Channel WaylandIdleSource::channel() const {
    const std::string question = "system idle time";
    const auto newer = connection_.channel(question, ext_idle_notifier_v1_interface.name);
    return newer.isAvailable || !connection_.isReady()
               ? newer
               : connection_.channel(question, org_kde_kwin_idle_interface.name);
}

}  // namespace quorvane::platform
