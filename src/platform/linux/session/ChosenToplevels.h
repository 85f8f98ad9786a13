#pragma once

#include "platform/RunLoop.h"
#include "platform/linux/bus/BusNames.h"
#include "platform/linux/wayland/WaylandConnection.h"
#include "platform/linux/windows/ToplevelWindows.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace quorvane::platform {

/// Who can tell of the windows of a Wayland session.
enum class ToplevelTeller : std::uint8_t { plasma, wlroots, gnomeExtension, kwinScript, accessibility };

/// What this session offers; what it calls itself proves nothing.
struct ToplevelOffers {
    bool plasma = false;   ///< KWin's protocol, which it grants to some
    bool wlroots = false;  ///< the protocol of wlroots and its like
    bool gnomeExtension = false;
    bool kwin = false;  ///< which runs scripts
};

/// The best of those who offer themselves. Assistive technology sees a part at most, so it comes last, and in any case:
/// it says itself what it lacks.
[[nodiscard]] ToplevelTeller bestTeller(const ToplevelOffers& offers);

/// The windows from whoever tells of them best, at any time: chosen anew when the compositor comes back, and when an
/// extension or KWin comes to the bus or goes. Who has told nothing for two minutes in which somebody was at work is
/// said to be silent. Main thread only.
class ChosenToplevels final : public ToplevelWindows {
public:
    /// `names` follows at least `busNames`. `isSomebodyThere`: was there input within the last seconds?
    ChosenToplevels(RunLoop& runLoop, WaylandConnection& connection, BusNames& names,
                    std::function<bool()> isSomebodyThere);

    [[nodiscard]] static std::vector<std::string> busNames();

    [[nodiscard]] std::optional<ToplevelWindow> active() const override { return windows_->active(); }
    [[nodiscard]] std::vector<ToplevelWindow> all() const override { return windows_->all(); }
    Subscription observe(std::function<void()> changed) override { return changed_.subscribe(std::move(changed)); }
    [[nodiscard]] Channel channel() const override;

private:
    [[nodiscard]] ToplevelTeller best() const;
    void chooseSoon();
    void choose();
    void ask();
    void explainPart(Channel& channel) const;

    RunLoop& runLoop_;
    WaylandConnection& connection_;
    BusNames& names_;
    std::function<bool()> isSomebodyThere_;
    ToplevelTeller teller_;
    std::unique_ptr<ToplevelWindows> windows_;  ///< always there
    Seconds silentSince_{};                     ///< as uptime
    bool hasTold_ = false;
    Signal<> changed_;
    std::unique_ptr<WorkItem> choosing_;
    Subscription told_;
    Subscription connected_;
    Subscription named_;
};

}  // namespace quorvane::platform
