#include "platform/linux/x11/X11RunningApplications.h"

#include "platform/linux/x11/X11Windows.h"

#include <algorithm>
#include <utility>

namespace quorvane::platform {
namespace {

/// The server's share of the 300 ms in which an answer has to come.
constexpr Seconds patienceWithWindows = 0.25s;

}  // namespace

X11RunningApplications::X11RunningApplications(std::unique_ptr<X11Connection> x11, const ApplicationIdentity& identity,
                                               SessionEvents& session)
    : WindowApplications(identity, session), x11_(std::move(x11)) {
    // Asked for the first time it would be waited for without a bound.
    static_cast<void>(x11_->extension(&xcb_res_id));
}

std::optional<WindowApplications::Window> X11RunningApplications::frontWindow() {
    const std::lock_guard lock(mutex_);
    x11_->setDeadline(Deadline(patienceWithWindows));
    const auto window = X11Windows::active(*x11_);
    if (window == XCB_WINDOW_NONE) return std::nullopt;
    auto properties = X11Windows::properties(*x11_, X11Windows::ask(*x11_, window));
    auto title = X11Windows::title(*x11_, window).value_or("");
    return properties ? std::optional(Window{*std::move(properties), std::move(title)}) : std::nullopt;
}

std::vector<WindowProperties> X11RunningApplications::windows() {
    const std::lock_guard lock(mutex_);
    x11_->setDeadline(Deadline(patienceWithWindows));
    std::vector<X11Windows::Question> questions;
    for (const auto window : X11Windows::all(*x11_))
        questions.push_back(X11Windows::ask(*x11_, window));
    std::vector<WindowProperties> windows;
    for (const auto& question : questions) {
        auto properties = X11Windows::properties(*x11_, question);
        // Windows of one process often say the same; it is identified once.
        if (properties && std::find(windows.begin(), windows.end(), *properties) == windows.end())
            windows.push_back(*std::move(properties));
    }
    return windows;
}

}  // namespace quorvane::platform
