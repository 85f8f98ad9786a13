#include "desktop/support/Environment.h"
#include "desktop/support/Waiting.h"
#include "platform/linux/loop/QtRunLoop.h"
#include "platform/linux/wayland/WaylandIdleSource.h"
#include "support/TemporaryFolder.h"

#include <ext-idle-notify-v1-client.h>
#include <wayland-server.h>

#include <QSocketNotifier>

namespace quorvane::platform {
namespace {

/// A compositor in the test's own process that offers a seat and ext_idle_notifier_v1 and nothing else.
struct IdleCompositor {
    explicit IdleCompositor(int version) : display(wl_display_create()) {
        environment.set("XDG_RUNTIME_DIR", folder.path());
        environment.set("WAYLAND_DISPLAY", wl_display_add_socket_auto(display));
        wl_global_create(display, &wl_seat_interface, 1, this, make<wl_seat_interface>);
        wl_global_create(display, &ext_idle_notifier_v1_interface, version, this, make<ext_idle_notifier_v1_interface>);
        auto* const loop = wl_display_get_event_loop(display);
        notifier = std::make_unique<QSocketNotifier>(wl_event_loop_get_fd(loop), QSocketNotifier::Read);
        QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(), [this, loop] {
            wl_event_loop_dispatch(loop, 0);
            wl_display_flush_clients(display);
        });
    }
    ~IdleCompositor() {
        wl_display_destroy_clients(display);
        wl_display_destroy(display);
    }

    void send(std::uint32_t event) const {
        wl_resource_post_event(notification, event);
        wl_display_flush_clients(display);
    }

    template <const wl_interface& interface>
    static void make(wl_client* client, void* owner, std::uint32_t version, std::uint32_t id) {
        auto* const made = wl_resource_create(client, &interface, static_cast<int>(version), id);
        if (&interface == &ext_idle_notification_v1_interface) static_cast<IdleCompositor*>(owner)->notification = made;
        wl_resource_set_dispatcher(made, dispatch, owner, nullptr, nullptr);
    }

    static int dispatch(const void* owner, void* target, std::uint32_t request, const wl_message*, wl_argument* words) {
        auto* const resource = static_cast<wl_resource*>(target);
        if (request == EXT_IDLE_NOTIFIER_V1_DESTROY) return wl_resource_destroy(resource), 0;
        auto* const compositor = static_cast<IdleCompositor*>(const_cast<void*>(owner));
        compositor->asked = request;
        make<ext_idle_notification_v1_interface>(wl_resource_get_client(resource), compositor, 1, words[0].n);
        return 0;
    }

    TemporaryFolder folder;
    Environment environment;
    wl_display* display;
    wl_resource* notification = nullptr;
    std::uint32_t asked = 0;
    std::unique_ptr<QSocketNotifier> notifier;
};

TEST(IdleNotifierTest, InputAloneCountsWhereTheCompositorCanTellThat) {
    for (const auto& [version, request] : {std::pair(1, EXT_IDLE_NOTIFIER_V1_GET_IDLE_NOTIFICATION),
                                           std::pair(2, EXT_IDLE_NOTIFIER_V1_GET_INPUT_IDLE_NOTIFICATION)}) {
        QtRunLoop runLoop;
        const IdleCompositor compositor(version);
        WaylandConnection connection(&runLoop);
        WaylandIdleSource idle(runLoop, connection);
        int returns = 0;
        const auto subscription = idle.observeReturn([&] { ++returns; });
        ASSERT_TRUE(waitUntil([&] { return compositor.notification != nullptr; }));
        EXPECT_EQ(compositor.asked, static_cast<std::uint32_t>(request));
        compositor.send(0);  // idled
        EXPECT_TRUE(waitUntil([&] { return idle.secondsSinceLastInput() >= 1s; }));
        compositor.send(1);  // resumed
        EXPECT_TRUE(waitUntil([&] { return returns == 1; }));
        EXPECT_EQ(idle.secondsSinceLastInput(), 0s);
    }
}

}  // namespace
}  // namespace quorvane::platform
