#include "store/InitialSettings.h"

#include "base/PreferredLanguages.h"
#include "store/AppPreference.h"
#include "store/SupportedLanguage.h"

#include <algorithm>
#include <optional>

namespace quorvane::InitialSettings {
namespace {

constexpr int monday = 2;  // as calendars count
constexpr int friday = 6;
constexpr std::int64_t secondsOfMinute = 60;

SupportedLanguage desktopLanguage() {
    for (const std::string& code : preferredLanguages())
        if (const auto language = fromRawValue<SupportedLanguage>(code)) return *language;
    return SupportedLanguage::english;
}

std::vector<std::int64_t> mondayToFriday(const Calendar& calendar) {
    std::vector<std::int64_t> days;
    for (int weekday = monday; weekday <= friday; ++weekday)
        days.push_back(AppSettings::dayNumber(weekday, calendar));
    std::ranges::sort(days);
    return days;
}

/// Of an older program's row, in seconds.
std::optional<std::int64_t> olderThreshold(ModelContext& context) {
    const auto older = context.fetch<AppPreference>({.limit = 1});
    return older.empty() ? std::nullopt : std::optional(older.front()->idleThresholdSeconds());
}

bool isWholeMinutes(std::int64_t seconds) {
    return seconds >= secondsOfMinute && seconds % secondsOfMinute == 0;
}

}  // namespace

std::shared_ptr<AppSettings> make(const Calendar& calendar) {
    auto settings = std::make_shared<AppSettings>();
    settings->preferredLanguage = std::string(rawValue(desktopLanguage()));
    settings->setWorkDayList(mondayToFriday(calendar));
    return settings;
}

std::shared_ptr<AppSettings> of(ModelContext& context) {
    auto settings = make();
    if (const auto seconds = olderThreshold(context)) {
        const std::int64_t minutes = *seconds / secondsOfMinute + (*seconds % secondsOfMinute > 0 ? 1 : 0);
        settings->idleThresholdMinutes = std::max<std::int64_t>(minutes, 1);
    }
    return settings;
}

void ensure(ModelContext& context) {
    if (context.count<AppSettings>() > 0 || !isWholeMinutes(olderThreshold(context).value_or(secondsOfMinute))) return;
    context.insert(of(context));
    context.save();
}

}  // namespace quorvane::InitialSettings
