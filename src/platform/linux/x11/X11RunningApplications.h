#pragma once

#include "platform/linux/windows/WindowApplications.h"
#include "platform/linux/x11/X11Connection.h"

#include <memory>
#include <mutex>

namespace quorvane::platform {

/// The applications whose windows the window manager lists, over a connection that nobody else uses.
class X11RunningApplications final : public WindowApplications {
public:
    X11RunningApplications(std::unique_ptr<X11Connection> x11, const ApplicationIdentity& identity,
                           SessionEvents& session);

protected:
    [[nodiscard]] std::optional<Window> frontWindow() override;
    [[nodiscard]] std::vector<WindowProperties> windows() override;

private:
    std::mutex mutex_;  ///< guards `x11_`
    std::unique_ptr<X11Connection> x11_;
};

}  // namespace quorvane::platform
