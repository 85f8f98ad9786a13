#include "platform/linux/kde/PlasmaToplevels.h"

#include <plasma-window-management-client.h>

namespace quorvane::platform {
namespace {

using PlasmaWindow = org_kde_plasma_window;
using PlasmaManager = org_kde_plasma_window_management;

constexpr std::uint32_t leastVersion = 13;  // the first to name windows by what is never given again
constexpr std::uint32_t knownVersion = 16;

/// The next window follows within some milliseconds.
constexpr Seconds untilNoneIsInFrontOfKWin = 0.1s;

}  // namespace

class PlasmaToplevels::Handle final : public Window {
public:
    Handle(Windows& owner, PlasmaWindow* handle) : owner_(owner), handle_(handle) {
        static const auto listener = listenerOfWindow();
        org_kde_plasma_window_add_listener(handle_, &listener, this);
    }
    ~Handle() override { org_kde_plasma_window_destroy(handle_); }

private:
    static org_kde_plasma_window_listener listenerOfWindow();
    static Handle& of(void* data) { return *static_cast<Handle*>(data); }

    Windows& owner_;
    PlasmaWindow* handle_;
};

// Newer descriptions of the protocol have more events, which come only to those who know their version.
org_kde_plasma_window_listener PlasmaToplevels::Handle::listenerOfWindow() {
    org_kde_plasma_window_listener to{};
    to.title_changed = [](void* data, PlasmaWindow*, const char* title) { of(data).told.title = title; };
    to.app_id_changed = [](void* data, PlasmaWindow*, const char* appId) { of(data).told.appId = appId; };
    to.pid_changed = [](void* data, PlasmaWindow*, std::uint32_t pid) { of(data).told.processIdentifier = pid; };
    to.state_changed = [](void* data, PlasmaWindow*, std::uint32_t flags) {
        of(data).owner_.setActive(of(data), (flags & ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_ACTIVE) != 0);
    };
    to.initial_state = [](void* data, PlasmaWindow*) { of(data).isWhole = true; };
    to.unmapped = [](void* data, PlasmaWindow*) { of(data).owner_.close(of(data)); };
    to.virtual_desktop_changed = [](void*, PlasmaWindow*, std::int32_t) {};
    to.themed_icon_name_changed = [](void*, PlasmaWindow*, const char*) {};
    to.parent_window = [](void*, PlasmaWindow*, PlasmaWindow*) {};
    to.geometry = [](void*, PlasmaWindow*, std::int32_t, std::int32_t, std::uint32_t, std::uint32_t) {};
    to.icon_changed = [](void*, PlasmaWindow*) {};
    to.virtual_desktop_entered = [](void*, PlasmaWindow*, const char*) {};
    to.virtual_desktop_left = [](void*, PlasmaWindow*, const char*) {};
    to.application_menu = [](void*, PlasmaWindow*, const char*, const char*) {};
    to.activity_entered = [](void*, PlasmaWindow*, const char*) {};
    to.activity_left = [](void*, PlasmaWindow*, const char*) {};
    to.resource_name_changed = [](void*, PlasmaWindow*, const char*) {};
    return to;
}

class PlasmaToplevels::Handles final : public Windows {
public:
    explicit Handles(PlasmaManager* manager) : manager_(manager) {
        static const auto listener = listenerOfManager();
        org_kde_plasma_window_management_add_listener(manager_, &listener, this);
    }
    ~Handles() override { org_kde_plasma_window_management_destroy(manager_); }

private:
    static org_kde_plasma_window_management_listener listenerOfManager() {
        org_kde_plasma_window_management_listener to{};
        to.window_with_uuid = [](void* data, PlasmaManager* manager, std::uint32_t, const char* uuid) {
            auto& handles = *static_cast<Handles*>(data);
            auto* handle = org_kde_plasma_window_management_get_window_by_uuid(manager, uuid);
            handles.add(std::make_unique<Handle>(handles, handle));
        };
        to.show_desktop_changed = [](void*, PlasmaManager*, std::uint32_t) {};
        to.window = [](void*, PlasmaManager*, std::uint32_t) {};
        to.stacking_order_changed = [](void*, PlasmaManager*, wl_array*) {};
        to.stacking_order_uuid_changed = [](void*, PlasmaManager*, const char*) {};
        return to;
    }

    PlasmaManager* manager_;
};

PlasmaToplevels::PlasmaToplevels(WaylandConnection& connection)
    : WaylandToplevels(connection, untilNoneIsInFrontOfKWin,
                       [&connection]() -> std::unique_ptr<Windows> {
                           if (!isOffered(connection)) return nullptr;
                           return std::make_unique<Handles>(connection.bind<PlasmaManager>(
                               org_kde_plasma_window_management_interface, knownVersion));
                       }),
      connection_(connection) {
    // The first answer names the windows, the second describes them.
    if (connection.settle()) connection.settle();
}

bool PlasmaToplevels::isOffered(const WaylandConnection& connection) {
    return connection.offers(org_kde_plasma_window_management_interface.name, leastVersion);
}

bool PlasmaToplevels::isKWin(const WaylandConnection& connection) {
    for (const char* own : {"org_kde_plasma_shell", "kde_output_device_v2", "kde_output_order_v1"})
        if (connection.offers(own)) return true;
    return false;
}

Channel PlasmaToplevels::channel() const {
    auto channel = connection_.channel("front window and activation", org_kde_plasma_window_management_interface.name);
    channel.gives = Sight::applications;
    if (channel.isAvailable && !isOffered(connection_)) {
        channel.isAvailable = false;
        channel.obstacle = Obstacle::wayland;
        channel.reason = "this version of KWin is too old for it";
    } else if (channel.obstacle == Obstacle::wayland && isKWin(connection_)) {
        channel.reason =
            "KWin tells of windows only to programs whose desktop file asks for it, and this one's doesn't";
        channel.remedy = "Run quorvane-cli desktop install, and start Quorvane anew.";
    }
    return channel;
}

}  // namespace quorvane::platform
