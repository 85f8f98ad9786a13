#include "timeline/TimelineProcessor.h"

#include "support/Builders.h"
#include "support/TemporaryStore.h"
#include "support/ThreadedRunLoop.h"
#include "timeline/TimelineProcessing.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <memory>

namespace quorvane {
namespace {

using Blocks = std::vector<TimelineProcessedSnapshot>;

/// Runs on real threads; the build with the thread sanitizer finds what they share.
class TimelineProcessorTest : public testing::Test {
protected:
    /// The snapshots of stored records, which change right after.
    std::vector<TimelineRecordSnapshot> snapshots(int count) {
        std::vector<TimelineRecordSnapshot> taken;
        for (int i = 0; i < count; ++i) {
            const auto record =
                aRecord().from("09:00:00").to("10:00:00").app(fmt::format("App {}", i % 7)).in(store.context());
            record->startTime = at("09:00:00") + i * 90s;
            record->endTime = record->startTime() + 80s;
            taken.push_back(snapshotOf(*record));
            record->appName = "another";
        }
        return taken;
    }
    TimelineProcessor::Publish publish() {
        return [this](Blocks blocks) {
            EXPECT_TRUE(runLoop.isMainThread());
            published.push_back(std::move(blocks));
        };
    }

    TemporaryStore store;
    ThreadedRunLoop runLoop;
    std::vector<Blocks> published;
};

TEST_F(TimelineProcessorTest, AHundredRestartsPublishOnceAndTheNewest) {
    const auto records = snapshots(300);
    TimelineProcessor processor(runLoop);
    for (int i = 0; i < 100; ++i) {
        for (const auto& record : store.context().fetch<ActivityRecord>({.limit = 10}))
            record->windowTitle = fmt::format("run {}", i);
        processor.start({records.begin(), records.end() - i}, at("20:00:00"), publish());
    }
    runLoop.runToTheEnd();
    ASSERT_EQ(published.size(), 1);
    EXPECT_EQ(published.front(),
              TimelineProcessing::process({records.begin(), records.end() - 99}, at("20:00:00"), Calendar::current()));
}

TEST_F(TimelineProcessorTest, NothingIsPublishedOnceCancelledOrGone) {
    const auto records = snapshots(50);
    TimelineProcessor cancelled(runLoop);
    cancelled.start(records, at("20:00:00"), publish());
    cancelled.cancel();
    auto gone = std::make_unique<TimelineProcessor>(runLoop);
    gone->start(records, at("20:00:00"), publish());
    gone.reset();
    runLoop.runToTheEnd();
    EXPECT_TRUE(published.empty());
    cancelled.start(records, at("20:00:00"), publish());
    runLoop.runToTheEnd();
    EXPECT_EQ(published.size(), 1);
}

}  // namespace
}  // namespace quorvane
