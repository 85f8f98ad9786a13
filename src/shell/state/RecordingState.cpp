#include "shell/state/RecordingState.h"

#include "base/Calendar.h"
#include "base/DateText.h"
#include "platform/Clock.h"

namespace quorvane {

RecordingState recordingState(bool isTracking, const CaptureHealth& health, bool isAway) {
    if (!isTracking) return RecordingState::paused;
    if (!health.canSee()) return RecordingState::blind;
    if (isAway) return RecordingState::away;
    return health.isPartial ? RecordingState::partial : RecordingState::recording;
}

std::string recordingTitle(RecordingState state, const Localization& localization) {
    switch (state) {
    case RecordingState::paused: return localization.text("menu_bar_paused");
    case RecordingState::blind: return localization.text("capture_blind_title");
    case RecordingState::away: return localization.text("recording_away");
    case RecordingState::partial: return localization.text("recording_in_part");
    case RecordingState::recording: return localization.text("menu_bar_tracking");
    }
    return {};
}

std::string recordingSentence(const ActivityTracker& tracker, const Localization& localization) {
    const auto state = recordingState(tracker);
    if (const auto away = tracker.awaySince(); away && state == RecordingState::away)
        return localization.text("recording_away_since", sinceText(*away));
    if (const auto paused = tracker.pausedSince(); paused && state == RecordingState::paused)
        return localization.text("recording_paused_since", sinceText(*paused));
    return recordingTitle(state, localization);
}

std::string sinceText(Date date) {
    const bool isToday = Calendar::current().isSameDay(date, platform::currentDate());
    return localDateText(date, isToday ? "HH:mm" : "yyyy-MM-dd HH:mm");
}

std::string missingSight(const CaptureHealth& health, const Localization& localization) {
    using platform::Sight;
    if (health.canSee() && health.isPartial) return localization.text("health_some_applications");
    switch (health.sight) {
    case Sight::nothing:
    case Sight::pages: return {};
    case Sight::applications: return localization.text("health_no_titles");
    case Sight::titles: return localization.text("health_no_documents");
    case Sight::documents: return localization.text("health_no_pages");
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
    case Obstacle::noExtension:
        return {localization.text("capture_no_extension_reason"), localization.text("capture_no_extension_remedy")};
    case Obstacle::afterLogin:
        return {localization.text("capture_after_login_reason"), localization.text("capture_after_login_remedy")};
    case Obstacle::noBrowser:
        return {localization.text("capture_no_browser_reason"), localization.text("capture_no_browser_remedy")};
    case Obstacle::none:
    case Obstacle::other: break;
    }
    return {health.reason, health.remedy};
}

}  // namespace quorvane
