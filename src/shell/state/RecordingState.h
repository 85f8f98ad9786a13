#pragma once

#include "capture/CaptureHealth.h"
#include "l10n/Localization.h"
#include "tracking/ActivityTracker.h"

#include <string>

namespace quorvane {

/// What people are told of the recording, wherever that is.
enum class RecordingState {
    paused,
    blind,  ///< it would record, and can't see anything
    recording
};

[[nodiscard]] RecordingState recordingState(bool isTracking, const CaptureHealth& health);
[[nodiscard]] inline RecordingState recordingState(const ActivityTracker& tracker) {
    return recordingState(tracker.isTracking(), tracker.captureHealth());
}

/// The state in one or two words.
[[nodiscard]] std::string recordingTitle(RecordingState state, const Localization& localization);

/// Why nothing can be seen, and what to do about it. What has no words of its own is told as the desktop's channel
/// tells it.
struct CaptureTrouble {
    std::string reason;
    std::string remedy;
};
[[nodiscard]] CaptureTrouble captureTrouble(const CaptureHealth& health, const Localization& localization);

}  // namespace quorvane
