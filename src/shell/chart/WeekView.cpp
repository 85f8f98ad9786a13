#include "shell/chart/WeekView.h"

#include "shell/chart/WeekCanvas.h"
#include "shell/chart/WeekSummary.h"
#include "shell/look/Card.h"
#include "shell/look/Label.h"
#include "shell/look/Painting.h"
#include "shell/look/RowList.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"
#include "shell/signals/Subscribe.h"
#include "store/StoredNames.h"
#include "timeline/CalendarTitles.h"
#include "timeline/TimelineCalendar.h"

#include <QBoxLayout>
#include <QScrollBar>
#include <algorithm>
#include <fmt/format.h>
#include <optional>
#include <utility>

namespace quorvane {
namespace {

constexpr int narrowCards = 760;     ///< below this width they stand below each other
constexpr double leastHours = 0.05;  ///< shorter times would read "0.0 h"

std::string hoursText(double hours) {
    return fmt::format("{:.1f}", hours);
}

WeekDay weekDay(WeekTimelineColumn column, double hours, Date now) {
    const Date date = column.date;
    return {.column = std::move(column),
            .title = qt(fmt::format("{} {}", shortWeekday(date), timelineCalendar().civilDate(date).day)),
            .hours = hours >= leastHours ? isolated(qt(hoursText(hours) + " h")) : QStringLiteral("–"),
            .isToday = timelineCalendar().isSameDay(date, now),
            .isComing = date > now};
}

ListRow rowOf(const std::string& name, double hours, double percentage, const Localization& localization) {
    return {.text = qt(name),
            .figures = qt(hoursText(hours) + " h"),
            .accessibleName =
                qt(localization.text("a11y_legend_row", name, hoursText(hours), fmt::format("{:.1f}", percentage)))};
}

std::vector<ListRow> rowsOf(const std::vector<AppStat>& applications, const Localization& localization) {
    std::vector<ListRow> rows;
    for (const AppStat& stat : applications) {
        if (stat.hours < leastHours) continue;
        rows.push_back(
            rowOf(StoredNames::shownApp(stat.appName, localization), stat.hours, stat.percentage, localization));
        rows.back().mark = toQColor(stat.color);
    }
    return rows;
}

std::vector<ListRow> rowsOf(const std::vector<ProjectStat>& projects, const Localization& localization) {
    std::vector<ListRow> rows;
    for (const ProjectStat& stat : projects) {
        if (stat.hours < leastHours) continue;
        rows.push_back(rowOf(stat.name, stat.hours, stat.percentage, localization));
        rows.back().tone = stat.tone;
    }
    return rows;
}

/// A card that lists hours in two columns, or says that there are none.
class SummaryCard : public Card {
public:
    SummaryCard(const QString& title, const QString& emptyText, QWidget* parent)
        : Card(parent), rows_(new RowList(title)), empty_(new Label(emptyText, TypeRole::body, &Theme::text3)) {
        auto* const column = new QVBoxLayout(this);
        column->setContentsMargins(Metrics::cardPadding + 1, 12, Metrics::cardPadding + 1, 11);
        column->setSpacing(6);
        column->addWidget(new Label(title, TypeRole::label, &Theme::text2));
        column->addWidget(rows_);
        column->addWidget(empty_);
        column->addStretch(1);
        rows_->setColumns(2);
    }
    void setRows(std::vector<ListRow> rows) {
        empty_->setVisible(rows.empty());
        rows_->setVisible(!rows.empty());
        rows_->setRows(std::move(rows));
        updateGeometry();  // at once, for who asks how high it is
    }

private:
    RowList* rows_;
    Label* empty_;
};

}  // namespace

struct WeekView::Parts {
    Parts(const Localization& texts, ConsoleSink& sink, QWidget* parent)
        : localization(texts), console(sink), content(new QWidget(parent)), canvas(new WeekCanvas(content)),
          cards(new QWidget(content)), row(new QBoxLayout(QBoxLayout::LeftToRight, cards)),
          applications(new SummaryCard(qt(texts.text("app_usage_title")), qt(texts.text("app_usage_empty")), cards)),
          projects(new SummaryCard(qt(texts.text("ui_projects")), QStringLiteral("–"), cards)) {
        row->setContentsMargins(Metrics::timelineMargin, Metrics::cardGap, Metrics::timelineMargin,
                                Metrics::timelineMargin);
        row->setSpacing(Metrics::cardGap);
        row->addWidget(applications, 1);
        row->addWidget(projects, 1);
    }

    /// Makes the days anew for the width of the view.
    void show(MyActivityView& activity, int viewWidth);

    const Localization& localization;
    ConsoleSink& console;
    QWidget* content;
    WeekCanvas* canvas;
    QWidget* cards;
    QBoxLayout* row;
    SummaryCard* applications;
    SummaryCard* projects;
    double columnWidth = 0;
    std::optional<Date> selectedDay;  ///< when it was rebuilt last
};

void WeekView::Parts::show(MyActivityView& activity, int viewWidth) {
    columnWidth = WeekCanvas::columnWidth(viewWidth);
    const Date now = activity.runLoop().now();
    const auto dates = WeekTimeline::days(activity.chart().selectedDate());
    const auto annotations = activity.annotations({dates.front(), timelineCalendar().day(dates.back()).end});
    // The short records count in the sums; of the bars a column keeps those that are long enough.
    const auto records = recordsForDates(activity.records(), dates, now, 0s, console);
    const auto summary = weekSummary(dates, records, annotations, now);
    const WeekTimeline::Input input{
        .records = activity.records(), .annotations = annotations, .now = now, .columnWidth = columnWidth};
    std::vector<WeekDay> days;
    std::vector<QString> names;
    for (std::size_t i = 0; i < dates.size(); ++i) {
        days.push_back(weekDay(WeekTimeline::column(dates[i], records[i], input), summary.hours[i], now));
        names.push_back(qt(localization.text("a11y_week_day", weekdayAndDay(dates[i]), hoursText(summary.hours[i]))));
    }
    canvas->setAccessibleName(qt(weekdayAndDay(dates.front()) + " – " + weekdayAndDay(dates.back())));
    canvas->setWeek(std::move(days), names, columnWidth);
    canvas->setNow(now);
    applications->setRows(rowsOf(summary.applications, localization));
    projects->setRows(rowsOf(summary.projects, localization));
}

WeekView::WeekView(MyActivityView& activity, const Localization& localization, ConsoleSink& console, QWidget* parent)
    : OverviewArea(activity, TimelineViewMode::week, parent),
      parts_(std::make_unique<Parts>(localization, console, this)) {
    setWidget(parts_->content);
    setFocusProxy(parts_->canvas);
    subscribe(parts_->canvas->opened, *this, [this](Date date) { this->activity().chart().openDay(date); });
    subscribe(parts_->canvas->left, *this, [this](Date date) { this->activity().chart().selectDate(date); });
    subscribe(parts_->canvas->focusMoved, *this, [this](const QRect& day) { bringOnScreen(day); });
}

WeekView::~WeekView() = default;

void WeekView::rebuild() {
    parts_->show(activity(), viewport()->width());
    arrange();
    // Where not all days fit, another date brings its day on screen.
    const Date day = timelineCalendar().startOfDay(activity().chart().selectedDate());
    parts_->canvas->startFocusAt(day);
    if (std::exchange(parts_->selectedDay, day) != day) bringOnScreen(parts_->canvas->rectangleOf(day));
}

void WeekView::bringOnScreen(const QRect& day) {
    // The days fill the height of most windows: only sideways there is something to follow.
    ensureVisible(day.center().x(), verticalScrollBar()->value(), day.width() / 2 + 4, 0);
}

void WeekView::minutePassed(Date now) {
    parts_->canvas->setNow(now);
}

void WeekView::resizeEvent(QResizeEvent* event) {
    OverviewArea::resizeEvent(event);
    if (!isVisible()) return;
    if (isKnown() && WeekCanvas::columnWidth(viewport()->width()) != parts_->columnWidth)
        parts_->show(activity(), viewport()->width());
    arrange();
}

void WeekView::arrange() {
    const int viewWidth = viewport()->width();
    const int width = std::max(viewWidth, WeekCanvas::widthOf(parts_->columnWidth));
    const int canvasHeight = static_cast<int>(WeekPicture::height);
    parts_->row->setDirection(viewWidth < narrowCards ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    // The cards keep to the view's width and lie where the eye begins.
    const int cardsHeight = parts_->cards->sizeHint().height();
    parts_->content->resize(width, canvasHeight + cardsHeight);
    parts_->canvas->setGeometry(0, 0, width, canvasHeight);
    parts_->cards->setGeometry(isRightToLeft() ? width - viewWidth : 0, canvasHeight, viewWidth, cardsHeight);
}

}  // namespace quorvane
