#pragma once

#include "base/Date.h"
#include "capture/CaptureHealth.h"
#include "l10n/Localization.h"
#include "tracking/ActivityTracker.h"

#include <string>

namespace quorvane {

/// What people are told of the recording, wherever that is.
enum class RecordingState {
    paused,
    blind,    ///< it would record, and can't see anything
    away,     ///< it would record, and nobody is there
    partial,  ///< it records some applications, and can't see others
    recording
};

[[nodiscard]] RecordingState recordingState(bool isTracking, const CaptureHealth& health, bool isAway = false);
[[nodiscard]] inline RecordingState recordingState(const ActivityTracker& tracker) {
    return recordingState(tracker.isTracking(), tracker.captureHealth(), tracker.awaySince().has_value());
}

/// The state in one or two words.
[[nodiscard]] std::string recordingTitle(RecordingState state, const Localization& localization);

/// The same, and since when where nothing is recorded because of the user: "Away since 16:38".
[[nodiscard]] std::string recordingSentence(const ActivityTracker& tracker, const Localization& localization);

/// A moment in the past: "16:38", and with its date where that isn't today.
[[nodiscard]] std::string sinceText(Date date);

/// What can't be seen while something can, in some words: "No web addresses"; empty where nothing is missing.
[[nodiscard]] std::string missingSight(const CaptureHealth& health, const Localization& localization);

/// Why not all can be seen, and what to do about it. What has no words of its own is told as the desktop's channel
/// tells it.
struct CaptureTrouble {
    std::string reason;
    std::string remedy;
};
[[nodiscard]] CaptureTrouble captureTrouble(const CaptureHealth& health, const Localization& localization);

}  // namespace quorvane
