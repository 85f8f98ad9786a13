#include "hygiene/HygieneTest.h"
#include "hygiene/RandomHistory.h"
#include "store/DataCleanupService.h"
#include "store/OverlapDetectionService.h"
#include "store/RecordSpans.h"

#include <algorithm>
#include <tuple>

namespace quorvane {
namespace {

using DataCleanupPasses::Scope;

constexpr unsigned histories = 10;

/// One random history in a store of its own.
struct History {
    History(unsigned seed, Date now, bool isSaved = true) {
        for (const auto& record : randomHistory(seed, now))
            store.context().insert(record);
        if (isSaved) store.context().save();
    }
    ModelContext& context() { return store.context(); }
    TemporaryStore store;
};

class HygienePropertiesTest : public HygieneTest {
protected:
    std::vector<std::string> check(ModelContext& of, std::size_t sliceSize = RecordSpans::sliceSize) {
        OverlapDetectionService(of, runLoop, console, sliceSize).detectAndResolveOverlaps();
        runLoop.runPosted();
        return newLines();
    }

    std::vector<std::string> cleanUp(ModelContext& of, bool inBackground) {
        {
            DataCleanupService service(of, runLoop, console);
            if (inBackground)
                service.performBackgroundCleanup();
            else
                service.performSynchronousCleanup();
            runLoop.runPosted();
        }
        auto lines = console.lines();
        console.clear();
        return lines;
    }

    /// Runs one pass on each history; what it removed must satisfy the first condition and what it changed the second,
    /// both on the record as it was before. Returns how many records were touched at all.
    int touchedBy(void (*pass)(const Scope&), const std::function<bool(const ActivityRecord&)>& mayRemove,
                  const std::function<bool(const ActivityRecord&)>& mayChange) {
        int touched = 0;
        for (unsigned seed = 0; seed < histories; ++seed) {
            SCOPED_TRACE(seed);
            History history(seed, runLoop.now());
            pass({.context = history.context(), .console = console, .now = runLoop.now(), .cutoff = cutoff});
            const auto after = stateOf(*history.store.anotherContext());
            for (const auto& before : randomHistory(seed, runLoop.now())) {
                const auto kept = after.find(before->id());
                const RecordState was{before->startTime(), before->endTime(), before->updatedAt()};
                if (kept != after.end() && kept->second == was) continue;
                ++touched;
                EXPECT_TRUE(kept == after.end() ? mayRemove(*before) : mayChange(*before));
                if (kept != after.end()) {
                    EXPECT_EQ(kept->second.start, was.start);
                    EXPECT_EQ(kept->second.updatedAt, runLoop.now());
                }
            }
        }
        return touched;
    }

    [[nodiscard]] bool isInScope(const ActivityRecord& record) const {
        return record.startTime() >= cutoff || !record.endTime();
    }
    [[nodiscard]] Seconds durationOf(const ActivityRecord& record) const {
        return record.endTime().value_or(runLoop.now()) - record.startTime();
    }

    Date cutoff = runLoop.now() - 14 * 24h;
};

TEST_F(HygienePropertiesTest, NoPassTouchesARecordOutsideItsSelection) {
    using namespace DataCleanupPasses;
    const Date now = runLoop.now();
    const auto never = [](const ActivityRecord&) { return false; };
    EXPECT_GT(touchedBy(
                  removeAbnormalDurations,
                  [&](const auto& record) { return isInScope(record) && durationOf(record) > 24h; }, never),
              0);
    EXPECT_GT(touchedBy(
                  removeFutureDates, [&](const auto& record) { return record.startTime() > now; }, never),
              0);
    EXPECT_GT(touchedBy(
                  resolveOverlappingPairs, [&](const auto& record) { return isInScope(record); },
                  [&](const auto& record) { return isInScope(record) && record.endTime(); }),
              0);
    EXPECT_GT(touchedBy(endForgottenRecords, never,
                        [&](const auto& record) { return !record.endTime() && durationOf(record) > 1h; }),
              0);
    const auto isMergeable = [&](const ActivityRecord& record) {
        return record.startTime() >= cutoff && record.endTime() && record.activityType() == "app" &&
               record.appBundleId() && durationOf(record) >= 30s;
    };
    EXPECT_GT(touchedBy(mergeAdjacentRecords, isMergeable, isMergeable), 0);
    EXPECT_GT(touchedBy(
                  mergeShortRecords,
                  [&](const auto& record) {
                      return record.startTime() >= cutoff && record.endTime() < now - 300s && record.endTime() &&
                             durationOf(record) < 20s;
                  },
                  never),
              0);
    EXPECT_GT(touchedBy(endActiveRecords, never, [](const auto& record) { return !record.endTime(); }), 0);
}

TEST_F(HygienePropertiesTest, InSlicesTheCheckFindsAndMendsTheSame) {
    for (unsigned seed = 0; seed < histories; ++seed) {
        SCOPED_TRACE(seed);
        History whole(seed, runLoop.now());
        const auto lines = check(whole.context());
        EXPECT_THAT(lines, Contains(HasSubstr("重叠处理完成")));
        const auto state = stateOf(*whole.store.anotherContext());
        for (const std::size_t sliceSize : {1U, 7U, 100U}) {
            SCOPED_TRACE(sliceSize);
            History sliced(seed, runLoop.now());
            EXPECT_EQ(check(sliced.context(), sliceSize), lines);
            EXPECT_EQ(stateOf(*sliced.store.anotherContext()), state);
        }
    }
}

TEST_F(HygienePropertiesTest, WhatIsNotSavedYetIsTreatedLikeWhatIs) {
    for (unsigned seed = 0; seed < histories; ++seed) {
        SCOPED_TRACE(seed);
        for (const std::size_t sliceSize : {3U, 1000U}) {
            History saved(seed, runLoop.now());
            History unsaved(seed, runLoop.now(), false);
            EXPECT_EQ(check(unsaved.context(), sliceSize), check(saved.context(), sliceSize));
            EXPECT_EQ(stateOf(unsaved.context()), stateOf(saved.context()));
        }
        for (const bool inBackground : {false, true}) {
            History saved(seed, runLoop.now());
            History unsaved(seed, runLoop.now(), false);
            EXPECT_EQ(cleanUp(unsaved.context(), inBackground), cleanUp(saved.context(), inBackground));
            EXPECT_EQ(stateOf(unsaved.context()), stateOf(saved.context()));
        }
    }
}

TEST_F(HygienePropertiesTest, AfterACheckThatDeletedNothingASecondOneFindsNothing) {
    // A deletion can make neighbours of two records that overlap; an earlier end can't.
    int checks = 0;
    for (unsigned seed = 0; seed < histories; ++seed) {
        SCOPED_TRACE(seed);
        History history(seed, runLoop.now());
        bool deleted = true;
        for (int left = 100; deleted; --left, ++checks) {
            ASSERT_GT(left, 0) << "no end";
            const auto before = history.context().count<ActivityRecord>();
            const auto lines = check(history.context());
            deleted = history.context().count<ActivityRecord>() < before;
            EXPECT_EQ(deleted, testing::Value(lines, Contains(HasSubstr("删除"))));
        }
        const auto state = stateOf(history.context());
        EXPECT_EQ(check(history.context()).back(), "未发现重叠记录");
        EXPECT_EQ(stateOf(history.context()), state);
    }
    EXPECT_GT(checks, static_cast<int>(histories));
}

TEST_F(HygienePropertiesTest, AWalkVisitsEachRecordOnceInOrderWhateverTheSlice) {
    auto records = randomHistory(3, runLoop.now(), 40);
    for (std::size_t i = 10; i < 20; ++i)
        records[i]->startTime = runLoop.now();  // more than a slice at one instant
    for (const auto& record : records)
        context().insert(record);
    std::ranges::sort(records, {}, [](const auto& record) { return std::tuple(record->startTime(), record->id()); });
    for (const bool isSaved : {false, true}) {
        SCOPED_TRACE(isSaved);
        if (isSaved) context().save();
        for (const std::optional<Date> from : {std::optional<Date>(), std::optional(records[5]->startTime())}) {
            std::vector<Uuid> expected;
            for (const auto& record : records)
                if (!from || record->startTime() >= *from) expected.push_back(record->id());
            for (const std::size_t slice : {1U, 4U, 39U, 40U, 41U}) {
                std::vector<Uuid> visited;
                const auto visit = [&](const RecordSpan& span) { visited.push_back(span.id); };
                RecordSpans::forEach(context(), {.from = from}, visit, slice);
                EXPECT_EQ(visited, expected) << slice;
            }
        }
    }
    // A span leads nowhere once another program has removed its record.
    const auto spans = RecordSpans::read(context(), {}, 10);
    const auto other = store.anotherContext();
    for (const auto& record : other->fetch<ActivityRecord>())
        other->remove(record);
    other->save();
    records.clear();
    EXPECT_EQ(RecordSpans::record(context(), spans.front()), nullptr);
}

}  // namespace
}  // namespace quorvane
