#include "timeline/AwayGaps.h"

#include "support/Builders.h"
#include "support/Mapped.h"
#include "support/Matching.h"

#include <fmt/format.h>

namespace quorvane {
namespace {

std::shared_ptr<Absence> absence(std::string_view from, std::string_view to) {
    auto made = std::make_shared<Absence>();
    made->startTime = at(from);
    made->endTime = at(to);
    return made;
}

/// Of Monday, 2 March 2026: "9.5 to 10".
std::vector<std::string> gaps(const std::vector<std::shared_ptr<Absence>>& absences,
                              const std::vector<DateInterval>& taken) {
    const auto calendar = Calendar::current();
    return mapped(awayGaps(absences, taken, calendar.day(at("12:00:00")), calendar), [](const AwayGap& gap) {
        EXPECT_NEAR((gap.time.end - gap.time.start) / 1h, gap.hours.endHour - gap.hours.startHour, 1e-9);
        return fmt::format("{:.6g} to {:.6g}", gap.hours.startHour, gap.hours.endHour);
    });
}

TEST(AwayGapsTest, AreWhatRecordsAndProjectsLeaveOfTheAbsencesOfADay) {
    EXPECT_THAT(gaps({absence("09:30:00", "10:00:00")}, {}), ElementsAre("9.5 to 10"));
    EXPECT_THAT(gaps({absence("09:30:00", "10:00:00")}, {{at("09:00:00"), at("10:30:00")}}), IsEmpty());
    EXPECT_THAT(
        gaps({absence("09:30:00", "11:00:00")},
             {{at("10:30:00"), at("10:45:00")}, {at("09:00:00"), at("09:30:00")}, {at("10:00:00"), at("10:15:00")}}),
        ElementsAre("9.5 to 10", "10.25 to 10.5", "10.75 to 11"));
    EXPECT_THAT(gaps({absence("09:30:00", "10:00:00")}, {{at("09:30:59"), at("10:00:00")}}), IsEmpty())
        << "less than a minute";
    EXPECT_THAT(gaps({absence("2026-03-01 18:00:00", "08:00:00"), absence("17:30:00", "2026-03-03 09:00:00"),
                      absence("2026-03-03 10:00:00", "2026-03-03 11:00:00")},
                     {}),
                ElementsAre("0 to 8", "17.5 to 24"));
}

}  // namespace
}  // namespace quorvane
