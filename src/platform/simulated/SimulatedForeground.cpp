#include "platform/simulated/SimulatedForeground.h"

namespace quorvane::platform {
namespace {

std::string titleKey(const ForegroundApplication& application) {
    return application.bundleIdentifier.value_or(application.localizedName.value_or(""));
}

}  // namespace

std::optional<ForegroundApplication> SimulatedForeground::frontmostApplication() {
    if (isCovered_) return ForegroundApplication{loginWindowBundleId, "loginwindow"};
    return frontmost_;
}

std::optional<std::string> SimulatedForeground::frontmostWindowTitle() {
    if (isCovered_ || !frontmost_) return std::nullopt;
    const auto found = titles_.find(titleKey(*frontmost_));
    return found == titles_.end() ? std::nullopt : std::optional(found->second);
}

Subscription
SimulatedForeground::observeActivation(std::function<void(const std::optional<ForegroundApplication>&)> activated) {
    return activated_.subscribe(std::move(activated));
}

Subscription SimulatedForeground::observeVacancy(std::function<void()> vacated) {
    return vacated_.subscribe(std::move(vacated));
}

void SimulatedForeground::setWindowTitle(const ForegroundApplication& application, std::optional<std::string> title) {
    if (title) {
        titles_.insert_or_assign(titleKey(application), *std::move(title));
    } else {
        titles_.erase(titleKey(application));
    }
}

}  // namespace quorvane::platform
