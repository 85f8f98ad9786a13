#include "store/Autosave.h"

#include "platform/simulated/SimulatedRunLoop.h"
#include "support/Matchers.h"
#include "support/Matching.h"
#include "support/TemporaryStore.h"

#include <SQLiteCpp/SQLiteCpp.h>

namespace quorvane {
namespace {

class AutosaveTest : public testing::Test {
protected:
    TemporaryStore store;
    platform::SimulatedRunLoop runLoop{at("09:00:00")};
    std::vector<StoreError::Code> failures;
    std::unique_ptr<Autosave> autosave = std::make_unique<Autosave>(
        runLoop, store.context(), 2s, [this](const StoreError& error) { failures.push_back(error.code()); });

    std::size_t saved() { return store.anotherContext()->count<ActivityRecord>(); }
};

TEST_F(AutosaveTest, ChangesAreSavedTogetherAfterTheDelay) {
    const auto record = aRecord().in(store.context());
    runLoop.playFor(1.5s);
    record->windowTitle = "title";  // does not put it off
    aRecord().in(store.context());
    EXPECT_EQ(saved(), 0U);
    EXPECT_EQ(runLoop.pendingTimers(), 1);
    runLoop.playFor(0.5s);
    EXPECT_EQ(saved(), 2U);
    EXPECT_FALSE(store.context().hasChanges());
    EXPECT_EQ(runLoop.pendingTimers(), 0);

    record->windowTitle = "another";
    runLoop.playFor(2s);
    EXPECT_FALSE(store.context().hasChanges());
    EXPECT_THAT(failures, IsEmpty());
}

TEST_F(AutosaveTest, AFailureIsReportedAndTriedAgainAfterTheNextChange) {
    SQLite::Database other(store.file().string(), SQLite::OPEN_READWRITE);
    other.exec("CREATE TRIGGER refuse BEFORE INSERT ON activity_record BEGIN SELECT RAISE(ABORT, 'refused'); END");
    const auto record = aRecord().in(store.context());
    runLoop.playFor(10s);
    EXPECT_THAT(failures, ElementsAre(StoreError::Code::failed));
    other.exec("DROP TRIGGER refuse");
    record->windowTitle = "title";
    runLoop.playFor(2s);
    EXPECT_EQ(saved(), 1U);
    EXPECT_THAT(failures, ElementsAre(StoreError::Code::failed));
}

TEST_F(AutosaveTest, WhatIsDueIsSavedWhenItGoesAndNothingLater) {
    aRecord().in(store.context());
    autosave.reset();
    EXPECT_EQ(saved(), 1U);
    EXPECT_EQ(runLoop.pendingTimers(), 0);
    aRecord().in(store.context());
    runLoop.playFor(10s);
    EXPECT_EQ(saved(), 1U);
}

}  // namespace
}  // namespace quorvane
