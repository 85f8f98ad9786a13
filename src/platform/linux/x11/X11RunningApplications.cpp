#include "platform/linux/x11/X11RunningApplications.h"

#include "platform/PrivateBrowsing.h"
#include "platform/linux/process/Proc.h"
#include "platform/linux/x11/X11Windows.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace quorvane::platform {
namespace {

/// The server's share of the 300 ms in which an answer has to come.
constexpr Seconds patienceWithWindows = 0.25s;

}  // namespace

X11RunningApplications::X11RunningApplications(std::unique_ptr<X11Connection> x11, const ApplicationIdentity& identity,
                                               SessionEvents& sessionEvents)
    : identity_(identity), isOutOfReach_(sessionEvents.isOutOfReach()), x11_(std::move(x11)),
      reach_(sessionEvents.observeReach([this](bool isOutOfReach) { isOutOfReach_ = isOutOfReach; })) {}

std::optional<RunningApplication> X11RunningApplications::frontmost() {
    if (isOutOfReach_)
        return RunningApplication{.bundleIdentifier = loginWindowBundleId, .localizedName = "LoginWindow"};
    RunningApplication application;
    std::optional<WindowProperties> properties;
    {
        const std::lock_guard lock(mutex_);
        x11_->setDeadline(Deadline(patienceWithWindows));
        const auto window = X11Windows::active(*x11_);
        if (window == XCB_WINDOW_NONE) return std::nullopt;
        properties = X11Windows::properties(*x11_, X11Windows::ask(*x11_, window));
        application.windowTitle = X11Windows::title(*x11_, window).value_or("");
    }
    if (!properties) return std::nullopt;
    auto identity = identity_.identify(*properties);
    application.processIdentifier = properties->pid;
    application.bundleIdentifier = std::move(identity.bundleIdentifier);
    application.localizedName = std::move(identity.localizedName);
    application.mayBePrivate = mayBePrivate(application);
    return application;
}

bool X11RunningApplications::mayBePrivate(const RunningApplication& application) {
    if (!PrivateBrowsing::hidesMark(application.bundleIdentifier.value_or(""))) return false;
    std::unique_lock lock(mutex_);
    const auto voucher = voucher_;
    lock.unlock();
    return !voucher || !(*voucher)(application.processIdentifier, application.windowTitle);
}

void X11RunningApplications::setVoucher(Voucher voucher) {
    const std::lock_guard lock(mutex_);
    voucher_ = std::make_shared<const Voucher>(std::move(voucher));
}

bool X11RunningApplications::isRunning(const std::string& bundleIdentifier) {
    std::vector<WindowProperties> windows;
    {
        const std::lock_guard lock(mutex_);
        x11_->setDeadline(Deadline(patienceWithWindows));
        std::vector<X11Windows::Question> questions;
        for (const auto window : X11Windows::all(*x11_))
            questions.push_back(X11Windows::ask(*x11_, window));
        for (const auto& question : questions) {
            auto properties = X11Windows::properties(*x11_, question);
            // Windows of one process often say the same; it is identified once.
            if (properties && std::find(windows.begin(), windows.end(), *properties) == windows.end())
                windows.push_back(*std::move(properties));
        }
    }
    return std::any_of(windows.begin(), windows.end(), [&](const WindowProperties& window) {
        return identity_.identify(window).bundleIdentifier == bundleIdentifier;
    });
}

bool X11RunningApplications::isTerminated(std::int64_t processIdentifier) {
    return processIdentifier > 0 && Proc::hasEnded(static_cast<pid_t>(processIdentifier));
}

}  // namespace quorvane::platform
