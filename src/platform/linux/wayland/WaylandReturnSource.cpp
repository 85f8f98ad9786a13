#include "platform/linux/wayland/WaylandReturnSource.h"

#include <utility>

namespace quorvane::platform {
namespace {

class PauseWatch final : public ReturnWatch {
public:
    PauseWatch(RunLoop& runLoop, WaylandIdleSource& idle, std::function<void()> returned)
        : returned_(std::move(returned)), pauseEnded_(idle.observeReturn([this] { call(); })) {
        // Nobody tells of the end of a pause that has ended already.
        if (idle.secondsSinceLastInput() == 0s) already_ = runLoop.after(0s, [this] { call(); });
    }

private:
    void call() {
        // It may take this watch with it.
        if (const auto returned = std::exchange(returned_, nullptr)) returned();
    }

    std::function<void()> returned_;
    Subscription pauseEnded_;
    std::unique_ptr<WorkItem> already_;
};

}  // namespace

std::unique_ptr<ReturnWatch> WaylandReturnSource::watch(std::function<void()> returned) {
    if (!channel().isAvailable) return nullptr;
    return std::make_unique<PauseWatch>(runLoop_, idle_, std::move(returned));
}

Channel WaylandReturnSource::channel() const {
    auto channel = idle_.channel();
    channel.question = "return from an absence";
    return channel;
}

}  // namespace quorvane::platform
