#include "platform/linux/ScreenSaverSignals.h"

#include <array>
#include <utility>

namespace quorvane::platform {
namespace {

const std::array interfaces{
    QStringLiteral("org.freedesktop.ScreenSaver"), QStringLiteral("org.gnome.ScreenSaver"),
    QStringLiteral("org.mate.ScreenSaver"),        QStringLiteral("org.cinnamon.ScreenSaver"),
    QStringLiteral("org.xfce.ScreenSaver"),
};

}  // namespace

ScreenSaverSignals::ScreenSaverSignals(std::function<void(bool)> changed)
    : changed_(std::move(changed)), session_(DBusConnection::toSession()) {
    if (!session_.isConnected()) return;
    for (const auto& interface : interfaces)
        session_.bus().connect(QString(), QString(), interface, QStringLiteral("ActiveChanged"), this,
                               SLOT(noteActive(bool)));
}

std::string ScreenSaverSignals::problem() {
    if (!session_.isConnected()) return "no session bus";
    for (const auto& interface : interfaces)  // each is the service's name too
        if (session_.isOwned(interface)) return {};
    return "no screen saver is on the session bus";
}

}  // namespace quorvane::platform
