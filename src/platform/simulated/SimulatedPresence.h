#pragma once

#include "platform/PresenceSource.h"

#include <atomic>

namespace quorvane::platform {

/// A call or a film that a script begins and ends.
class SimulatedPresence : public PresenceSource {
public:
    [[nodiscard]] std::optional<std::string> quietPresence() override {
        ++questions_;
        return isThere_ ? std::optional<std::string>("a film") : std::nullopt;
    }
    [[nodiscard]] Channel channel() override {
        return {.question = "calls and films", .name = "simulated", .isAvailable = true};
    }

    void show(bool isThere) { isThere_ = isThere; }
    [[nodiscard]] int questions() const { return questions_; }

private:
    std::atomic<bool> isThere_ = false;
    std::atomic<int> questions_ = 0;
};

}  // namespace quorvane::platform
