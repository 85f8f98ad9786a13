#include "timeline/ClockHours.h"

#include "support/Builders.h"
#include "support/Matching.h"

namespace quorvane {
namespace {

TEST(ClockHoursTest, AreThoseThatTheClockShowsToTheSecond) {
    const char* newYork = "America/New_York";
    struct Row {
        const char* name;
        const char* zone;
        const char* start;
        const char* end;
        TimeRange expected;
        bool isUnique = true;  ///< else other instants have these hours as well
    };
    const Row rows[] = {
        {"seconds", "UTC", "2026-03-02T09:15:36Z", "2026-03-02T09:45:54Z", {9.26, 9.765}},
        {"over midnight", "UTC", "2026-03-02T23:45:00Z", "2026-03-03T00:15:00Z", {23.75, 24.25}},
        {"set forward within it", newYork, "2026-03-08T06:30:00Z", "2026-03-08T13:00:00Z", {1.5, 9}},
        {"after it was set forward", newYork, "2026-03-08T13:00:00Z", "2026-03-08T14:00:00Z", {9, 10}},
        {"set back within it", newYork, "2026-11-01T04:30:00Z", "2026-11-01T14:00:00Z", {0.5, 9}},
        {"the second one o'clock", newYork, "2026-11-01T06:15:00Z", "2026-11-01T06:30:00Z", {1.25, 1.5}, false},
        {"until the clock shows less", newYork, "2026-11-01T05:45:00Z", "2026-11-01T06:15:00Z", {1.75, 2.25}, false},
        {"by half an hour", "Australia/Lord_Howe", "2026-10-03T15:00:00Z", "2026-10-03T16:00:00Z", {1.5, 3}},
        {"no midnight", "America/Santiago", "2026-09-06T04:00:00Z", "2026-09-06T05:00:00Z", {1, 2}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const Calendar calendar("en_US", row.zone);
        const DateInterval stretch{at(row.start), at(row.end)};
        const TimeRange hours = clockHours(stretch, calendar);
        EXPECT_NEAR(hours.startHour, row.expected.startHour, 1e-9);
        EXPECT_NEAR(hours.endHour, row.expected.endHour, 1e-9);
        if (!row.isUnique) continue;
        const DateInterval back = instantsAt(hours, stretch.start, calendar);
        EXPECT_NEAR((back.start - stretch.start) / 1s, 0, 1e-5);
        EXPECT_NEAR((back.end - stretch.end) / 1s, 0, 1e-5);
    }
}

}  // namespace
}  // namespace quorvane
