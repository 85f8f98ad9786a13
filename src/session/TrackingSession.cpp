#include "session/TrackingSession.h"

#include "platform/Clock.h"
#include "session/CaptureNote.h"
#include "store/InitialSettings.h"

namespace quorvane {

TrackingSession::TrackingSession(platform::RunLoop& runLoop, platform::Desktop& desktop, ModelContext& store,
                                 platform::UserDefaults& defaults, ConsoleSink& console)
    : store_(store), console_(console), documents_(desktop.accessibility(), desktop.runningApplications(),
                                                   desktop.automation(), console, end_.get_token()),
      scripts_(runLoop, desktop.automation(), console, platform::uptime),
      pages_(desktop.accessibility(), desktop.runningApplications(), console, end_.get_token()),
      browserURLs_(desktop.runningApplications(), desktop.automation(), scripts_, pages_, console, platform::uptime),
      categories_(defaults, console), keyboardMonitor_(runLoop, desktop.keys(), desktop.settingsPanes(), console),
      mouseMonitor_(runLoop, desktop.pointer(), console),
      tracker_(runLoop, desktop, keyboardMonitor_, mouseMonitor_,
               {.windowInfo = documents_, .browserURL = &browserURLs_, .categories = &categories_}, console),
      captureHealthChanged_(tracker_.captureHealthChanged.subscribe([this] { noteCapture(); })) {
    try {
        InitialSettings::ensure(store_);
    } catch (const StoreError& error) {  // the defaults hold, as they would from the row
        console_.line("TrackingSession: Failed to store the first settings: {}", error.what());
    }
    noteCapture();  // from now on each change is noted
}

void TrackingSession::start() {
    tracker_.configure(store_);
    tracker_.startUnlessPaused();
}

void TrackingSession::noteCapture() {
    try {
        CaptureNote::keep(store_, tracker_.captureHealth());
    } catch (const StoreError& error) {
        console_.line("TrackingSession: Failed to note what can be seen: {}", error.what());
    }
}

bool TrackingSession::stop() {
    end_.request_stop();
    tracker_.stop();
    try {
        store_.save();
        return true;
    } catch (const StoreError& error) {
        console_.line("TrackingSession: Failed to save at the end: {}", error.what());
        return false;
    }
}

}  // namespace quorvane
