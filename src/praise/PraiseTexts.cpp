#include "praise/PraiseTexts.h"

#include "base/Text.h"
#include "base/TimeText.h"

#include <algorithm>
#include <fmt/format.h>
#include <string_view>

namespace quorvane::PraiseMessageDatabase {
namespace {

std::string replaced(std::string text, std::string_view placeholder, std::string_view value) {
    for (auto at = text.find(placeholder); at != std::string::npos; at = text.find(placeholder, at + value.size()))
        text.replace(at, placeholder.size(), value);
    return text;
}

std::string minutesText(double hours) {
    return fmt::format("{}分钟", wholeMinutes(hours * 1h));
}

std::string durationText(double hours) {
    return wholeSeconds(hours * 1h) >= 3600 ? fmt::format("{:.1f}小时", hours) : minutesText(std::max(0.0, hours));
}

std::string filledReason(std::string reason, std::string_view appName, double hours) {
    const std::string duration = durationText(hours);
    reason = replaced(std::move(reason), "{appName}", appName);
    reason = replaced(std::move(reason), "{hours}小时", duration);
    return replaced(std::move(reason), "{hours}", duration);
}

Seconds durationOf(const TimelineRecordSnapshot& record, Date now) {
    return record.endTime.value_or(now) - record.startTime;
}

/// The longest record of these applications, the first among equals.
const TimelineRecordSnapshot* longestMatch(const PraisedDay& day, const std::vector<std::string>& appTypes) {
    const TimelineRecordSnapshot* longest = nullptr;
    for (const TimelineRecordSnapshot& record : day.records)
        if (matchesAny(record, appTypes) &&
            (longest == nullptr || durationOf(record, day.now) > durationOf(*longest, day.now)))
            longest = &record;
    return longest;
}

}  // namespace

bool matches(const TimelineRecordSnapshot& record, const std::string& appType) {
    const auto contains = [](const std::optional<std::string>& text, const std::string& part) {
        return text && text->find(part) != std::string::npos;
    };
    return contains(record.appName, appType) || contains(record.bundleId, text::lowercased(appType));
}

bool matchesAny(const TimelineRecordSnapshot& record, const std::vector<std::string>& appTypes) {
    return std::ranges::any_of(appTypes, [&](const std::string& appType) { return matches(record, appType); });
}

std::string hoursText(double hours) {
    const double shown = std::max(0.0, hours);
    if (wholeSeconds(shown * 1h) < 360) return minutesText(shown);
    return shown < 10 ? fmt::format("{:.1f}", shown) : fmt::format("{:.0f}", shown);
}

std::string formatMessage(const MultilingualPraiseMessage& row, const PraiseLanguage& language, double hours) {
    return replaced(messageTemplate(row, language), "{hours}", hoursText(hours));
}

std::optional<std::string> formatReason(const MultilingualPraiseMessage& row, const PraisedDay& day,
                                        const PraiseLanguage& language) {
    auto reason = reasonTemplate(row, language);
    if (!reason) return std::nullopt;
    const auto* longest = row.appTypes ? longestMatch(day, *row.appTypes) : nullptr;
    if (longest == nullptr) return filledReason(std::move(*reason), "各种应用", day.hours);
    return filledReason(std::move(*reason), longest->displayName(), durationOf(*longest, day.now) / 1h);
}

}  // namespace quorvane::PraiseMessageDatabase
