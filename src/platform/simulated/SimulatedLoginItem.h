#pragma once

#include "platform/LoginItem.h"

namespace quorvane::platform {

/// A login item that a test can refuse.
class SimulatedLoginItem final : public LoginItem {
public:
    [[nodiscard]] bool isEnabled() const override { return isEnabled_; }
    [[nodiscard]] std::optional<std::string> registerItem() override { return set(true); }
    [[nodiscard]] std::optional<std::string> unregisterItem() override { return set(false); }

    /// Every change fails for this reason from now on; none: no longer.
    void refuse(std::optional<std::string> reason) { refusal_ = std::move(reason); }

private:
    std::optional<std::string> set(bool isEnabled) {
        if (!refusal_) isEnabled_ = isEnabled;
        return refusal_;
    }

    bool isEnabled_ = false;
    std::optional<std::string> refusal_;
};

}  // namespace quorvane::platform
