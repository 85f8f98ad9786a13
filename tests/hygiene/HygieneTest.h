#pragma once

#include "platform/Clock.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "store/Database.h"
#include "support/Builders.h"
#include "support/Matching.h"
#include "support/RecordingConsole.h"
#include "support/TemporaryStore.h"

#include <memory>

namespace quorvane {

/// A store at noon of Monday, 2 March 2026, and what a service that cleans it up prints.
class HygieneTest : public testing::Test {
protected:
    explicit HygieneTest(const std::string& service = "OverlapDetectionService") : prefix_(service + ": ") {}

    ModelContext& context() { return store.context(); }

    /// Saves records such as "Editor 09:00:00 to 09:30:00"; without an end it is open, and "-" has no name.
    void given(const std::vector<std::string>& records);

    /// The file holds these records and no others. They come back.
    std::vector<std::shared_ptr<ActivityRecord>> expectStored(const std::vector<std::string>& records);

    /// A saved record; without an end it is open.
    std::shared_ptr<ActivityRecord> add(const std::string& app, std::string_view start, std::string_view end = {});

    /// The same by its length.
    std::shared_ptr<ActivityRecord> add(const std::string& app, Date start, Seconds duration);

    /// What stands in the file, by start and insertion, as another program sees it.
    std::vector<std::shared_ptr<ActivityRecord>> stored();

    /// The printed lines since the last call, without the name of the service.
    std::vector<std::string> newLines();

    /// Makes each statement of the kind fail: "DELETE", "UPDATE", "INSERT".
    void refuse(const std::string& statement);
    void allow(const std::string& statement);
    /// Makes each fetch of records fail.
    void hideRecords();

    platform::SimulatedRunLoop runLoop{at("12:00:00")};
    platform::ClockOverride clock{[this] { return runLoop.now(); }};
    RecordingConsole console;
    TemporaryStore store;

private:
    std::string prefix_;
    Database otherProgram_{{.file = store.file()}};
};

}  // namespace quorvane
