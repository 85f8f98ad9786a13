#pragma once

#include "l10n/Localization.h"
#include "platform/Clock.h"
#include "platform/simulated/InMemoryUserDefaults.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "store/ProjectTimeAnnotation.h"
#include "support/Builders.h"
#include "support/Matching.h"
#include "support/RecordingConsole.h"
#include "support/TemporaryStore.h"

namespace quorvane {

/// What works on a store in simulated time; it is noon of Monday, 2 March 2026, unless a test says otherwise.
class StoreTest : public testing::Test {
protected:
    explicit StoreTest(std::string_view now = "12:00:00") : runLoop(at(now)) {}

    [[nodiscard]] ModelContext& context() { return store.context(); }

    /// Time that is given to a project by hand, inserted and not saved yet.
    std::shared_ptr<ProjectTimeAnnotation> assign(const std::shared_ptr<Project>& project, std::string_view from,
                                                  std::string_view to) {
        const auto annotation = std::make_shared<ProjectTimeAnnotation>();
        annotation->startTime = at(from);
        annotation->endTime = at(to);
        annotation->project = project;
        context().insert(annotation);
        return annotation;
    }

    platform::SimulatedRunLoop runLoop;
    platform::ClockOverride clock{[this] { return runLoop.now(); }};
    TemporaryStore store;
    RecordingConsole console;
    platform::InMemoryUserDefaults defaults;
    Localization localization{"en"};
};

}  // namespace quorvane
