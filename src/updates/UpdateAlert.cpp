#include "updates/UpdateAlert.h"

namespace quorvane {
namespace {

std::string failureText(UpdateFailure failure, const Localization& localization) {
    switch (failure) {
    case UpdateFailure::unreachable: return localization.text("ui_update_failed_unreachable");
    case UpdateFailure::insecure: return localization.text("ui_update_failed_insecure");
    case UpdateFailure::untrusted: return localization.text("ui_update_failed_untrusted");
    case UpdateFailure::unreadable: return localization.text("ui_update_failed_unreadable");
    }
    return {};
}

UpdateAlert offerAlert(const AvailableUpdate& update, const std::string& own, const Localization& localization) {
    return {.title = localization.text("ui_update_available_title", update.version.shortVersion),
            .message = localization.text("ui_update_available_message", own),
            .notes = update.notes,
            .link = update.link,
            .downloadButton = localization.text("ui_update_download"),
            .laterButton = localization.text("ui_update_later"),
            .skipButton = localization.text("ui_update_skip")};
}

}  // namespace

std::optional<UpdateAlert> updateAlert(const UpdateState& state, const ApplicationInfo& application,
                                       const Localization& localization) {
    const auto own = application.shortVersion.value_or("-");
    if (state.update) return offerAlert(*state.update, own, localization);
    if (!state.wasAsked) return std::nullopt;
    switch (state.kind) {
    case UpdateState::Kind::upToDate:
        return UpdateAlert{.title = localization.text("ui_update_up_to_date_title"),
                           .message = localization.text("ui_update_up_to_date_message", own)};
    case UpdateState::Kind::failed:
        return UpdateAlert{.title = localization.text("ui_update_failed_title"),
                           .message = failureText(state.failure.value_or(UpdateFailure::unreachable), localization)};
    case UpdateState::Kind::noFeed:
        return UpdateAlert{.title = localization.text("ui_update_packages"),
                           .message = localization.text("ui_update_packages_message")};
    case UpdateState::Kind::idle:
    case UpdateState::Kind::checking:
    case UpdateState::Kind::available: break;
    }
    return std::nullopt;
}

}  // namespace quorvane
