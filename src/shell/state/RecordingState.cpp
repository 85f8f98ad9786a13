#include "shell/state/RecordingState.h"

namespace quorvane {

RecordingState recordingState(bool isTracking, const CaptureHealth& health) {
    if (!isTracking) return RecordingState::paused;
    return health.canSee() ? RecordingState::recording : RecordingState::blind;
}

std::string recordingTitle(RecordingState state, const Localization& localization) {
    switch (state) {
    case RecordingState::paused: return localization.text("menu_bar_paused");
    case RecordingState::blind: return localization.text("capture_blind_title");
    case RecordingState::recording: return localization.text("menu_bar_tracking");
    }
    return {};
}

CaptureTrouble captureTrouble(const CaptureHealth& health, const Localization& localization) {
    using platform::Obstacle;
    switch (health.obstacle) {
    case Obstacle::wayland:
        return {localization.text("capture_wayland_reason"), localization.text("capture_wayland_remedy")};
    case Obstacle::noDisplay:
        return {localization.text("capture_no_display_reason"), localization.text("capture_no_display_remedy")};
    case Obstacle::displayRefused:
        return {localization.text("capture_display_refused_reason"),
                localization.text("capture_display_refused_remedy")};
    case Obstacle::displayGone:
        return {localization.text("capture_display_gone_reason"), localization.text("capture_display_gone_remedy")};
    case Obstacle::noWindowManager:
        return {localization.text("capture_no_window_manager_reason"),
                localization.text("capture_no_window_manager_remedy")};
    case Obstacle::none:
    case Obstacle::other: break;
    }
    return {health.reason, health.remedy};
}

}  // namespace quorvane
