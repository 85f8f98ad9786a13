#include "store/OverlapGroups.h"

#include "support/Builders.h"
#include "support/Matching.h"

namespace quorvane::OverlapGroups {

void PrintTo(const Range& range, std::ostream* out) {
    *out << range.first << " to " << range.end;
}

namespace {

const Date now = at("12:00:00");

/// Start and end in seconds from 12:00; without an end open.
RecordSpan span(double start, std::optional<double> end = std::nullopt) {
    return {.start = now + Seconds{start},
            .end = end ? std::optional(now + Seconds{*end}) : std::nullopt,
            .id = Uuid::random()};
}

TEST(OverlapGroupsTest, AGroupIsARunInWhichEachStartsBeforeThePreviousEnds) {
    const std::tuple<const char*, std::vector<RecordSpan>, std::vector<Range>, std::size_t> rows[] = {
        {"no record", {}, {}, 0},
        {"one record", {span(-900, -100)}, {}, 0},
        {"touching", {span(-900, -500), span(-500, -100)}, {}, 1},
        {"overlapping", {span(-900, -499), span(-500, -100)}, {{0, 2}}, 0},
        {"open one lasts until now", {span(-900), span(-1, 50)}, {{0, 2}}, 0},
        {"open one and a start now", {span(-900), span(0, 50)}, {}, 1},
        {"two groups",
         {span(-900, -700), span(-800, -600), span(-600, -400), span(-300, -100), span(-200, -50)},
         {{0, 2}, {3, 5}},
         3},
        {"short one behind a long one ends the group",
         {span(-900, -100), span(-800, -750), span(-700, -50)},
         {{0, 2}},
         2},
        {"ends before it starts", {span(-900, -950), span(-900, -100)}, {}, 0},
        {"same start", {span(-900, -100), span(-900, -100), span(-50, 0)}, {{0, 2}}, 2},
    };
    for (const auto& [name, spans, groups, complete] : rows) {
        SCOPED_TRACE(name);
        EXPECT_EQ(find(spans, now), groups);
        EXPECT_EQ(completeSpans(spans, now), complete);
    }
}

TEST(OverlapGroupsTest, FromAnOverlapOf300SecondsTheShorterRecordGoes) {
    using enum Resolution;
    const std::tuple<const char*, RecordSpan, RecordSpan, Resolution> rows[] = {
        {"touching", span(-900, -500), span(-500, -100), none},
        {"by 299.5 s", span(-900, -200.5), span(-500, -100), endFirst},
        {"by 300 s, second shorter", span(-900, -200), span(-500, -100), removeSecond},
        {"by 300 s, first shorter", span(-900, -200), span(-500, 250), removeFirst},
        {"by 300 s, equally long", span(-900, -200), span(-500, 200), removeSecond},
        {"open first", span(-900), span(-100, 50), endFirst},
        {"open first, from long ago", span(-900), span(-500, 450), removeFirst},
        {"open second is shorter", span(-900, -50), span(-500), removeSecond},
        {"open first, second in the future", span(-900), span(100, 500), none},
    };
    for (const auto& [name, first, second, expected] : rows)
        EXPECT_EQ(resolve(first, second, now), expected) << name;
}

}  // namespace
}  // namespace quorvane::OverlapGroups
