#include "updates/ZelkorUpdateController.h"

#include "base/Iso8601.h"
#include "base/TestHost.h"
#include "updates/ZelkorUpdateConfiguration.h"

#include <cassert>
#include <fmt/format.h>
#include <utility>

namespace quorvane {

ZelkorUpdateController::ZelkorUpdateController(Parts parts) : parts_(std::move(parts)) {
    if (const auto stored = parts_.defaults.value(lastCheckKey)) lastCheck_ = parseIso8601(*stored);
}

std::optional<std::string> ZelkorUpdateController::feedURLString() const {
    return ZelkorUpdateConfiguration::feedURL(parts_.feedHost);
}

void ZelkorUpdateController::startIfNeeded() {
    assert(parts_.runLoop.isMainThread());
    if (hasStarted_ || isUnderTestHost()) return;
    hasStarted_ = true;
    if (!hasFeed()) return;
    const auto look = [weak = weak_.handle()] {
        if (auto* self = weak.get()) self->checkIfDue();
    };
    launchCheck_ = parts_.runLoop.after(launchDelay, look);
    look_ = parts_.runLoop.every(lookInterval, look);
}

void ZelkorUpdateController::checkForUpdates() {
    if (isUnderTestHost()) return;
    startIfNeeded();
    check(true);
}

bool ZelkorUpdateController::isCheckDue() const {
    const auto now = parts_.runLoop.now();
    // A check in the future was made before somebody set the clock back.
    return !lastCheck_ || *lastCheck_ > now || now - *lastCheck_ >= checkInterval;
}

void ZelkorUpdateController::checkIfDue() {
    // What is offered and not answered yet stays as it is.
    if (isCheckDue() && state_.kind != UpdateState::Kind::available) check(false);
}

void ZelkorUpdateController::check(bool isAsked) {
    const auto url = feedURLString();
    if (!url) {
        setState({.kind = UpdateState::Kind::noFeed, .wasAsked = isAsked});
        return;
    }
    const bool wasAsked = isAsked || (state_.kind == UpdateState::Kind::checking && state_.wasAsked);
    if (state_.kind != UpdateState::Kind::checking) {
        // A check that fails counts as well: nobody's server is asked again and again.
        lastCheck_ = parts_.runLoop.now();
        (void)parts_.defaults.setValue(lastCheckKey, iso8601Seconds(*lastCheck_));
        fetch(*url, UpdateFeed::maximumFeedBytes, &ZelkorUpdateController::noteFeed);
    }
    setState({.kind = UpdateState::Kind::checking, .wasAsked = wasAsked});
}

void ZelkorUpdateController::fetch(const std::string& url, std::size_t maximumBytes, Answer answer) {
    if (!client_) client_ = parts_.makeHttpClient();
    exchange_ = client_->send({.url = url,
                               .maximumBytes = maximumBytes,
                               .timeout = requestTimeout,
                               .redirects = platform::HttpRequest::Redirects::sameOrigin},
                              [weak = weak_.handle(), answer](const platform::HttpResult& result) {
                                  if (auto* self = weak.get()) (self->*answer)(result);
                              });
}

void ZelkorUpdateController::noteFeed(const platform::HttpResult& answer) {
    if (const auto outcome = UpdateFeed::missingFeed(answer)) {
        finish(*outcome);
        return;
    }
    feed_ = std::get<platform::HttpResponse>(answer).body;
    fetch(ZelkorUpdateConfiguration::signatureURL(parts_.feedHost).value_or(""), UpdateFeed::maximumSignatureBytes,
          &ZelkorUpdateController::noteSignature);
}

void ZelkorUpdateController::noteSignature(const platform::HttpResult& answer) {
    const auto feed = std::exchange(feed_, {});
    if (const auto outcome = UpdateFeed::missingSignature(answer)) {
        finish(*outcome);
        return;
    }
    finish(UpdateFeed::judge({.feed = feed, .signature = std::get<platform::HttpResponse>(answer).body},
                             parts_.publicKey, parts_.application));
}

void ZelkorUpdateController::finish(const UpdateFeed::Outcome& outcome) {
    exchange_.reset();
    if (!outcome.refusal.empty())
        parts_.logger.log(fmt::format("The update feed {} was refused: {}",
                                      ZelkorUpdateConfiguration::feedName(parts_.feedHost), outcome.refusal),
                          LogLevel::warning, "Updates");
    auto state = outcome.state;
    state.wasAsked = state_.wasAsked;
    const bool isSkipped = state.update && parts_.defaults.value(skippedVersionKey) == describe(state.update->version);
    setState(isSkipped && !state.wasAsked ? UpdateState{} : std::move(state));
}

void ZelkorUpdateController::skipVersion() {
    if (!state_.update) return;
    (void)parts_.defaults.setValue(skippedVersionKey, describe(state_.update->version));
    setState({});
}

void ZelkorUpdateController::dismiss() {
    if (state_.kind != UpdateState::Kind::checking) setState({});
}

void ZelkorUpdateController::setState(UpdateState state) {
    // Who asks twice is answered twice.
    if (state == state_ && !state.wasAsked) return;
    state_ = std::move(state);
    changed.send();
}

}  // namespace quorvane
