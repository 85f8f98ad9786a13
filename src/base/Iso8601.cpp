#include "base/Iso8601.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace quorvane {
namespace {

using Days = std::chrono::sys_days;

constexpr std::int64_t firstMicrosecond = -62135596800'000000;  // 0001-01-01T00:00:00Z
constexpr std::int64_t lastMicrosecond = 253402300799'999999;   // 9999-12-31T23:59:59.999999Z

void appendDigits(std::string& out, std::int64_t number, int width) {
    char digits[20];
    for (int i = width - 1; i >= 0; --i) {
        digits[i] = static_cast<char>('0' + number % 10);
        number /= 10;
    }
    out.append(digits, static_cast<std::size_t>(width));
}

void appendInstant(std::string& out, std::int64_t microseconds, bool withFraction) {
    const std::chrono::sys_time<std::chrono::microseconds> instant{
        std::chrono::microseconds{std::clamp(microseconds, firstMicrosecond, lastMicrosecond)}};
    const auto day = std::chrono::floor<std::chrono::days>(instant);
    const std::chrono::year_month_day date{day};
    const auto inDay = (instant - day).count();
    appendDigits(out, static_cast<int>(date.year()), 4);
    out += '-';
    appendDigits(out, static_cast<unsigned>(date.month()), 2);
    out += '-';
    appendDigits(out, static_cast<unsigned>(date.day()), 2);
    out += 'T';
    const auto seconds = inDay / 1'000'000;
    appendDigits(out, seconds / 3600, 2);
    out += ':';
    appendDigits(out, seconds / 60 % 60, 2);
    out += ':';
    appendDigits(out, seconds % 60, 2);
    if (withFraction) {
        out += '.';
        appendDigits(out, inDay % 1'000'000, 6);
    }
    out += 'Z';
}

/// Eats pieces from the front of a text; once something did not fit, it stays failed.
class Reader {
public:
    explicit Reader(std::string_view text) : rest_(text) {}

    int number(std::size_t width) {
        int value = 0;
        if (rest_.size() < width || !std::all_of(rest_.begin(), rest_.begin() + static_cast<std::ptrdiff_t>(width),
                                                 [](char c) { return c >= '0' && c <= '9'; })) {
            failed_ = true;
            return 0;
        }
        std::from_chars(rest_.data(), rest_.data() + width, value);
        rest_.remove_prefix(width);
        return value;
    }

    bool take(std::string_view anyOf) {
        if (rest_.empty() || anyOf.find(rest_.front()) == std::string_view::npos) return false;
        taken_ = rest_.front();
        rest_.remove_prefix(1);
        return true;
    }

    void expect(std::string_view anyOf) {
        if (!take(anyOf)) failed_ = true;
    }

    /// Digits after the point as a fraction of a second.
    double fraction() {
        const auto end = std::min(rest_.find_first_not_of("0123456789"), rest_.size());
        if (end == 0) failed_ = true;
        double value = 0;
        double place = 0.1;
        for (std::size_t i = 0; i < end; ++i, place /= 10)
            value += (rest_[i] - '0') * place;
        rest_.remove_prefix(end);
        return value;
    }

    [[nodiscard]] char taken() const { return taken_; }
    [[nodiscard]] bool atEnd() const { return rest_.empty(); }
    [[nodiscard]] bool failed() const { return failed_; }

private:
    std::string_view rest_;
    char taken_ = 0;
    bool failed_ = false;
};

std::optional<CivilDate> readCivilDate(Reader& reader) {
    CivilDate date;
    date.year = reader.number(4);
    reader.expect("-");
    date.month = reader.number(2);
    reader.expect("-");
    date.day = reader.number(2);
    const std::chrono::year_month_day checked{std::chrono::year{date.year},
                                              std::chrono::month{static_cast<unsigned>(date.month)},
                                              std::chrono::day{static_cast<unsigned>(date.day)}};
    if (reader.failed() || date.year < 1 || !checked.ok()) return std::nullopt;
    return date;
}

/// The offset from UTC in minutes; none when what stands there is no offset.
std::optional<int> readOffset(Reader& reader) {
    if (reader.take("Zz")) return 0;
    if (!reader.take("+-")) return std::nullopt;
    const int sign = reader.taken() == '-' ? -1 : 1;
    const int hours = reader.number(2);
    int minutes = 0;
    if (!reader.atEnd()) {
        reader.take(":");
        minutes = reader.number(2);
    }
    if (reader.failed() || hours > 23 || minutes > 59) return std::nullopt;
    return sign * (hours * 60 + minutes);
}

}  // namespace

void appendIso8601Seconds(std::string& out, Date date) {
    const double seconds = std::clamp(std::floor(secondsSince1970(date)), -62135596800.0, 253402300799.0);
    appendInstant(out, static_cast<std::int64_t>(seconds) * 1'000'000, false);
}

void appendIso8601Microseconds(std::string& out, Date date) {
    appendInstant(out, microsecondsSince1970(date), true);
}

void appendIso8601Seconds(std::string& out, std::int64_t microseconds) {
    appendInstant(out, microseconds, false);
}

void appendIso8601Microseconds(std::string& out, std::int64_t microseconds) {
    appendInstant(out, microseconds, true);
}

std::string iso8601Seconds(Date date) {
    std::string out;
    appendIso8601Seconds(out, date);
    return out;
}

std::string iso8601Microseconds(Date date) {
    std::string out;
    appendIso8601Microseconds(out, date);
    return out;
}

std::optional<Date> parseIso8601(std::string_view text) {
    const auto microseconds = parseIso8601Microseconds(text);
    return microseconds ? std::optional(dateFromMicroseconds(*microseconds)) : std::nullopt;
}

std::optional<std::int64_t> parseIso8601Microseconds(std::string_view text) {
    Reader reader(text);
    const auto civil = readCivilDate(reader);
    if (!civil) return std::nullopt;
    reader.expect("Tt ");
    const int hour = reader.number(2);
    reader.expect(":");
    const int minute = reader.number(2);
    reader.expect(":");
    const int second = reader.number(2);
    const double fraction = reader.take(".") ? reader.fraction() : 0.0;
    if (reader.failed() || hour > 23 || minute > 59 || second > 60) return std::nullopt;
    const auto offset = readOffset(reader);
    if (!offset || !reader.atEnd()) return std::nullopt;

    const Days day{std::chrono::year{civil->year} / civil->month / civil->day};
    const std::int64_t whole = day.time_since_epoch().count() * std::int64_t{86400} + std::int64_t{hour} * 3600 +
                               std::int64_t{minute} * 60 + second - std::int64_t{*offset} * 60;
    return whole * 1'000'000 + std::llround(fraction * 1e6);
}

std::optional<CivilDate> parseCivilDate(std::string_view text) {
    Reader reader(text);
    const auto date = readCivilDate(reader);
    return date && reader.atEnd() ? date : std::nullopt;
}

std::string civilDateText(CivilDate date) {
    std::string out;
    appendDigits(out, date.year, 4);
    out += '-';
    appendDigits(out, date.month, 2);
    out += '-';
    appendDigits(out, date.day, 2);
    return out;
}

}  // namespace quorvane
