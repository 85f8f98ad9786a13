#include "shell/window/DayPraise.h"

#include "platform/Clock.h"
#include "shell/praise/ShareImageSheet.h"
#include "store/AppSettings.h"
#include "store/StoreError.h"
#include "timeline/AppStatistics.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <utility>

namespace quorvane {
namespace {

std::shared_ptr<const AppSettings> firstSettings(ModelContext& context, ConsoleSink& console) {
    try {
        const auto stored = context.fetch<AppSettings>({});
        return stored.empty() ? nullptr : stored.front();
    } catch (const StoreError& error) {
        console.write(error.what());
        return nullptr;
    }
}

std::vector<TimelineRecordSnapshot> recordsIn(DateInterval day, const std::vector<TimelineRecordSnapshot>& records) {
    std::vector<TimelineRecordSnapshot> found;
    std::ranges::copy_if(records, std::back_inserter(found), [&](const auto& record) {
        return record.startTime >= day.start && record.startTime < day.end;
    });
    return found;
}

}  // namespace

DayPraise::DayPraise(const Services& services)
    : services_(services), state_(services.activity.runLoop(), services.randomWords) {
    settingsChanged_ = services_.context.didChange.subscribe([this](const EntityChange& change) {
        if (&change.entity->entityDescription() != &AppSettings::description()) return;
        // A save changes one attribute after the other: its outcome is looked at once, in the loop's next turn.
        languageCheck_ = services_.activity.runLoop().after(0s, [this] { followLanguage(); });
    });
}

void DayPraise::refresh() {
    const auto& chart = services_.activity.chart();
    if (!chart.isDayKnown()) return;
    const DateInterval day = Calendar::current().day(chart.selectedDate());
    state_.setTotalHours(appStatistics(chart.sidebarRecords(), platform::currentDate()).totalHours);
    auto records = recordsIn(day, services_.activity.records());
    if (records != state_.records()) state_.setRecords(std::move(records));
    if (std::exchange(day_, day.start) == day.start) return;
    begin();
}

void DayPraise::begin() {
    const auto settings = firstSettings(services_.context, services_.console);
    language_ = settings ? settings->preferredLanguage() : "";
    state_.setAppSettings(settings);
    state_.appear();
}

void DayPraise::followLanguage() {
    const auto settings = firstSettings(services_.context, services_.console);
    if (day_ && settings && settings->preferredLanguage() != language_) begin();
}

void DayPraise::share(QWidget& window) {
    ShareImageSheet::open(window, shareImageInputs(state_, services_.activity.chart().selectedDate()),
                          {.runLoop = services_.activity.runLoop(),
                           .console = services_.console,
                           .localization = services_.localization});
}

}  // namespace quorvane
