#include "platform/linux/windows/SettledToplevels.h"

namespace quorvane::platform {

void SettledToplevels::settle(const std::optional<ToplevelWindow>& active, const std::vector<ToplevelWindow>& all) {
    const bool isBetween = !active && active_ && patience_ > 0s && runLoop_;
    if (!isBetween)
        vacancy_.reset();
    else if (!vacancy_)
        vacancy_ = runLoop_->after(patience_, [this] { take(std::nullopt, all_); });
    take(isBetween ? active_ : active, all);
}

void SettledToplevels::lose() {
    vacancy_.reset();
    take(std::nullopt, {});
}

void SettledToplevels::take(const std::optional<ToplevelWindow>& active, const std::vector<ToplevelWindow>& all) {
    if (active == active_ && all == all_) return;
    active_ = active;
    all_ = all;
    changed_.send();
}

}  // namespace quorvane::platform
