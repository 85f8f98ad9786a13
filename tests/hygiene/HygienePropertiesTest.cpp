#include "hygiene/HygieneTest.h"
#include "hygiene/RandomHistory.h"
#include "store/DataCleanupService.h"
#include "store/OverlapDetectionService.h"
#include "store/RecordHygiene.h"
#include "store/RecordSpans.h"
#include "store/RecordTrash.h"

#include <algorithm>
#include <fmt/format.h>
#include <tuple>

namespace quorvane {
namespace {

using DataCleanupPasses::Scope;

constexpr unsigned histories = 10;
constexpr unsigned manyHistories = 20;

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
    int touchedBy(bool (*pass)(const Scope&), const std::function<bool(const ActivityRecord&)>& mayRemove,
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
                    EXPECT_TRUE(kept->second.updatedAt == runLoop.now() || !was.end);
                }
            }
        }
        return touched;
    }

    /// As it is once what was left open has its end.
    [[nodiscard]] std::vector<std::shared_ptr<ActivityRecord>> endedHistory(unsigned seed) const {
        auto records = randomHistory(seed, runLoop.now());
        for (const auto& record : records)
            if (!record->endTime())
                record->endTime = RecordHygiene::endOfLeftOpen(record->startTime(), record->updatedAt(), runLoop.now());
        return records;
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
    const auto isOpen = [](const auto& record) { return !record.endTime(); };
    EXPECT_GT(touchedBy(endLeftOpenRecords, never, isOpen), 0);
    EXPECT_GT(touchedBy(endActiveRecords, never, isOpen), 0);
    const auto isMergeable = [&](const ActivityRecord& record) {
        return record.startTime() >= cutoff && record.endTime() && record.activityType() == "app" &&
               record.appBundleId() && durationOf(record) >= 30s;
    };
    EXPECT_GT(touchedBy(mergeAdjacentRecords, isMergeable, isMergeable), 0);
    const auto isOld = [&](const ActivityRecord& record) {
        return record.startTime() >= cutoff && record.endTime() && record.endTime() < now - 300s;
    };
    EXPECT_GT(
        touchedBy(
            mergeShortRecords, [&](const auto& record) { return isOld(record) && durationOf(record) < 20s; }, isOld),
        0);
}

/// What of the stretch from `start` to `end` lies in none of the others.
Seconds uncovered(Date start, Date end, const std::vector<std::pair<Date, Date>>& others) {
    std::vector<std::pair<Date, Date>> pieces;
    if (start < end) pieces.emplace_back(start, end);
    for (const auto& [from, to] : others) {
        std::vector<std::pair<Date, Date>> rest;
        for (const auto& [first, last] : pieces) {
            rest.emplace_back(first, std::min(last, from));
            rest.emplace_back(std::max(first, to), last);
        }
        std::erase_if(rest, [](const auto& piece) { return piece.second <= piece.first; });
        pieces = std::move(rest);
    }
    Seconds sum{};
    for (const auto& [first, last] : pieces)
        sum += last - first;
    return sum;
}

/// Where the application of the record was, by these records.
std::vector<std::pair<Date, Date>> stretchesLike(const ActivityRecord& record,
                                                 const std::vector<std::shared_ptr<ActivityRecord>>& all) {
    std::vector<std::pair<Date, Date>> found;
    for (const auto& one : all)
        if (one->appName() == record.appName() && one->endTime() > one->startTime())
            found.emplace_back(one->startTime(), *one->endTime());
    return found;
}

std::vector<std::shared_ptr<ActivityRecord>> withTrash(ModelContext& context) {
    auto all = context.fetch<ActivityRecord>();
    for (const auto& trashed : RecordTrash::content(context))
        all.push_back(RecordTrash::recordOf(context, *trashed));
    return all;
}

TEST_F(HygienePropertiesTest, NoMinuteIsLostOrInventedNothingSettledChangesAndASecondRunFindsNothing) {
    const std::function<void(ModelContext&)> runs[] = {[&](ModelContext& of) { cleanUp(of, true); },
                                                       [&](ModelContext& of) { cleanUp(of, false); },
                                                       [&](ModelContext& of) { check(of, 7); }};
    for (const auto& run : runs)
        for (unsigned seed = 0; seed < manyHistories; ++seed) {
            SCOPED_TRACE(fmt::format("run {}, seed {}", &run - runs, seed));
            History history(seed, runLoop.now());
            const auto before = endedHistory(seed);
            run(history.context());
            const auto after = history.context().fetch<ActivityRecord>();
            const auto kept = withTrash(history.context());
            const auto state = stateOf(history.context());
            for (const auto& record : before) {
                EXPECT_EQ(uncovered(record->startTime(), *record->endTime(), stretchesLike(*record, kept)), 0s);
                if (!RecordHygiene::isSettled(*record)) continue;
                EXPECT_EQ(state.at(record->id()),
                          (RecordState{record->startTime(), record->endTime(), record->updatedAt()}));
            }
            for (const auto& record : after) {
                const auto was = stretchesLike(*record, before);
                const auto merges = static_cast<double>(before.size() + 1 - after.size());
                EXPECT_LE(uncovered(record->startTime(), *record->endTime(), was), 30s * merges) << "gaps alone";
            }
            run(history.context());
            EXPECT_EQ(stateOf(history.context()), state);
            EXPECT_EQ(RecordTrash::content(history.context()).size() + after.size(), kept.size());
        }
}

TEST_F(HygienePropertiesTest, WhatIsJoinedAgreesOrIsAFragment) {
    int joined = 0;
    for (unsigned seed = 0; seed < manyHistories; ++seed) {
        SCOPED_TRACE(seed);
        History history(seed, runLoop.now());
        cleanUp(history.context(), true);
        const auto all = withTrash(history.context());
        const std::vector trash(all.begin() + std::ssize(history.context().fetch<ActivityRecord>()), all.end());
        for (const auto& record : endedHistory(seed)) {
            if (std::ranges::any_of(all, [&](const auto& one) { return one->id() == record->id(); })) continue;
            ++joined;
            // An overlap may have cut it before.
            const Seconds left = uncovered(record->startTime(), *record->endTime(), stretchesLike(*record, trash));
            EXPECT_TRUE(std::ranges::any_of(all, [&](const auto& one) {
                return one->startTime() <= record->startTime() && one->endTime() >= record->startTime() + left &&
                       (RecordSpans::agree(*one, *record) || (one->appName() == record->appName() && left < 20s));
            }));
        }
    }
    EXPECT_GT(joined, 0);
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
