#include "timeline/AwayGaps.h"

#include <algorithm>
#include <array>
#include <bit>

namespace quorvane {
namespace {

constexpr Seconds leastGap = 60s;
constexpr Seconds longestReach = 72h;

Uuid idOf(DateInterval time) {
    return Uuid(std::bit_cast<std::array<std::uint8_t, 16>>(
        std::array{microsecondsSince1970(time.start), microsecondsSince1970(time.end)}));
}

}  // namespace

std::vector<AwayGap> awayGaps(const std::vector<std::shared_ptr<Absence>>& absences, std::vector<DateInterval> taken,
                              DateInterval day, const Calendar& calendar) {
    std::ranges::sort(taken, {}, &DateInterval::start);
    std::vector<AwayGap> gaps;
    for (const auto& absence : absences) {
        Date free = std::max(absence->startTime(), day.start);
        const Date end = std::min(absence->endTime(), day.end);
        const auto add = [&](Date until) {
            const DateInterval time{free, std::min(until, end)};
            if (time.end - time.start >= leastGap)
                gaps.push_back({idOf(time), time, clockHours(time, calendar), absence->isLeftEmpty()});
        };
        for (const DateInterval& other : taken) {
            add(other.start);
            free = std::max(free, other.end);
        }
        add(end);
    }
    return gaps;
}

FetchDescriptor<Absence> absencesAround(DateInterval range) {
    const auto start = field(&Absence::startTime);
    return {.predicate = start > range.start - longestReach && start < range.end,
            .sort = {ascending(&Absence::startTime)}};
}

void leaveEmpty(ModelContext& context, DateInterval range) {
    for (const auto& absence : context.fetch(absencesAround(range)))
        if (absence->endTime() > range.start) absence->isLeftEmpty = true;
}

}  // namespace quorvane
