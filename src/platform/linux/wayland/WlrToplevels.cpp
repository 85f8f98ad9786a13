#include "platform/linux/wayland/WlrToplevels.h"

#include <wlr-foreign-toplevel-management-unstable-v1-client.h>

#include <algorithm>

namespace quorvane::platform {
namespace {

using WlrHandle = zwlr_foreign_toplevel_handle_v1;
using WlrManager = zwlr_foreign_toplevel_manager_v1;

constexpr std::uint32_t knownVersion = 3;

bool isActivated(const wl_array* states) {
    const auto* first = static_cast<const std::uint32_t*>(states->data);
    const auto* end = first + states->size / sizeof *first;
    return std::find(first, end, ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_ACTIVATED) != end;
}

}  // namespace

class WlrToplevels::Handle final : public Window {
public:
    Handle(Windows& owner, WlrHandle* handle) : owner_(owner), handle_(handle) {
        static constexpr auto of = [](void* data) -> Handle& { return *static_cast<Handle*>(data); };
        static constexpr zwlr_foreign_toplevel_handle_v1_listener listener{
            .title = [](void* data, WlrHandle*, const char* title) { of(data).told.title = title; },
            .app_id = [](void* data, WlrHandle*, const char* appId) { of(data).told.appId = appId; },
            .output_enter = [](void*, WlrHandle*, wl_output*) {},
            .output_leave = [](void*, WlrHandle*, wl_output*) {},
            .state = [](void* data, WlrHandle*, wl_array* states) { of(data).willBeActive_ = isActivated(states); },
            .done = [](void* data, WlrHandle*) { of(data).settle(); },
            .closed = [](void* data, WlrHandle*) { of(data).owner_.close(of(data)); },
            .parent = [](void*, WlrHandle*, WlrHandle*) {}};
        zwlr_foreign_toplevel_handle_v1_add_listener(handle_, &listener, this);
    }
    ~Handle() override { zwlr_foreign_toplevel_handle_v1_destroy(handle_); }

private:
    void settle() {
        isWhole = true;
        owner_.setActive(*this, willBeActive_);
    }

    Windows& owner_;
    WlrHandle* handle_;
    bool willBeActive_ = false;  ///< from the next `done`
};

class WlrToplevels::Handles final : public Windows {
public:
    explicit Handles(WlrManager* manager) : manager_(manager) {
        static constexpr zwlr_foreign_toplevel_manager_v1_listener listener{
            .toplevel =
                [](void* data, WlrManager*, WlrHandle* handle) {
                    auto& handles = *static_cast<Handles*>(data);
                    handles.add(std::make_unique<Handle>(handles, handle));
                },
            .finished = [](void*, WlrManager*) {}};
        zwlr_foreign_toplevel_manager_v1_add_listener(manager_, &listener, this);
    }
    ~Handles() override { zwlr_foreign_toplevel_manager_v1_destroy(manager_); }

private:
    WlrManager* manager_;
};

WlrToplevels::WlrToplevels(WaylandConnection& connection)
    : WaylandToplevels(connection, 0s,
                       [&connection]() -> std::unique_ptr<Windows> {
                           auto* manager =
                               connection.bind<WlrManager>(zwlr_foreign_toplevel_manager_v1_interface, knownVersion);
                           return manager != nullptr ? std::make_unique<Handles>(manager) : nullptr;
                       }),
      connection_(connection) {
    connection.settle();
}

bool WlrToplevels::isOffered(const WaylandConnection& connection) {
    return connection.offers(zwlr_foreign_toplevel_manager_v1_interface.name);
}

Channel WlrToplevels::channel() const {
    auto channel = connection_.channel("front window and activation", zwlr_foreign_toplevel_manager_v1_interface.name);
    channel.gives = Sight::applications;
    return channel;
}

}  // namespace quorvane::platform
