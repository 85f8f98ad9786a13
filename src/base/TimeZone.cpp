#include "base/TimeZone.h"

#include <algorithm>
#include <limits>

namespace quorvane {
namespace {

constexpr std::int64_t cycle = 146'097LL * 86'400;  // 400 years, in whole weeks
constexpr std::int64_t always = std::numeric_limits<std::int64_t>::min();

std::int64_t secondOf(Date date) {
    return std::chrono::floor<std::chrono::seconds>(std::chrono::microseconds{microsecondsSince1970(date)}).count();
}

}  // namespace

TimeZone::TimeZone(std::int32_t offset, const std::vector<Change>& changes, bool repeats)
    : periods_{{always, offset}}, repeats_(repeats) {
    periods_.reserve(changes.size() + 1);
    for (const Change& change : changes) {
        if (change.at == periods_.back().at) periods_.pop_back();
        if (change.offset != periods_.back().offset) periods_.push_back(change);
    }
}

Date TimeZone::wallTime(Date instant) const {
    const std::int64_t second = secondOf(instant);
    return instant + std::chrono::seconds{periods_[periodAt(second - cyclesUntil(second))].offset};
}

Date TimeZone::instant(Date wallTime) const {
    const std::int64_t second = secondOf(wallTime);
    const std::int64_t cycles = cyclesUntil(second);
    const std::int64_t shown = second - cycles;
    auto period = periodAt(shown - mostOffset);  // or one after it
    while (period + 1 < periods_.size() && shown - periods_[period].offset >= periods_[period + 1].at)
        ++period;
    const auto& [at, offset] = periods_[period];
    if (shown - offset < at) return Date{std::chrono::seconds{at + cycles}};
    return wallTime - std::chrono::seconds{offset};
}

std::size_t TimeZone::periodAt(std::int64_t second) const {
    const auto next = std::ranges::upper_bound(periods_, second, {}, &Change::at);
    return static_cast<std::size_t>(std::max<std::ptrdiff_t>(next - periods_.begin() - 1, 0));
}

/// How far an instant behind the last change has to be moved back for the changes around it to be known.
std::int64_t TimeZone::cyclesUntil(std::int64_t second) const {
    if (!repeats_ || periods_.size() < 2) return 0;
    const std::int64_t known = periods_.back().at - 2 * std::int64_t{mostOffset};
    return second < known ? 0 : ((second - known) / cycle + 1) * cycle;
}

}  // namespace quorvane
