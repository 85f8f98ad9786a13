#pragma once

#include "platform/RunningApplications.h"
#include "platform/linux/bus/SessionEvents.h"
#include "platform/linux/desktop/ApplicationIdentity.h"

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace quorvane::platform {

/// The applications that have windows, from whoever lists those. Made and destroyed on the main thread. While the
/// session is locked or another one is in front of it, the login window is in front, without a process and a title.
class WindowApplications : public RunningApplications {
public:
    /// Is a browser's window with this title surely none of private browsing? From any thread, and without waiting.
    using Voucher = std::function<bool(std::int64_t processIdentifier, const std::string& windowTitle)>;

    WindowApplications(const ApplicationIdentity& identity, SessionEvents& session);

    [[nodiscard]] std::optional<RunningApplication> frontmost() override;
    [[nodiscard]] bool isRunning(const std::string& bundleIdentifier) override;

    /// A process that waits for its parent to notice its end has ended. No process 0 ever does.
    [[nodiscard]] bool isTerminated(std::int64_t processIdentifier) override;

    /// Who vouches for windows whose titles don't tell; nobody until this is called.
    void setVoucher(Voucher voucher);

protected:
    struct Window {
        WindowProperties properties;
        std::string title;
    };

    /// The one with the focus, and all of them. From any thread, within 250 ms.
    [[nodiscard]] virtual std::optional<Window> frontWindow() = 0;
    [[nodiscard]] virtual std::vector<WindowProperties> windows() = 0;

private:
    [[nodiscard]] bool mayBePrivate(const RunningApplication& application);

    const ApplicationIdentity& identity_;
    std::atomic<bool> isOutOfReach_;
    std::mutex mutex_;  ///< guards `voucher_`
    std::shared_ptr<const Voucher> voucher_;
    std::vector<Subscription> reach_;
};

}  // namespace quorvane::platform
