#pragma once

#include "platform/ForegroundSource.h"
#include "platform/linux/bus/SessionEvents.h"
#include "platform/linux/desktop/ApplicationIdentity.h"
#include "platform/linux/windows/ToplevelWindows.h"

#include <vector>

namespace quorvane::platform {

/// The window that a Wayland compositor says has the focus, and its application. An activation is reported when the
/// application is another one than before, when it returns after no window had the focus, and when the session is
/// unlocked. A vacancy is also what a launcher, a panel or a locker brings that takes the focus from all windows.
class ToplevelForegroundSource final : public ForegroundSource {
public:
    ToplevelForegroundSource(ToplevelWindows& windows, const ApplicationIdentity& identity, SessionEvents& session);

    [[nodiscard]] std::optional<ForegroundApplication> frontmostApplication() override;
    [[nodiscard]] std::optional<std::string> frontmostWindowTitle() override;
    Subscription observeActivation(std::function<void(const std::optional<ForegroundApplication>&)> activated) override;
    Subscription observeVacancy(std::function<void()> vacated) override;
    [[nodiscard]] Channel channel() const override { return windows_.channel(); }
    [[nodiscard]] Channel titleChannel() const;

private:
    void evaluate();

    ToplevelWindows& windows_;
    const ApplicationIdentity& identity_;
    SessionEvents& session_;
    Signal<const std::optional<ForegroundApplication>&> activated_;
    Signal<> vacated_;
    std::optional<ForegroundApplication> lastActivated_;
    Subscription changes_;
    std::vector<Subscription> reach_;
};

}  // namespace quorvane::platform
