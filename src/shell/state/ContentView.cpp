#include "shell/state/ContentView.h"

namespace quorvane {

ContentView::ContentView(ModelContext& modelContext, ActivityTracker& tracker, ConsoleSink& console)
    : modelContext_(modelContext), tracker_(tracker), console_(console) {}

void ContentView::runFirstTask() {
    tracker_.configure(modelContext_);
    startIfNeeded();
}

void ContentView::runSecondTask() {
    startIfNeeded();
}

void ContentView::startIfNeeded() {
    if (tracker_.isTracking() || tracker_.pausedSince()) return;
    console_.write("ContentView: 启动活动追踪器");
    tracker_.startUnlessPaused();
}

void ContentView::setSelectedSection(std::optional<MainSection> section) {
    if (selectedSection_ == section) return;
    selectedSection_ = section;
    changed.send();
}

void ContentView::setShowingSettings(bool showing) {
    if (showingSettings_ == showing) return;
    showingSettings_ = showing;
    changed.send();
}

}  // namespace quorvane
