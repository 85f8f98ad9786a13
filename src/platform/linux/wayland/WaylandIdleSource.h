#pragma once

#include "platform/IdleSource.h"
#include "platform/linux/wayland/WaylandConnection.h"

#include <memory>
#include <optional>

namespace quorvane::platform {

/// How long nobody has touched anything, from a compositor that tells when a second without input has passed and when
/// that ends (ext_idle_notifier_v1, else org_kde_kwin_idle). Below that second the answer is 0. It begins to count when
/// it is made: nobody tells what was before. What keeps the screen awake counts as input where the compositor knows no
/// other way, which is up to version 1 of the first and always of the second.
class WaylandIdleSource final : public IdleSource {
public:
    WaylandIdleSource(RunLoop& runLoop, WaylandConnection& connection);
    WaylandIdleSource(const WaylandIdleSource&) = delete;
    WaylandIdleSource& operator=(const WaylandIdleSource&) = delete;
    ~WaylandIdleSource() override;

    [[nodiscard]] Seconds secondsSinceLastInput() override;
    [[nodiscard]] Channel channel() const override;

    /// Calls `returned` when input ends a pause of a second or more.
    Subscription observeReturn(std::function<void()> returned) { return returned_.subscribe(std::move(returned)); }

private:
    struct Notification;
    void becameIdle();
    void resumed();

    RunLoop& runLoop_;
    WaylandConnection& connection_;
    std::unique_ptr<Notification> notification_;
    std::optional<Seconds> lastInput_;  ///< on the clock that never steps; none while somebody is there
    Signal<> returned_;
    Subscription connected_;
    Subscription lost_;
};

}  // namespace quorvane::platform
