#include "platform/simulated/SimulatedStackSampler.h"

#include <fstream>

namespace quorvane::platform {
namespace {

/// The time in which others wait for it passes for it alone.
class SimulatedStackSampling final : public StackSampling {
public:
    explicit SimulatedStackSampling(SimulatedStackSampler& sampler) : sampler_(sampler) {}

    [[nodiscard]] bool hasEndedWithin(Seconds duration) override {
        elapsed_ += duration;
        return elapsed_ >= sampler_.needs;
    }
    [[nodiscard]] int exitStatus() const override { return sampler_.status; }
    void terminate() override { ++sampler_.terminations; }

private:
    SimulatedStackSampler& sampler_;
    Seconds elapsed_{};
};

}  // namespace

std::variant<std::unique_ptr<StackSampling>, std::string>
SimulatedStackSampler::start(int, const std::filesystem::path& output) {
    ++starts;
    lastOutput = output;
    std::ofstream(output, std::ios::binary) << text;
    if (whileBusy) whileBusy();
    if (!refusal.empty()) return refusal;
    return std::make_unique<SimulatedStackSampling>(*this);
}

}  // namespace quorvane::platform
