#pragma once

#include "platform/linux/windows/ToplevelWindows.h"
#include "platform/linux/windows/WindowApplications.h"

#include <mutex>

namespace quorvane::platform {

/// What a window of a Wayland session says about its application.
[[nodiscard]] WindowProperties propertiesOf(const ToplevelWindow& window);

/// The applications whose windows the compositor tells of.
class ToplevelApplications final : public WindowApplications {
public:
    ToplevelApplications(ToplevelWindows& windows, const ApplicationIdentity& identity, SessionEvents& session);

protected:
    [[nodiscard]] std::optional<Window> frontWindow() override;
    [[nodiscard]] std::vector<WindowProperties> windows() override;

private:
    void copy();

    ToplevelWindows& windows_;
    std::mutex mutex_;  ///< guards the copies, which any thread may ask for
    std::optional<ToplevelWindow> active_;
    std::vector<ToplevelWindow> all_;
    Subscription changes_;
};

}  // namespace quorvane::platform
