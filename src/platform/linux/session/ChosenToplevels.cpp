#include "platform/linux/session/ChosenToplevels.h"

#include "base/Environment.h"
#include "platform/linux/accessibility/AccessibilityToplevels.h"
#include "platform/linux/gnome/GnomeExtension.h"
#include "platform/linux/gnome/GnomeToplevels.h"
#include "platform/linux/gnome/MutterIdleSource.h"
#include "platform/linux/kde/KWinScriptToplevels.h"
#include "platform/linux/kde/PlasmaToplevels.h"
#include "platform/linux/wayland/SwayToplevels.h"
#include "platform/linux/wayland/WlrToplevels.h"

#include <utility>

namespace quorvane::platform {
namespace {

constexpr const char* kwinService = "org.kde.KWin";
constexpr Seconds untilSilent = 120s;

}  // namespace

ToplevelTeller bestTeller(const ToplevelOffers& offers) {
    if (offers.plasma) return ToplevelTeller::plasma;
    if (offers.wlroots) return ToplevelTeller::wlroots;
    if (offers.gnomeExtension) return ToplevelTeller::gnomeExtension;
    if (offers.kwin) return ToplevelTeller::kwinScript;
    return ToplevelTeller::accessibility;
}

ChosenToplevels::ChosenToplevels(RunLoop& runLoop, WaylandConnection& connection, BusNames& names,
                                 std::function<bool()> isSomebodyThere)
    : runLoop_(runLoop), connection_(connection), names_(names), isSomebodyThere_(std::move(isSomebodyThere)),
      teller_(best()), connected_(connection.observeConnected([this] { chooseSoon(); })),
      named_(names.observe([this] { chooseSoon(); })) {
    ask();
}

std::vector<std::string> ChosenToplevels::busNames() {
    return {GnomeToplevels::service, kwinService, MutterIdleSource::service};
}

ToplevelTeller ChosenToplevels::best() const {
    return bestTeller({.plasma = PlasmaToplevels::isOffered(connection_),
                       .wlroots = WlrToplevels::isOffered(connection_),
                       .gnomeExtension = names_.isOwned(GnomeToplevels::service),
                       .kwin = names_.isOwned(kwinService)});
}

/// Not while those who tell of it are at it.
void ChosenToplevels::chooseSoon() {
    choosing_ = runLoop_.after(0s, [this] { choose(); });
}

void ChosenToplevels::choose() {
    if (const auto teller = best(); teller == std::exchange(teller_, teller)) return;
    told_.reset();
    windows_.reset();  // what one has set up on the bus goes before the next one comes
    ask();
    changed_.send();
}

void ChosenToplevels::ask() {
    switch (teller_) {
    case ToplevelTeller::plasma: windows_ = std::make_unique<PlasmaToplevels>(connection_); break;
    case ToplevelTeller::wlroots:
        windows_ = std::make_unique<SwayToplevels>(runLoop_, connection_, environment("SWAYSOCK"));
        break;
    case ToplevelTeller::gnomeExtension: windows_ = std::make_unique<GnomeToplevels>(runLoop_); break;
    case ToplevelTeller::kwinScript: windows_ = std::make_unique<KWinScriptToplevels>(runLoop_); break;
    case ToplevelTeller::accessibility: windows_ = std::make_unique<AccessibilityToplevels>(runLoop_); break;
    }
    hasTold_ = !windows_->all().empty();
    silentSince_ = runLoop_.uptime();
    told_ = windows_->observe([this] {
        hasTold_ = true;
        changed_.send();
    });
}

Channel ChosenToplevels::channel() const {
    auto channel = windows_->channel();
    if (teller_ == ToplevelTeller::accessibility) explainPart(channel);
    const Seconds silence = runLoop_.uptime() - silentSince_;
    if (channel.isAvailable && !hasTold_ && silence > untilSilent && isSomebodyThere_()) {
        channel.isAvailable = false;
        channel.obstacle = Obstacle::other;
        channel.reason = "it has told of no window yet, though somebody is at work";
    }
    return channel;
}

/// What would tell of all windows here.
void ChosenToplevels::explainPart(Channel& channel) const {
    if (!connection_.isReady()) {
        channel = connection_.channel(channel.question, "compositor");
        channel.gives = Sight::applications;
        return;
    }
    if (!channel.isAvailable)
        channel.reason = "this compositor tells no application which window is in front, and " + channel.reason;
    if (!names_.isOwned(MutterIdleSource::service)) {
        if (!PlasmaToplevels::isKWin(connection_)) return;
        channel.remedy = "Run quorvane-cli desktop install, and start Quorvane anew.";
        channel.mend = Mend::desktopAid;
    } else if (GnomeExtension::awaitsLogin()) {
        channel.obstacle = Obstacle::afterLogin;
        channel.remedy = "Log out and in again, so that GNOME Shell starts our extension.";
    } else {
        channel.obstacle = Obstacle::noExtension;
        channel.remedy = "Run quorvane-cli desktop install, then log in again.";
        channel.mend = Mend::desktopAid;
    }
}

}  // namespace quorvane::platform
