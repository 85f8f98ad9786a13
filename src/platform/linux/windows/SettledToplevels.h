#pragma once

#include "platform/RunLoop.h"
#include "platform/linux/windows/ToplevelWindows.h"

#include <memory>

namespace quorvane::platform {

/// The windows without the moments in between: on the way from one window to the next some compositors say that none is
/// in front. And without haste: titles that never rest are told of some ten times a second; whoever asks gets the
/// newest.
class SettledToplevels : public ToplevelWindows {
public:
    [[nodiscard]] std::optional<ToplevelWindow> active() const final { return active_; }
    [[nodiscard]] std::vector<ToplevelWindow> all() const final { return all_; }
    Subscription observe(std::function<void()> changed) final { return changed_.subscribe(std::move(changed)); }

protected:
    /// That none is in front counts only after `patience`; at once where nobody waits (`runLoop` is null).
    SettledToplevels(RunLoop* runLoop, Seconds patience) : runLoop_(runLoop), patience_(patience) {}

    /// How things stand now.
    void settle(const std::optional<ToplevelWindow>& active, const std::vector<ToplevelWindow>& all);

    /// Whoever told of the windows has gone.
    void lose();

private:
    void take(const std::optional<ToplevelWindow>& active, const std::vector<ToplevelWindow>& all);
    void announce(bool isUrgent);

    RunLoop* runLoop_;
    Seconds patience_;
    std::optional<ToplevelWindow> active_;
    std::vector<ToplevelWindow> all_;
    std::unique_ptr<WorkItem> vacancy_;
    Seconds countedSince_{};  ///< as uptime
    int announcements_ = 0;   ///< since then
    std::unique_ptr<WorkItem> lateAnnouncement_;
    Signal<> changed_;
};

}  // namespace quorvane::platform
