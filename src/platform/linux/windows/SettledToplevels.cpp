#include "platform/linux/windows/SettledToplevels.h"

namespace quorvane::platform {
namespace {

/// So many changes in a second are told of at once, and the further ones together.
constexpr int promptAnnouncements = 20;
constexpr Seconds untilLateAnnouncement = 0.1s;

bool areOfOneApplication(const std::optional<ToplevelWindow>& a, const std::optional<ToplevelWindow>& b) {
    return a.has_value() == b.has_value() &&
           (!a || (a->appId == b->appId && a->processIdentifier == b->processIdentifier));
}

}  // namespace

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
    const bool isSwitch = !areOfOneApplication(active, active_);
    active_ = active;
    all_ = all;
    announce(isSwitch);
}

void SettledToplevels::announce(bool isUrgent) {
    if (lateAnnouncement_ && !isUrgent) return;
    if (runLoop_ && runLoop_->uptime() - countedSince_ >= 1s) {
        countedSince_ = runLoop_->uptime();
        announcements_ = 0;
    }
    if (isUrgent || !runLoop_ || ++announcements_ <= promptAnnouncements) {
        lateAnnouncement_.reset();
        changed_.send();
    } else {
        lateAnnouncement_ = runLoop_->after(untilLateAnnouncement, [this] {
            lateAnnouncement_.reset();
            changed_.send();
        });
    }
}

}  // namespace quorvane::platform
