#include "cli/DesktopAids.h"

#include "platform/linux/gnome/GnomeExtension.h"
#include "platform/linux/session/DisplaySession.h"

namespace quorvane::cli::DesktopAids {
namespace {

namespace GnomeExtension = platform::GnomeExtension;
using GnomeExtension::State;

const char* nameOf(State state) {
    switch (state) {
    case State::notInstalled: return "not_installed";
    case State::afterLogin: return "after_login";
    case State::off: return "off";
    case State::stopped: return "stopped";
    case State::on: return "on";
    }
    return "";
}

std::string sentenceOn(const GnomeExtension::Status& status) {
    switch (status.state) {
    case State::notInstalled: return "not installed; quorvane-cli desktop install does that";
    case State::afterLogin:
        return "installed and turned on; log out and in again, since GNOME Shell looks for new ones then";
    case State::off: return "installed, but turned off; quorvane-cli desktop install turns it on";
    case State::stopped: return "turned on, but not running: " + status.reason;
    case State::on: return "on";
    }
    return {};
}

Status told(const GnomeExtension::Status& status) {
    std::string says = sentenceOn(status);
    if (status.isOutdated)
        says += ". It is another one than this Quorvane brings; quorvane-cli desktop install renews it";
    if (status.isRenewed) says += "; GNOME Shell runs the former one until you log in again";
    return {.state = nameOf(status.state), .says = says, .file = status.folder.string()};
}

Status inGnome(GnomeExtension::Status (*what)()) {
    try {
        return told(what());
    } catch (const GnomeExtension::Error& error) {
        throw Error(error.what());
    }
}

Status removedFromGnome() {
    Status status = inGnome(GnomeExtension::remove);
    if (status.state == nameOf(State::notInstalled)) status.says = "not installed any more";
    if (status.state == nameOf(State::off)) status.says = "turned off; all users have it, so that it stays installed";
    return status;
}

bool isX11() {
    return platform::sessionKind() == platform::SessionKind::x11;
}

}  // namespace

const std::vector<Aid>& all() {
    static const std::vector<Aid> aids{{.desktop = "GNOME",
                                        .name = "extension focus@quorvane.com",
                                        .isForThisSession = [] { return !isX11() && GnomeExtension::isGnome(); },
                                        .status = [] { return inGnome(GnomeExtension::status); },
                                        .install = [] { return inGnome(GnomeExtension::install); },
                                        .remove = removedFromGnome}};
    return aids;
}

std::string reasonForNone() {
    if (isX11()) return "X11 tells which window is in front by itself";
    return "this desktop has no use for anything that Quorvane could install; quorvane-cli doctor says what it tells";
}

}  // namespace quorvane::cli::DesktopAids
