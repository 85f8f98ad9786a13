#pragma once

#include "platform/ProcessUsage.h"

#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>

namespace quorvane::platform {

/// A timer of the kernel on the processor time of this process. The kernel can announce its end by a signal alone: it
/// goes to a thread that waits for it and nothing else, and is blocked there, so that no handler of anybody runs and no
/// call of anybody is interrupted.
class ProcessorTimeAlarm final : public UsageAlarm {
public:
    /// See `ProcessUsage::onceUsed`.
    [[nodiscard]] static std::unique_ptr<ProcessorTimeAlarm> set(double cpuSeconds, std::function<void()> fire);
    ProcessorTimeAlarm(const ProcessorTimeAlarm&) = delete;
    ProcessorTimeAlarm& operator=(const ProcessorTimeAlarm&) = delete;
    ~ProcessorTimeAlarm() override;

private:
    explicit ProcessorTimeAlarm(std::function<void()> fire) : fire_(std::move(fire)) {}
    [[nodiscard]] bool begin(double cpuSeconds);
    void run(double cpuSeconds, std::promise<bool> hasBegun);  // on the thread, as is the next
    [[nodiscard]] bool waitUntilItRings();

    std::function<void()> fire_;
    std::mutex mutex_;  ///< guards the next two
    bool isRinging_ = false;
    bool isCancelled_ = false;
    std::thread thread_;
};

}  // namespace quorvane::platform
