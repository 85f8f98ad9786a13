#pragma once

#include "platform/RunLoop.h"
#include "platform/SerialQueue.h"

#include <memory>

namespace quorvane::platform {

/// A queue in the turns and the time of a run loop, on its thread.
class SimulatedSerialQueue final : public SerialQueue {
public:
    explicit SimulatedSerialQueue(RunLoop& runLoop) : runLoop_(runLoop) {}

    void post(std::function<void()> work) override;
    void every(Seconds interval, Seconds leeway, std::function<void()> fire) override;
    void endTimer() override { timer_.reset(); }
    void stop() override;

private:
    RunLoop& runLoop_;
    std::unique_ptr<Timer> timer_;
    std::shared_ptr<bool> isOpen_ = std::make_shared<bool>(true);
};

}  // namespace quorvane::platform
