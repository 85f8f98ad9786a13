#include "base/PosixTimeZone.h"

#include <algorithm>

namespace quorvane {
namespace {

constexpr std::string_view rulesOfTheUnitedStates = ",M3.2.0,M11.1.0";
constexpr std::int32_t hour = 3600;
constexpr int mostOffsetHours = 24;
constexpr int mostTimeHours = 167;  // a moment may be told by the clock of a day within a week

bool isAsciiLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isAsciiDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Takes the parts of such a text from its front. A part that isn't there gives none, and takes nothing that matters.
class RuleReader {
public:
    explicit RuleReader(std::string_view text) : rest_(text) {}

    [[nodiscard]] bool isAtEnd() const { return rest_.empty(); }
    [[nodiscard]] bool isAt(char c) const { return rest_.starts_with(c); }

    bool take(char c) {
        if (!isAt(c)) return false;
        rest_.remove_prefix(1);
        return true;
    }

    /// "CET" or "<-03>"
    bool name() {
        const bool isQuoted = take('<');
        const auto belongs = [&](char c) {
            return isAsciiLetter(c) || (isQuoted && (isAsciiDigit(c) || c == '+' || c == '-'));
        };
        const auto length = static_cast<std::size_t>(std::ranges::find_if_not(rest_, belongs) - rest_.begin());
        rest_.remove_prefix(length);
        return length >= 3 && (!isQuoted || take('>'));
    }

    std::optional<int> number(int least, int most) {
        if (isAtEnd() || !isAsciiDigit(rest_.front())) return std::nullopt;
        int value = 0;
        for (; !isAtEnd() && isAsciiDigit(rest_.front()); rest_.remove_prefix(1))
            value = std::min(value * 10 + (rest_.front() - '0'), most + 1);
        return value < least || value > most ? std::nullopt : std::optional(value);
    }

    /// "2", "+2:30", "-1:00:00", in seconds
    std::optional<std::int32_t> time(int mostHours) {
        const std::int32_t sign = take('-') ? -1 : 1;
        if (sign > 0) take('+');
        const auto hours = number(0, mostHours);
        const auto minutes = hours && take(':') ? number(0, 59) : std::optional(0);
        const auto seconds = minutes && take(':') ? number(0, 59) : std::optional(0);
        if (!hours || !minutes || !seconds) return std::nullopt;
        return sign * (*hours * hour + *minutes * 60 + *seconds);
    }

    /// POSIX counts from the clock to UTC.
    std::optional<std::int32_t> offset() {
        const auto west = time(mostOffsetHours);
        return west ? std::optional(-*west) : std::nullopt;
    }

    /// "J60", "59" or "M3.2.0", and perhaps "/2:30"
    std::optional<PosixTimeZone::Moment> moment() {
        using enum PosixTimeZone::Moment::Form;
        PosixTimeZone::Moment moment;
        std::optional<int> day;
        if (take('M')) {
            const auto month = number(1, 12);
            const auto week = month && take('.') ? number(1, 5) : std::nullopt;
            if (week && take('.')) day = number(0, 6);
            if (day) moment = {.form = weekday, .month = *month, .week = *week};
        } else if (take('J')) {
            day = number(1, 365);
            moment.form = withoutLeapDay;
        } else {
            day = number(0, 365);
            moment.form = afterFirst;
        }
        const auto at = day && take('/') ? time(mostTimeHours) : std::optional(moment.time);
        if (!day || !at) return std::nullopt;
        moment.day = *day;
        moment.time = *at;
        return moment;
    }

private:
    std::string_view rest_;
};

std::optional<PosixTimeZone::Summer> readSummer(RuleReader& reader, std::int32_t winter) {
    PosixTimeZone::Summer summer;
    summer.offset = winter + hour;
    if (!reader.name()) return std::nullopt;
    if (!reader.isAtEnd() && !reader.isAt(',')) {
        const auto offset = reader.offset();
        if (!offset) return std::nullopt;
        summer.offset = *offset;
    }
    RuleReader standard(rulesOfTheUnitedStates);
    RuleReader& rules = reader.isAtEnd() ? standard : reader;
    const auto begin = rules.take(',') ? rules.moment() : std::nullopt;
    const auto end = begin && rules.take(',') ? rules.moment() : std::nullopt;
    if (!end) return std::nullopt;
    summer.begin = *begin;
    summer.end = *end;
    return summer;
}

/// As if the clocks stood in UTC, in seconds since 1970.
std::int64_t momentIn(int number, const PosixTimeZone::Moment& moment) {
    using namespace std::chrono;
    using enum PosixTimeZone::Moment::Form;
    const year year{number};
    sys_days day = year / January / 1;
    switch (moment.form) {
    case withoutLeapDay: day += days{moment.day - (year.is_leap() && moment.day >= 60 ? 0 : 1)}; break;
    case afterFirst: day += days{moment.day}; break;
    case weekday: {
        const std::chrono::weekday name{static_cast<unsigned>(moment.day)};
        const auto month = year / moment.month;
        day = moment.week == 5 ? sys_days{month / name[last]}
                               : sys_days{month / name[static_cast<unsigned>(moment.week)]};
        break;
    }
    }
    return (day.time_since_epoch() + seconds{moment.time}) / 1s;
}

}  // namespace

std::optional<PosixTimeZone> PosixTimeZone::parse(std::string_view text) {
    RuleReader reader(text);
    const auto offset = reader.name() ? reader.offset() : std::nullopt;
    if (!offset) return std::nullopt;
    PosixTimeZone zone;
    zone.offset = *offset;
    if (reader.isAtEnd()) return zone;
    zone.summer = readSummer(reader, zone.offset);
    return zone.summer && reader.isAtEnd() ? std::optional(zone) : std::nullopt;
}

std::vector<TimeZone::Change> PosixTimeZone::changes(int firstYear, int years) const {
    std::vector<TimeZone::Change> changes;
    if (!summer) return changes;
    for (int year = firstYear; year < firstYear + years; ++year) {
        changes.push_back({momentIn(year, summer->begin) - offset, summer->offset});
        changes.push_back({momentIn(year, summer->end) - summer->offset, offset});
    }
    // Where summer time ends as it begins anew, in the year after, it goes on.
    std::ranges::stable_sort(changes, {}, &TimeZone::Change::at);
    return changes;
}

}  // namespace quorvane
