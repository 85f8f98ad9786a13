#pragma once

#include "platform/RunLoop.h"
#include "platform/linux/bus/BusListener.h"
#include "platform/linux/windows/ToplevelWindows.h"

#include <memory>

namespace quorvane::platform {

class AtspiWindows;

/// The windows as applications tell assistive technology of them (AT-SPI), for desktops that tell nothing. It is no
/// more than a part: whoever doesn't speak to assistive technology is never seen, and browsers and Qt's applications
/// only once accessibility is granted. When one of these comes to the front, all that shows is that the former has left
/// it, and then nothing is in front. It switches nothing on, and asks without waiting.
class AccessibilityToplevels final : public ToplevelWindows {
public:
    explicit AccessibilityToplevels(RunLoop& runLoop);
    AccessibilityToplevels(const AccessibilityToplevels&) = delete;
    AccessibilityToplevels& operator=(const AccessibilityToplevels&) = delete;
    ~AccessibilityToplevels() override;

    [[nodiscard]] std::optional<ToplevelWindow> active() const override { return active_; }
    [[nodiscard]] std::vector<ToplevelWindow> all() const override { return all_; }
    Subscription observe(std::function<void()> changed) override { return changed_.subscribe(std::move(changed)); }

    /// Where it answers, too, `reason` says who isn't seen and `remedy` what helps.
    [[nodiscard]] Channel channel() const override;

private:
    void listenToSession();
    void askForBus();
    void connect(const QString& address);
    void lose();
    void settle();

    RunLoop& runLoop_;
    std::unique_ptr<AtspiWindows> windows_;  ///< none while there is no accessibility bus
    std::optional<ToplevelWindow> active_;
    std::vector<ToplevelWindow> all_;
    Signal<> changed_;
    Seconds untilRetry_;
    std::unique_ptr<WorkItem> retry_;
    std::unique_ptr<BusListener> session_;  // dies before what its callers touch
    Subscription heard_;
};

}  // namespace quorvane::platform
