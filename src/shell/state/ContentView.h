#pragma once

#include "base/Signal.h"
#include "diagnostics/ConsoleSink.h"
#include "shell/state/MainSection.h"
#include "store/ModelContext.h"
#include "tracking/ActivityTracker.h"

#include <optional>

namespace quorvane {

/// What a main window knows beside its sections' own states. Each window has a new one. What it is made on outlives it.
/// Main thread only.
class ContentView {
public:
    static constexpr const char* windowTitle = "Quorvane";

    ContentView(ModelContext& modelContext, ActivityTracker& tracker, ConsoleSink& console);

    /// The first task, once the content is on screen: hands the store to the tracker, and begins tracking where it
    /// doesn't run and the user has not paused it.
    void runFirstTask();
    /// The task that follows it; nothing is left to do where tracking runs.
    void runSecondTask();

    [[nodiscard]] std::optional<MainSection> selectedSection() const { return selectedSection_; }
    void setSelectedSection(std::optional<MainSection> section);

    /// Are the settings on screen, above the section?
    [[nodiscard]] bool showingSettings() const { return showingSettings_; }
    void setShowingSettings(bool showing);

    [[nodiscard]] ModelContext& modelContext() { return modelContext_; }
    [[nodiscard]] ActivityTracker& tracker() { return tracker_; }

    /// Sent after the section or `showingSettings` has become another.
    Signal<> changed;

private:
    void startIfNeeded();

    ModelContext& modelContext_;
    ActivityTracker& tracker_;
    ConsoleSink& console_;
    bool showingSettings_ = false;
    std::optional<MainSection> selectedSection_ = MainSection::activity;
};

}  // namespace quorvane
