#include "store/RecordSpans.h"

#include "hygiene/HygieneTest.h"
#include "hygiene/RandomHistory.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <tuple>

namespace quorvane {
namespace {

class RecordSpansTest : public HygieneTest {
protected:
    std::vector<Uuid> visited(const RecordSpans::Query& query, std::size_t slice) {
        std::vector<Uuid> ids;
        RecordSpans::forEach(
            context(), query, [&](const RecordSpan& span) { ids.push_back(span.id); }, slice);
        return ids;
    }
};

TEST_F(RecordSpansTest, AWalkVisitsEachRecordOnceInOrderWhateverTheSlice) {
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
            for (const std::size_t slice : {1U, 4U, 39U, 40U, 41U})
                EXPECT_EQ(visited({.from = from}, slice), expected) << slice;
        }
    }
}

TEST_F(RecordSpansTest, ASpanLeadsToItsRecord) {
    const auto saved = add("Saved", "09:00:00", "10:00:00");
    const auto changed = add("Changed", "10:00:00", "11:00:00");
    for (const bool isChanged : {false, true}) {
        SCOPED_TRACE(isChanged);
        if (isChanged) changed->endTime = std::nullopt;
        const auto spans = RecordSpans::read(context(), {.withBundleId = true}, 10);
        ASSERT_EQ(spans.size(), 2);
        EXPECT_EQ(RecordSpans::record(context(), spans[0]), saved);
        EXPECT_EQ(RecordSpans::record(context(), spans[1]), changed);
        EXPECT_EQ(spans[0].end, at("10:00:00"));
        EXPECT_EQ(spans[0].bundleId, "org.example.saved");
        EXPECT_EQ(spans[1].end.has_value(), !isChanged);
        EXPECT_EQ(spans[1].duration(runLoop.now()), isChanged ? 2h : 1h);
    }
}

TEST_F(RecordSpansTest, ASpanLeadsNowhereOnceAnotherProgramHasRemovedItsRecord) {
    add("Gone", "09:00:00", "10:00:00");
    const auto spans = RecordSpans::read(context(), {}, 10);
    const auto other = store.anotherContext();
    other->remove(other->fetch<ActivityRecord>().front());
    other->save();
    EXPECT_EQ(RecordSpans::record(context(), spans.front()), nullptr);
}

}  // namespace
}  // namespace quorvane
