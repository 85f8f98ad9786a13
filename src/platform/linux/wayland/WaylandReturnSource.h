#pragma once

#include "platform/ReturnSource.h"
#include "platform/RunLoop.h"
#include "platform/linux/wayland/WaylandIdleSource.h"

namespace quorvane::platform {

/// A return is the end of the pause that the compositor has told of.
class WaylandReturnSource final : public ReturnSource {
public:
    WaylandReturnSource(RunLoop& runLoop, WaylandIdleSource& idle) : runLoop_(runLoop), idle_(idle) {}

    [[nodiscard]] std::unique_ptr<ReturnWatch> watch(std::function<void()> returned) override;
    [[nodiscard]] Channel channel() const override;

private:
    RunLoop& runLoop_;
    WaylandIdleSource& idle_;
};

}  // namespace quorvane::platform
