#include "platform/linux/windows/ToplevelApplications.h"

namespace quorvane::platform {

WindowProperties propertiesOf(const ToplevelWindow& window) {
    // The identifier is a desktop file's name or the class of an X11 window.
    return {.instance = window.appId,
            .wmClass = window.appId,
            .kdeDesktopFile = window.appId,
            .pid = static_cast<pid_t>(window.processIdentifier)};
}

ToplevelApplications::ToplevelApplications(ToplevelWindows& windows, const ApplicationIdentity& identity,
                                           SessionEvents& session)
    : WindowApplications(identity, session), windows_(windows), changes_(windows.observe([this] { copy(); })) {
    copy();
}

void ToplevelApplications::copy() {
    auto active = windows_.active();
    auto all = windows_.all();
    const std::lock_guard lock(mutex_);
    active_ = std::move(active);
    all_ = std::move(all);
}

std::optional<WindowApplications::Window> ToplevelApplications::frontWindow() {
    const std::lock_guard lock(mutex_);
    return active_ ? std::optional(Window{propertiesOf(*active_), active_->title}) : std::nullopt;
}

std::vector<WindowProperties> ToplevelApplications::windows() {
    const std::lock_guard lock(mutex_);
    std::vector<WindowProperties> properties;
    for (const ToplevelWindow& window : all_)
        properties.push_back(propertiesOf(window));
    return properties;
}

}  // namespace quorvane::platform
