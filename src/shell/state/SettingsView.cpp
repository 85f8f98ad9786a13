#include "shell/state/SettingsView.h"

#include "base/Text.h"
#include "base/TimeText.h"
#include "platform/Clock.h"
#include "store/InitialSettings.h"
#include "store/StoreError.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace quorvane {
namespace {

constexpr int daysOfWeek = 7;

std::string timeText(std::int64_t hour, std::int64_t minute) {
    return clockText(Seconds{static_cast<double>(hour) * 3600 + static_cast<double>(minute) * 60});
}

/// `weekday` as the calendar counts it: 1 is Sunday.
std::string weekdayName(int weekday, const Localization& localization) {
    switch (weekday) {
    case 1: return localization.text("weekday_sun");
    case 2: return localization.text("weekday_mon");
    case 3: return localization.text("weekday_tue");
    case 4: return localization.text("weekday_wed");
    case 5: return localization.text("weekday_thu");
    case 6: return localization.text("weekday_fri");
    default: return localization.text("weekday_sat");
    }
}

}  // namespace

SettingsView::SettingsView(Services services) : services_(std::move(services)) {
    take(*InitialSettings::make());
}

void SettingsView::load() {
    try {
        const auto stored = services_.context.fetch<AppSettings>();
        take(stored.empty() ? *InitialSettings::of(services_.context) : *stored.front());
    } catch (const StoreError& error) {  // the form shows the defaults
        services_.logger.log(error.what(), LogLevel::error, "Settings");
    }
}

void SettingsView::take(const AppSettings& settings) {
    onlyTrackWorkHours = settings.onlyTrackWorkHours();
    const auto days = settings.workDayList();
    workDays = {days.begin(), days.end()};
    workStartHour = settings.workStartHour();
    workStartMinute = settings.workStartMinute();
    workEndHour = settings.workEndHour();
    workEndMinute = settings.workEndMinute();
    selectedLanguage =
        fromRawValue<SupportedLanguage>(settings.preferredLanguage()).value_or(SupportedLanguage::chinese);
    enableIdleDetection = settings.enableIdleDetection();
    idleThresholdMinutes = settings.idleThresholdMinutes();
    splitsRecordsByTitle = settings.splitsRecordsByTitle();
    countsCallsAsPresence = settings.countsCallsAsPresence();
    offersAbsences = settings.offersAbsences();
    hideDockIcon = settings.hideDockIcon();
}

bool SettingsView::save() {
    bool wasHidden = false;
    try {
        const auto stored = services_.context.fetch<AppSettings>();
        const auto settings = stored.empty() ? std::make_shared<AppSettings>() : stored.front();
        wasHidden = settings->hideDockIcon();
        copyInto(*settings);
        if (stored.empty()) services_.context.insert(settings);
        services_.context.save();
    } catch (const StoreError& error) {
        services_.logger.log(services_.localization.text("save_settings_failed_log", error.what()), LogLevel::error,
                             "Settings");
        return false;
    }
    services_.applyDockVisibility(hideDockIcon, wasHidden && !hideDockIcon);
    return true;
}

void SettingsView::copyInto(AppSettings& settings) const {
    settings.onlyTrackWorkHours = onlyTrackWorkHours;
    settings.setWorkDayList({workDays.begin(), workDays.end()});
    settings.workStartHour = workStartHour;
    settings.workStartMinute = workStartMinute;
    settings.workEndHour = workEndHour;
    settings.workEndMinute = workEndMinute;
    settings.updatedAt = platform::currentDate();
    settings.preferredLanguage = std::string(rawValue(selectedLanguage));
    settings.enableIdleDetection = enableIdleDetection;
    settings.idleThresholdMinutes = idleThresholdMinutes;
    settings.splitsRecordsByTitle = splitsRecordsByTitle;
    settings.countsCallsAsPresence = countsCallsAsPresence;
    settings.offersAbsences = offersAbsences;
    settings.hideDockIcon = hideDockIcon;
}

std::optional<std::size_t> SettingsView::idleChoice() const {
    const auto* const found = std::ranges::find(idleMinutesOffered, idleThresholdMinutes);
    if (found == idleMinutesOffered.end()) return std::nullopt;
    return static_cast<std::size_t>(found - idleMinutesOffered.begin());
}

std::vector<SettingsView::Weekday> SettingsView::weekdays(const Calendar& calendar) const {
    std::vector<Weekday> days;
    days.reserve(daysOfWeek);
    for (int number = 0; number < daysOfWeek; ++number) {
        const int weekday = (calendar.firstWeekday() - 1 + number) % daysOfWeek + 1;
        days.push_back({number, weekdayName(weekday, services_.localization)});
    }
    return days;
}

void SettingsView::setWorkDay(std::int64_t number, bool isChosen) {
    if (isChosen)
        workDays.insert(number);
    else
        workDays.erase(number);
}

SettingsView::Preview SettingsView::preview(const Calendar& calendar) const {
    const Localization& texts = services_.localization;
    if (!onlyTrackWorkHours) return {.days = texts.text("track_all_time_help")};
    std::vector<std::string> chosen;
    for (const Weekday& day : weekdays(calendar))
        if (workDays.contains(day.number)) chosen.push_back(day.name);
    AppSettings settings;  // belongs to no context
    copyInto(settings);
    const bool isInside = settings.isWithinWorkHours(platform::currentDate(), calendar);
    return {.days = chosen.empty()
                        ? texts.text("work_days_none_selected")
                        : texts.text("work_days_display_format", text::joined(chosen, texts.text("list_separator"))),
            .hours = texts.text("work_time_display_format", timeText(workStartHour, workStartMinute),
                                timeText(workEndHour, workEndMinute)),
            .now = texts.text("is_current_work_time_format", isInside ? "yes" : "no"),
            .isInside = isInside};
}

}  // namespace quorvane
