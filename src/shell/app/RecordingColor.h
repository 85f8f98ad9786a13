#pragma once

#include "shell/look/Theme.h"
#include "shell/state/RecordingState.h"

namespace quorvane {

/// Of the dot before the word.
[[nodiscard]] inline QColor recordingColor(RecordingState state) {
    switch (state) {
    case RecordingState::away:
    case RecordingState::paused: return theme().text3;
    case RecordingState::blind: return theme().bad;
    case RecordingState::partial: return theme().warn;
    case RecordingState::recording: return theme().ok;
    }
    return {};
}

}  // namespace quorvane
