#include "platform/linux/windows/ToplevelForegroundSource.h"

#include "platform/linux/windows/ToplevelApplications.h"

#include <utility>

namespace quorvane::platform {

ToplevelForegroundSource::ToplevelForegroundSource(ToplevelWindows& windows, const ApplicationIdentity& identity,
                                                   SessionEvents& session)
    : windows_(windows), identity_(identity), session_(session), changes_(windows.observe([this] { evaluate(); })),
      reach_(session.observeReach([this](bool isOutOfReach) {
          if (isOutOfReach)
              lastActivated_.reset();
          else
              evaluate();
      })) {
    lastActivated_ = frontmostApplication();
}

std::optional<ForegroundApplication> ToplevelForegroundSource::frontmostApplication() {
    if (session_.isOutOfReach())
        return ForegroundApplication{.bundleIdentifier = loginWindowBundleId, .localizedName = "LoginWindow"};
    const auto window = windows_.active();
    return window ? std::optional(identity_.identify(propertiesOf(*window))) : std::nullopt;
}

std::optional<std::string> ToplevelForegroundSource::frontmostWindowTitle() {
    const auto window = session_.isOutOfReach() ? std::nullopt : windows_.active();
    return window && !window->title.empty() ? std::optional(window->title) : std::nullopt;
}

Subscription ToplevelForegroundSource::observeActivation(
    std::function<void(const std::optional<ForegroundApplication>&)> activated) {
    return activated_.subscribe(std::move(activated));
}

Subscription ToplevelForegroundSource::observeVacancy(std::function<void()> vacated) {
    return vacated_.subscribe(std::move(vacated));
}

Channel ToplevelForegroundSource::titleChannel() const {
    auto channel = windows_.channel();
    channel.question = "window titles";
    channel.gives = Sight::titles;
    return channel;
}

void ToplevelForegroundSource::evaluate() {
    if (session_.isOutOfReach()) return;
    auto application = frontmostApplication();
    if (application == lastActivated_) return;
    lastActivated_ = std::move(application);
    if (lastActivated_)
        activated_.send(lastActivated_);
    else
        vacated_.send();
}

}  // namespace quorvane::platform
