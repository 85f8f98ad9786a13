#include "platform/linux/session/DesktopAids.h"

#include "platform/linux/bus/SessionBusQuestions.h"
#include "platform/linux/gnome/GnomeExtension.h"
#include "platform/linux/kde/PlasmaGrant.h"
#include "platform/linux/session/DisplaySession.h"

namespace quorvane::platform::DesktopAids {
namespace {

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
    return sessionKind() == SessionKind::x11;
}

bool isPlasma() {
    return SessionBusQuestions(Deadline(1s)).processOf(QStringLiteral("org.kde.KWin")) != 0;
}

Status inPlasma() {
    for (const PlasmaGrant& grant : PlasmaGrant::ofThisInstallation())
        if (const auto problem = grant.problem(); !problem.empty())
            return {.state = nameOf(State::notInstalled),
                    .says = problem + "; until then a script in KWin tells of the windows",
                    .file = {}};
    const auto grants = PlasmaGrant::ofThisInstallation();
    const auto file = grants.empty() ? std::filesystem::path() : grants.front().file();
    std::error_code error;
    return {.state = nameOf(State::on),
            .says = "KWin tells Quorvane of the windows from its next start on",
            .file = std::filesystem::exists(file, error) ? file.string() : std::string()};
}

Status inPlasmaAfter(std::optional<std::string> (PlasmaGrant::*what)() const) {
    for (const PlasmaGrant& grant : PlasmaGrant::ofThisInstallation())
        if (const auto hindrance = (grant.*what)()) throw Error(*hindrance);
    return inPlasma();
}

}  // namespace

std::vector<Aid> here() {
    const std::vector<Aid> all{{.desktop = "GNOME",
                                .name = "extension focus@quorvane.com",
                                .isForThisSession = [] { return !isX11() && GnomeExtension::isGnome(); },
                                .status = [] { return inGnome(GnomeExtension::status); },
                                .install = [] { return inGnome(GnomeExtension::install); },
                                .remove = removedFromGnome},
                               {.desktop = "KDE Plasma",
                                .name = "desktop file that asks KWin for the windows",
                                .isForThisSession = [] { return !isX11() && isPlasma(); },
                                .status = inPlasma,
                                .install = [] { return inPlasmaAfter(&PlasmaGrant::install); },
                                .remove = [] { return inPlasmaAfter(&PlasmaGrant::remove); }}};
    std::vector<Aid> here;
    for (const Aid& aid : all)
        if (aid.isForThisSession()) here.push_back(aid);
    return here;
}

std::string reasonForNone() {
    if (isX11()) return "X11 tells which window is in front by itself";
    return "this desktop has no use for anything that Quorvane could install; quorvane-cli doctor says what it tells";
}

}  // namespace quorvane::platform::DesktopAids
