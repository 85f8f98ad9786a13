#include "platform/linux/windows/WindowApplications.h"

#include "platform/PrivateBrowsing.h"
#include "platform/linux/process/Proc.h"

#include <algorithm>
#include <utility>

namespace quorvane::platform {

WindowApplications::WindowApplications(const ApplicationIdentity& identity, SessionEvents& session)
    : identity_(identity), isOutOfReach_(session.isOutOfReach()),
      reach_(session.observeReach([this](bool isOutOfReach) { isOutOfReach_ = isOutOfReach; })) {}

std::optional<RunningApplication> WindowApplications::frontmost() {
    if (isOutOfReach_)
        return RunningApplication{.bundleIdentifier = loginWindowBundleId, .localizedName = "LoginWindow"};
    auto window = frontWindow();
    if (!window) return std::nullopt;
    auto identity = identity_.identify(window->properties);
    RunningApplication application{.processIdentifier = window->properties.pid,
                                   .bundleIdentifier = std::move(identity.bundleIdentifier),
                                   .localizedName = std::move(identity.localizedName),
                                   .windowTitle = std::move(window->title)};
    application.mayBePrivate = mayBePrivate(application);
    return application;
}

bool WindowApplications::mayBePrivate(const RunningApplication& application) {
    if (!PrivateBrowsing::hidesMark(application.bundleIdentifier.value_or(""))) return false;
    std::unique_lock lock(mutex_);
    const auto voucher = voucher_;
    lock.unlock();
    return !voucher || !(*voucher)(application.processIdentifier, application.windowTitle);
}

void WindowApplications::setVoucher(Voucher voucher) {
    const std::lock_guard lock(mutex_);
    voucher_ = std::make_shared<const Voucher>(std::move(voucher));
}

bool WindowApplications::isRunning(const std::string& bundleIdentifier) {
    const auto all = windows();
    return std::any_of(all.begin(), all.end(), [&](const WindowProperties& window) {
        return identity_.identify(window).bundleIdentifier == bundleIdentifier;
    });
}

bool WindowApplications::isTerminated(std::int64_t processIdentifier) {
    return processIdentifier > 0 && Proc::hasEnded(static_cast<pid_t>(processIdentifier));
}

}  // namespace quorvane::platform
