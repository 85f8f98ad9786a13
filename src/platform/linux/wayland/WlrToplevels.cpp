#include "platform/linux/wayland/WlrToplevels.h"

#include <wlr-foreign-toplevel-management-unstable-v1-client.h>

#include <algorithm>
#include <list>
#include <utility>
#include <vector>

namespace quorvane::platform {
namespace {

using Handle = zwlr_foreign_toplevel_handle_v1;
using Manager = zwlr_foreign_toplevel_manager_v1;

constexpr std::uint32_t knownVersion = 3;

bool isActivated(const wl_array* states) {
    const auto* first = static_cast<const std::uint32_t*>(states->data);
    const auto* end = first + states->size / sizeof *first;
    return std::find(first, end, ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_ACTIVATED) != end;
}

}  // namespace

/// The objects of one connection.
struct WlrToplevels::Toplevels {
    struct Entry {
        Toplevels* owner;
        Handle* handle;
        ToplevelWindow window{};
        bool willBeActivated = false;  ///< from the next `done`
        bool isActivated = false;
        std::uint64_t since = 0;  ///< the later ones were activated later
    };

    explicit Toplevels(Manager* bound) : manager(bound) {
        static constexpr zwlr_foreign_toplevel_manager_v1_listener listener{
            .toplevel = [](void* data, Manager*, Handle* handle) { static_cast<Toplevels*>(data)->add(handle); },
            .finished = [](void*, Manager*) {}};
        zwlr_foreign_toplevel_manager_v1_add_listener(manager, &listener, this);
    }
    Toplevels(const Toplevels&) = delete;
    Toplevels& operator=(const Toplevels&) = delete;
    ~Toplevels() {
        for (const Entry& entry : entries)
            zwlr_foreign_toplevel_handle_v1_destroy(entry.handle);
        zwlr_foreign_toplevel_manager_v1_destroy(manager);
    }

    void add(Handle* handle);

    void close(const Entry& closed) {
        zwlr_foreign_toplevel_handle_v1_destroy(closed.handle);
        entries.remove_if([&](const Entry& entry) { return &entry == &closed; });
    }

    /// The one that was activated last of those that still are.
    [[nodiscard]] std::optional<ToplevelWindow> active() const {
        const Entry* newest = nullptr;
        for (const Entry& entry : entries)
            if (entry.isActivated && (newest == nullptr || entry.since > newest->since)) newest = &entry;
        return newest != nullptr ? std::optional(newest->window) : std::nullopt;
    }

    [[nodiscard]] std::vector<ToplevelWindow> all() const {
        std::vector<ToplevelWindow> windows;
        for (const Entry& entry : entries)
            windows.push_back(entry.window);
        return windows;
    }

    Manager* manager;
    std::list<Entry> entries;
    std::uint64_t activations = 0;
};

void WlrToplevels::Toplevels::add(Handle* handle) {
    static constexpr auto of = [](void* data) -> Entry& { return *static_cast<Entry*>(data); };
    static constexpr zwlr_foreign_toplevel_handle_v1_listener listener{
        .title = [](void* data, Handle*, const char* title) { of(data).window.title = title; },
        .app_id = [](void* data, Handle*, const char* appId) { of(data).window.appId = appId; },
        .output_enter = [](void*, Handle*, wl_output*) {},
        .output_leave = [](void*, Handle*, wl_output*) {},
        .state = [](void* data, Handle*, wl_array* states) { of(data).willBeActivated = isActivated(states); },
        .done =
            [](void* data, Handle*) {
                Entry& entry = of(data);
                if (entry.willBeActivated && !entry.isActivated) entry.since = ++entry.owner->activations;
                entry.isActivated = entry.willBeActivated;
            },
        .closed = [](void* data, Handle*) { of(data).owner->close(of(data)); },
        .parent = [](void*, Handle*, Handle*) {}};
    entries.push_back({.owner = this, .handle = handle});
    zwlr_foreign_toplevel_handle_v1_add_listener(handle, &listener, &entries.back());
}

WlrToplevels::WlrToplevels(WaylandConnection& connection)
    : connection_(connection), connected_(connection.observeConnected([this] {
          if (auto* manager = connection_.bind<Manager>(zwlr_foreign_toplevel_manager_v1_interface, knownVersion))
              toplevels_ = std::make_unique<Toplevels>(manager);
      })),
      lost_(connection.observeLost([this] {
          toplevels_.reset();
          settle();
      })),
      settled_(connection.observeSettled([this] { settle(); })) {
    connection_.settle();
}

WlrToplevels::~WlrToplevels() = default;

void WlrToplevels::settle() {
    auto active = toplevels_ ? toplevels_->active() : std::nullopt;
    auto all = toplevels_ ? toplevels_->all() : std::vector<ToplevelWindow>();
    if (active == active_ && all == all_) return;
    active_ = std::move(active);
    all_ = std::move(all);
    changed_.send();
}

Channel WlrToplevels::channel() const {
    auto channel = connection_.channel("front window and activation", zwlr_foreign_toplevel_manager_v1_interface.name);
    channel.gives = Sight::applications;
    if (channel.obstacle == Obstacle::wayland) {
        channel.reason = "this compositor tells no application which window is in front";
        channel.remedy = "Choose an X11 session at the login screen, often called \"Xorg\" or \"X11\".";
    }
    return channel;
}

}  // namespace quorvane::platform
