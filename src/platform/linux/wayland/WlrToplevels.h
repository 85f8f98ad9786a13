#pragma once

#include "platform/linux/wayland/WaylandConnection.h"
#include "platform/linux/windows/ToplevelWindows.h"

#include <memory>

namespace quorvane::platform {

/// The windows as compositors on wlroots and their like tell of them (zwlr_foreign_toplevel_manager_v1). On the way
/// from one window to the next there may be two active ones or none, in either order, so that only what holds after a
/// batch of events counts. The lock screen takes the focus from all of them.
class WlrToplevels final : public ToplevelWindows {
public:
    explicit WlrToplevels(WaylandConnection& connection);
    WlrToplevels(const WlrToplevels&) = delete;
    WlrToplevels& operator=(const WlrToplevels&) = delete;
    ~WlrToplevels() override;

    [[nodiscard]] std::optional<ToplevelWindow> active() const override { return active_; }
    [[nodiscard]] std::vector<ToplevelWindow> all() const override { return all_; }
    Subscription observe(std::function<void()> changed) override { return changed_.subscribe(std::move(changed)); }
    [[nodiscard]] Channel channel() const override;

private:
    struct Toplevels;
    void settle();

    WaylandConnection& connection_;
    std::unique_ptr<Toplevels> toplevels_;  ///< none while the compositor offers none
    std::optional<ToplevelWindow> active_;
    std::vector<ToplevelWindow> all_;
    Signal<> changed_;
    Subscription connected_;
    Subscription lost_;
    Subscription settled_;
};

}  // namespace quorvane::platform
