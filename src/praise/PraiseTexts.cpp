#include "praise/PraiseTexts.h"

#include "base/Text.h"
#include "base/TimeText.h"
#include "praise/PraiseMessageTable.h"

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

constexpr std::string_view hoursPlace = "{hours}";

bool isShort(double hours) {
    return wholeSeconds(hours * 1h) < 360;
}

std::string minutesText(double hours, const PraiseWords& words) {
    const auto minutes = wholeMinutes(hours * 1h);
    return fmt::format("{}{}", minutes, words.minutes[minutes == 1 ? 0 : 1]);
}

std::string durationText(double hours, const PraiseWords& words) {
    return wholeSeconds(hours * 1h) >= 3600 ? fmt::format("{:.1f}{}", hours, words.hours)
                                            : minutesText(std::max(0.0, hours), words);
}

/// A duration with its unit in place of hours, and of the word for them behind it.
std::string withDuration(std::string text, const std::string& duration, const PraiseWords& words) {
    text = replaced(std::move(text), std::string(hoursPlace) + words.hours, duration);
    return replaced(std::move(text), hoursPlace, duration);
}

std::string filledReason(const std::string& reason, std::string_view appName, double hours, const PraiseWords& words) {
    return withDuration(replaced(reason, "{appName}", appName), durationText(hours, words), words);
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

std::string hoursText(double hours, SupportedLanguage language) {
    const double shown = std::max(0.0, hours);
    if (isShort(shown)) return minutesText(shown, words(language));
    return shown < 10 ? fmt::format("{:.1f}", shown) : fmt::format("{:.0f}", shown);
}

std::string formatMessage(const MultilingualPraiseMessage& row, const PraiseLanguage& language, double hours) {
    auto [spoken, text] = messageTemplate(row, language);
    const std::string shown = hoursText(hours, spoken);
    if (isShort(hours) && spoken != SupportedLanguage::chinese)
        return withDuration(std::move(text), shown, words(spoken));
    return replaced(std::move(text), hoursPlace, shown);
}

std::optional<std::string> formatReason(const MultilingualPraiseMessage& row, const PraisedDay& day,
                                        const PraiseLanguage& language) {
    const auto reason = reasonTemplate(row, language);
    if (!reason) return std::nullopt;
    const PraiseWords& known = words(reason->language);
    const auto* longest = row.appTypes ? longestMatch(day, *row.appTypes) : nullptr;
    if (longest == nullptr) return filledReason(reason->text, known.someApps, day.hours, known);
    const auto appName = longest->appName.value_or(known.unknownApp);
    return filledReason(reason->text, appName, durationOf(*longest, day.now) / 1h, known);
}

}  // namespace quorvane::PraiseMessageDatabase
