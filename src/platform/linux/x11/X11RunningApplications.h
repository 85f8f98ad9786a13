#pragma once

#include "platform/RunningApplications.h"
#include "platform/linux/bus/SessionEvents.h"
#include "platform/linux/desktop/ApplicationIdentity.h"
#include "platform/linux/x11/X11Connection.h"

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>

namespace quorvane::platform {

/// The applications whose windows the window manager lists, over a connection that nobody else uses. Made and
/// destroyed on the main thread. While the session is locked the login window is in front, without a process and a
/// title.
class X11RunningApplications final : public RunningApplications {
public:
    /// Is a browser's window with this title surely none of private browsing? From any thread, and without waiting.
    using Voucher = std::function<bool(std::int64_t processIdentifier, const std::string& windowTitle)>;

    X11RunningApplications(std::unique_ptr<X11Connection> x11, const ApplicationIdentity& identity,
                           SessionEvents& sessionEvents);

    [[nodiscard]] std::optional<RunningApplication> frontmost() override;
    [[nodiscard]] bool isRunning(const std::string& bundleIdentifier) override;

    /// A process that waits for its parent to notice its end has ended. No process 0 ever does.
    [[nodiscard]] bool isTerminated(std::int64_t processIdentifier) override;

    /// Who vouches for windows whose titles don't tell; nobody until this is called.
    void setVoucher(Voucher voucher);

private:
    [[nodiscard]] bool mayBePrivate(const RunningApplication& application);

    const ApplicationIdentity& identity_;
    std::atomic<bool> isOutOfReach_;
    std::mutex mutex_;  ///< guards `x11_` and `voucher_`
    std::unique_ptr<X11Connection> x11_;
    std::shared_ptr<const Voucher> voucher_;
    std::vector<Subscription> reach_;
};

}  // namespace quorvane::platform
