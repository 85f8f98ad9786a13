#pragma once

#include "base/Signal.h"
#include "diagnostics/AppLogger.h"
#include "shell/state/ApplicationPresence.h"

namespace quorvane {

/// Answers the desktop's two questions to the application. Main thread only.
class QuorvaneAppDelegate {
public:
    explicit QuorvaneAppDelegate(AppLogger& logger) : logger_(logger) {}

    /// Tracking outlives the window.
    [[nodiscard]] static bool applicationShouldTerminateAfterLastWindowClosed() { return false; }

    /// The application was started once more: brings a window to the front, or asks for a new one. Always true.
    bool applicationShouldHandleReopen(ApplicationPresence& application, bool hasVisibleWindows);

    /// "QuorvaneReopenMainWindow": there is no window to bring to the front.
    Signal<> quorvaneReopenMain;

private:
    AppLogger& logger_;
};

}  // namespace quorvane
