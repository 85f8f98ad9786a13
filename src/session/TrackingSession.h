#pragma once

#include "capture/AccessibilityBrowserURLParser.h"
#include "capture/AppleScriptManager.h"
#include "capture/BrowserURLFetcher.h"
#include "capture/DocumentPathFetcher.h"
#include "diagnostics/ConsoleSink.h"
#include "platform/Desktop.h"
#include "platform/RunLoop.h"
#include "platform/UserDefaults.h"
#include "rules/CategoryTagManager.h"
#include "store/ModelContext.h"
#include "tracking/ActivityTracker.h"
#include "tracking/KeyboardMonitor.h"
#include "tracking/MouseMonitor.h"

namespace quorvane {

/// A tracker with all that it asks, put together over an open store, which gets its first settings if it has none. Both
/// programs that track use this one assembly. Whatever it is made on must outlive it, and so must the run loop's
/// workers be done before it goes. Main thread only.
class TrackingSession {
public:
    TrackingSession(platform::RunLoop& runLoop, platform::Desktop& desktop, ModelContext& store,
                    platform::UserDefaults& defaults, ConsoleSink& console);

    /// Cleans up what an earlier run left and begins tracking, unless the user has paused it.
    void start();

    /// Ends tracking with the open record closed and saved; false if it could not be saved, with a line that says why.
    /// Meant for the end of the program: it waits for nothing that the run loop would bring, and calls workers off.
    bool stop();

    [[nodiscard]] ActivityTracker& tracker() { return tracker_; }
    [[nodiscard]] DocumentPathFetcher& documents() { return documents_; }
    [[nodiscard]] BrowserURLFetcher& browserURLs() { return browserURLs_; }
    [[nodiscard]] CategoryTagManager& categories() { return categories_; }

private:
    void noteCapture();

    ModelContext& store_;
    ConsoleSink& console_;
    std::stop_source end_;  ///< ends what workers search
    DocumentPathFetcher documents_;
    AppleScriptManager scripts_;
    AccessibilityBrowserURLParser pages_;
    BrowserURLFetcher browserURLs_;
    CategoryTagManager categories_;
    KeyboardMonitor keyboardMonitor_;
    MouseMonitor mouseMonitor_;
    ActivityTracker tracker_;
    Subscription captureHealthChanged_;
};

}  // namespace quorvane
