#include "shell/chart/MonthView.h"

#include "base/Calendar.h"
#include "shell/chart/MonthCanvas.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"
#include "shell/signals/Subscribe.h"
#include "store/StoredNames.h"
#include "timeline/CalendarTitles.h"
#include "timeline/TimelineCalendar.h"

#include <algorithm>
#include <utility>

namespace quorvane {
namespace {

std::vector<QString> weekdays(Date date, const Calendar& userCalendar) {
    std::vector<QString> names;
    names.reserve(7);
    const Date first = userCalendar.week(date).start;
    for (int i = 0; i < 7; ++i)
        names.push_back(qt(shortWeekday(userCalendar.addingDays(i, first))));
    return names;
}

/// For assistive technology. A day with records is never one on which nothing was recorded, however short they are.
std::string nameOf(const MonthSimpleCell& cell, const Localization& localization) {
    const auto day = weekdayAndDay(cell.date);
    const int entries = static_cast<int>(cell.lines.size()) + cell.more;
    if (cell.fallback)
        return localization.text("a11y_week_day", day, cell.fallback->substr(0, cell.fallback->size() - 1));
    return entries == 0 && cell.hasRecords ? day : localization.text("a11y_month_day", day, entries);
}

}  // namespace

struct MonthView::Parts {
    [[nodiscard]] MonthPicture picture(MyActivityView& activity) const;

    const Localization& localization;
    ConsoleSink& console;
    MonthCanvas* canvas;
};

MonthPicture MonthView::Parts::picture(MyActivityView& activity) const {
    const auto userCalendar = Calendar::current();
    const Date date = activity.chart().selectedDate();
    const auto annotations = activity.annotations(userCalendar.month(date));
    MonthPicture month{.now = activity.runLoop().now()};
    month.grid = MonthTimeline::grid(
        date, {.records = activity.records(), .annotations = annotations, .now = month.now}, console, userCalendar);
    month.weekdays = weekdays(date, userCalendar);
    for (MonthSimpleCell& cell : month.grid.cells) {
        for (MonthCellLine& line : cell.lines)
            line.name = StoredNames::shownApp(line.name, localization);
        month.names.push_back(qt(nameOf(cell, localization)));
        month.more.push_back(cell.more > 0 ? qt(localization.text("ui_more_items", cell.more)) : QString());
    }
    return month;
}

MonthView::MonthView(MyActivityView& activity, const Localization& localization, ConsoleSink& console, QWidget* parent)
    : OverviewArea(activity, TimelineViewMode::month, parent),
      parts_(new Parts{localization, console, new MonthCanvas(this)}) {
    setWidget(parts_->canvas);
    setFocusProxy(parts_->canvas);
    subscribe(parts_->canvas->opened, *this, [this](Date date) { this->activity().chart().openDay(date); });
    subscribe(parts_->canvas->left, *this, [this](Date date) { this->activity().chart().selectDate(date); });
    subscribe(parts_->canvas->focusMoved, *this, [this](const QRect& day) {
        ensureVisible(day.center().x(), day.center().y(), day.width() / 2 + 6, day.height() / 2 + 6);
    });
}

MonthView::~MonthView() = default;

void MonthView::rebuild() {
    parts_->canvas->setAccessibleName(qt(monthAndYear(activity().chart().selectedDate())));
    parts_->canvas->setMonth(parts_->picture(activity()));
    parts_->canvas->startFocusAt(timelineCalendar().startOfDay(activity().chart().selectedDate()));
    arrange();
}

void MonthView::resizeEvent(QResizeEvent* event) {
    OverviewArea::resizeEvent(event);
    arrange();
}

void MonthView::arrange() {
    parts_->canvas->resize(std::max(viewport()->width(), MonthCanvas::leastWidth()), parts_->canvas->heightNeeded());
}

}  // namespace quorvane
