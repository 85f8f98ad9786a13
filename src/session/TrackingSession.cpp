#include "session/TrackingSession.h"

namespace quorvane {

TrackingSession::TrackingSession(platform::RunLoop& runLoop, platform::Desktop& desktop, ModelContext& store,
                                 platform::UserDefaults& defaults, ConsoleSink& console)
    : store_(store), console_(console), windowInfo_(desktop.foreground()), categories_(defaults, console),
      keyboardMonitor_(runLoop, desktop.keys(), desktop.settingsPanes(), console),
      mouseMonitor_(runLoop, desktop.pointer(), console),
      tracker_(runLoop, desktop, keyboardMonitor_, mouseMonitor_,
               {.windowInfo = windowInfo_, .categories = &categories_}, console) {}

void TrackingSession::start() {
    tracker_.configure(store_);
    tracker_.start();
}

bool TrackingSession::stop() {
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
