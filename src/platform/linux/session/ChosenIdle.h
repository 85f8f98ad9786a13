#pragma once

#include "platform/IdleSource.h"
#include "platform/ReturnSource.h"
#include "platform/linux/bus/BusNames.h"
#include "platform/linux/wayland/WaylandReturnSource.h"

#include <memory>

namespace quorvane::platform {

/// Idle time in a Wayland session: from Mutter while it is on the bus, as it knows the seconds themselves, else from
/// the compositor's protocols. Main thread only.
class ChosenIdle final : public IdleSource {
public:
    /// `names` follows Mutter's.
    ChosenIdle(RunLoop& runLoop, WaylandConnection& connection, BusNames& names);
    ChosenIdle(const ChosenIdle&) = delete;
    ChosenIdle& operator=(const ChosenIdle&) = delete;
    ~ChosenIdle() override;

    [[nodiscard]] Seconds secondsSinceLastInput() override;
    [[nodiscard]] Channel channel() const override;

    /// Calls `changed` when another one tells it than before, who stays until that has been heard.
    Subscription observe(std::function<void()> changed) { return changed_.subscribe(std::move(changed)); }

    /// Of the one who tells it now.
    [[nodiscard]] ReturnSource& returns();

private:
    struct Mutter;
    void choose();

    RunLoop& runLoop_;
    BusNames& names_;
    WaylandIdleSource wayland_;
    WaylandReturnSource waylandReturns_;
    std::unique_ptr<Mutter> mutter_;  ///< none while it isn't there
    Signal<> changed_;
    std::unique_ptr<WorkItem> choosing_;
    Subscription named_;
};

/// Returns, from whoever tells the idle time. A wait goes on when another one comes to tell it.
class ChosenReturns final : public ReturnSource {
public:
    explicit ChosenReturns(ChosenIdle& idle) : idle_(idle) {}

    [[nodiscard]] std::unique_ptr<ReturnWatch> watch(std::function<void()> returned) override;
    [[nodiscard]] Channel channel() const override;

private:
    ChosenIdle& idle_;
};

}  // namespace quorvane::platform
