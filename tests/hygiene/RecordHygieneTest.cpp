#include "store/RecordHygiene.h"

#include "support/Builders.h"
#include "support/Matching.h"

namespace quorvane::RecordHygiene {
namespace {

const Date now = at("12:00:00");

RecordSpan span(Date start, std::optional<Date> end, std::string bundleId = "a") {
    const auto likeness = std::hash<std::string>{}(bundleId);
    return {.start = start, .end = end, .id = Uuid::random(), .bundleId = std::move(bundleId), .likeness = likeness};
}

RecordSpan lasting(Seconds offset, Seconds duration, std::string bundleId = "a") {
    return span(now + offset, now + offset + duration, std::move(bundleId));
}

TEST(RecordHygieneTest, TheOverlapDecidesBetweenAnEarlierEndAndTheShorterRecord) {
    using enum OverlapDecision;
    const std::tuple<const char*, RecordSpan, RecordSpan, OverlapDecision> rows[] = {
        {"apart", lasting(-1000s, 100s), lasting(-800s, 100s), none},
        {"touching", lasting(-1000s, 200s), lasting(-800s, 100s), none},
        {"open first", span(now - 1000s, std::nullopt), lasting(-800s, 100s), none},
        {"by half a second", lasting(-1000s, 200.5s), lasting(-800s, 100s), endFirst},
        {"by 300 s", lasting(-1000s, 500s), lasting(-800s, 100s), endFirst},
        {"by 300.5 s, second shorter", lasting(-1000s, 500.5s), lasting(-800s, 100s), removeSecond},
        {"by 300.5 s, first shorter", lasting(-1000s, 500.5s), lasting(-800s, 501s), removeFirst},
        {"by 300.5 s, equally long", lasting(-1000s, 500.5s), lasting(-800s, 500.5s), removeSecond},
        {"open second counts until now", lasting(-1000s, 750s), span(now - 800s, std::nullopt), removeFirst},
        {"open second is shorter", lasting(-1000s, 850s), span(now - 800s, std::nullopt), removeSecond},
        {"same start", lasting(-1000s, 100s), lasting(-1000s, 900s), endFirst},
    };
    for (const auto& [name, first, second, expected] : rows)
        EXPECT_EQ(decideOverlap(first, second, now), expected) << name;
}

TEST(RecordHygieneTest, NeighboursMergeWhenBothAreLongAndTheGapIsSmall) {
    const struct {
        const char* name;
        RecordSpan second;  ///< behind a first of 30 s that ends at now
        bool expected;
    } rows[] = {
        {"gap of 30 s", lasting(30s, 30s), true},    {"gap of 30.5 s", lasting(30.5s, 30s), false},
        {"no gap", lasting(0s, 30s), true},          {"gap of -1 s", lasting(-1s, 30s), false},
        {"29.9 s long", lasting(10s, 29.9s), false}, {"another application", lasting(10s, 60s, "b"), false},
        {"open", span(now, std::nullopt), false},    {"of more than a day", lasting(0s, 24h), false},
    };
    for (const auto& row : rows)
        EXPECT_EQ(areMergeable(lasting(-30s, 30s), row.second), row.expected) << row.name;
    EXPECT_FALSE(areMergeable(lasting(-30s, 29.9s), lasting(10s, 60s)));
}

TEST(RecordHygieneTest, WindowsAreCountedFrom1970) {
    const auto start = [](double seconds) { return span(dateFromSecondsSince1970(seconds), std::nullopt); };
    const auto windows = timeWindows({start(-120.5), start(-120), start(-0.5), start(0), start(119.5), start(120)});
    std::vector<std::pair<double, std::size_t>> found;
    for (const TimeWindow& window : windows)
        found.emplace_back(secondsSince1970(window.start), window.records.size());
    EXPECT_THAT(found, ElementsAre(Pair(-240, 1), Pair(-120, 2), Pair(0, 2), Pair(120, 1)));
}

}  // namespace
}  // namespace quorvane::RecordHygiene
