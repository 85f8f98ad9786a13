#include "store/AppSettings.h"

#include "base/Text.h"
#include "store/EntityDescription.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace quorvane {
namespace {

std::optional<std::int64_t> decimalInteger(std::string_view text) {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-')) return std::nullopt;
    }
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
    return number;
}

}  // namespace

const EntityDescription& AppSettings::description() {
    using S = AppSettings;
    static const EntityDescription description{
        .name = "AppSettings",
        .table = "app_settings",
        .attributes = {attribute<&S::id>("id"), attribute<&S::onlyTrackWorkHours>("only_track_work_hours"),
                       attribute<&S::workDays>("work_days"), attribute<&S::workStartHour>("work_start_hour"),
                       attribute<&S::workStartMinute>("work_start_minute"), attribute<&S::workEndHour>("work_end_hour"),
                       attribute<&S::workEndMinute>("work_end_minute"), attribute<&S::createdAt>("created_at"),
                       attribute<&S::updatedAt>("updated_at"), attribute<&S::preferredLanguage>("preferred_language"),
                       attribute<&S::enableIdleDetection>("enable_idle_detection"),
                       attribute<&S::idleThresholdMinutes>("idle_threshold_minutes"),
                       attribute<&S::hideDockIcon>("hide_dock_icon"),
                       attribute<&S::splitsRecordsByTitle>("splits_records_by_title"),
                       attribute<&S::countsCallsAsPresence>("counts_calls_as_presence"),
                       attribute<&S::offersAbsences>("offers_absences")},
        .indexes = {{"id"}},
        .make = []() -> std::shared_ptr<Entity> { return std::make_shared<S>(); }};
    return description;
}

std::vector<std::int64_t> AppSettings::workDayList() const {
    std::vector<std::int64_t> days;
    for (const std::string& piece : text::split(workDays(), ','))
        if (const auto day = decimalInteger(text::trimmed(piece))) days.push_back(*day);
    return days;
}

void AppSettings::setWorkDayList(const std::vector<std::int64_t>& days) {
    std::vector<std::string> pieces;
    pieces.reserve(days.size());
    for (const std::int64_t day : days)
        pieces.push_back(std::to_string(day));
    workDays = text::joined(pieces, ",");
}

std::int64_t AppSettings::dayNumber(int weekday, const Calendar& calendar) {
    return (weekday - calendar.firstWeekday() + 7) % 7;
}

bool AppSettings::isWithinWorkHours(Date date, const Calendar& calendar) const {
    if (!onlyTrackWorkHours()) return true;
    const DateComponents at = calendar.components(date);
    const auto days = workDayList();
    if (std::ranges::find(days, dayNumber(at.weekday, calendar)) == days.end()) return false;
    const auto minutes = [](std::int64_t hour, std::int64_t minute) {
        return static_cast<double>(hour) * 60 +
               static_cast<double>(minute);  // stored numbers may be absurd: no overflow
    };
    const double current = minutes(at.hour, at.minute);
    return current >= minutes(workStartHour(), workStartMinute()) && current <= minutes(workEndHour(), workEndMinute());
}

}  // namespace quorvane
