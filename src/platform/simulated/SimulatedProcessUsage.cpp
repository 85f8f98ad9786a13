#include "platform/simulated/SimulatedProcessUsage.h"

#include <utility>

namespace quorvane::platform {

/// Its wait goes with it.
class SimulatedProcessUsage::Alarm final : public UsageAlarm {
public:
    explicit Alarm(std::shared_ptr<Wait> wait) : wait_(std::move(wait)) {}

private:
    std::shared_ptr<Wait> wait_;
};

std::unique_ptr<UsageAlarm> SimulatedProcessUsage::onceUsed(double cpuSeconds, std::function<void()> fire) const {
    if (!hasAlarms) return nullptr;
    auto wait = std::make_shared<Wait>(Wait{.end = cpuSeconds_ + cpuSeconds, .fire = std::move(fire)});
    waits_.push_back(wait);
    return std::make_unique<Alarm>(std::move(wait));
}

void SimulatedProcessUsage::burn(double seconds) {
    cpuSeconds_ += seconds;
    for (const auto& waiting : std::exchange(waits_, {})) {
        const auto wait = waiting.lock();
        if (!wait) continue;
        if (cpuSeconds_ >= wait->end)
            wait->fire();
        else
            waits_.push_back(wait);
    }
}

}  // namespace quorvane::platform
