#include "shell/window/ActivityPage.h"

#include "base/Calendar.h"
#include "shell/chart/CategorySheet.h"
#include "shell/chart/DayChartView.h"
#include "shell/chart/DetailsPanel.h"
#include "shell/chart/LegendPanel.h"
#include "shell/chart/MonthView.h"
#include "shell/chart/ProjectPanel.h"
#include "shell/chart/WeekView.h"
#include "shell/look/Card.h"
#include "shell/look/Controls.h"
#include "shell/look/EmptyState.h"
#include "shell/look/Painting.h"
#include "shell/look/Typography.h"
#include "shell/praise/PraiseCard.h"
#include "shell/signals/Subscribe.h"
#include "shell/state/AbsenceOffer.h"
#include "shell/state/RecordingState.h"
#include "shell/window/ActivityLayout.h"
#include "shell/window/AwayLine.h"
#include "shell/window/DateHeader.h"
#include "shell/window/DayPraise.h"
#include "store/StoredNames.h"

#include <QEvent>
#include <QPainter>
#include <QPointer>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

namespace quorvane {
namespace {

constexpr int lowBelow = 620;

}  // namespace

struct ActivityPageParts {
    ActivityPage::Services services;
    LoadingState* loading = nullptr;
    EmptyState* unreadable = nullptr;
    bool wantsFocus = false;  ///< the view that shows next
    DateHeader* header = nullptr;
    LegendPanel* legend = nullptr;
    Card* dayCard = nullptr;
    DayChartView* day = nullptr;
    WeekView* week = nullptr;
    MonthView* month = nullptr;
    DetailsPanel* details = nullptr;
    ProjectPanel* project = nullptr;
    std::unique_ptr<AbsenceOffer> absenceOffer;
    AwayLine* awayLine = nullptr;
    std::unique_ptr<DayPraise> praise;
    PraiseCard* praiseCard = nullptr;
    QPointer<Sheet> sheet;  ///< of the project panel where it has no column
    bool detailsFloat = false;

    [[nodiscard]] DayTimelineChart& chart() const { return services.activity.chart(); }
};

ActivityPage::ActivityPage(const Services& services, QWidget* parent)
    : Keeps(std::make_unique<ActivityPageParts>(ActivityPageParts{.services = services})), QWidget(parent) {
    parts_->loading = new LoadingState(qt(services.localization.text("loading")), this);
    subscribe(services.activity.changed, *this, [this] { follow(); });
    if (services.activity.isDataLoaded()) build();
}

ActivityPage::~ActivityPage() = default;

// The parts are made with the data: an empty chart says that nothing was recorded, which isn't known before.
void ActivityPage::build() {
    const Services& services = parts_->services;
    auto& chart = parts_->chart();
    auto& runLoop = services.activity.runLoop();
    parts_->header = new DateHeader(chart, runLoop, services.localization, this);
    parts_->legend = new LegendPanel(chart, runLoop, services.localization, this);
    parts_->dayCard = new Card(this);
    parts_->day = new DayChartView(chart, runLoop, services.applicationIcons, services.localization);
    auto* const inside = new QVBoxLayout(parts_->dayCard);
    inside->setContentsMargins(1, 1, 1, 1);
    inside->addWidget(parts_->day);
    parts_->week = new WeekView(services.activity, services.localization, services.console, this);
    parts_->month = new MonthView(services.activity, services.localization, services.console, this);
    parts_->praise = std::make_unique<DayPraise>(DayPraise::Services{
        services.activity, services.context, services.localization, services.console, services.randomWords});
    parts_->praiseCard = new PraiseCard(parts_->praise->state(), services.localization, this);
    parts_->praiseCard->installEventFilter(this);
    subscribe(parts_->praiseCard->shareWanted, *this, [this] { parts_->praise->share(*window()); });
    parts_->details = new DetailsPanel(chart, services.applicationIcons, services.localization, this);
    parts_->details->installEventFilter(this);
    parts_->project = new ProjectPanel(chart, services.localization, this);
    parts_->absenceOffer = std::make_unique<AbsenceOffer>(chart, services.tracker, services.context, runLoop);
    parts_->awayLine = new AwayLine(*parts_->absenceOffer, services.localization, this);
    parts_->awayLine->hide();
    subscribe(parts_->absenceOffer->changed, *this, [this] { placeAwayLine(); });
    const auto choose = [this](const ProcessedActivityItem& item) { chooseCategory(item); };
    subscribe(parts_->day->categoryWanted, *this, choose);
    subscribe(parts_->details->categoryWanted, *this, choose);
    subscribe(parts_->details->closeWanted, *this, [this] { letGo(); });
    parts_->unreadable =
        new EmptyState("warn", qt(services.localization.text("ui_records_unreadable_title")), {}, this);
    auto* const again = pushButton(qt(services.localization.text("ui_try_again")));
    connect(again, &QAbstractButton::clicked, this, [this] { parts_->services.activity.refresh(); });
    parts_->unreadable->addButton(again);
    subscribe(services.tracker.isTrackingChanged, *this, [this](bool) { explainEmptyDay(); });
    subscribe(services.tracker.captureHealthChanged, *this, [this] { explainEmptyDay(); });
    const auto* const focus = window()->focusWidget();
    const bool isWaitedFor = focus == nullptr || focus == parts_->loading;
    place();
    if (isWaitedFor) parts_->day->setFocus();
}

void ActivityPage::follow() {
    if (parts_->header == nullptr && parts_->services.activity.isDataLoaded()) build();
    if (parts_->header != nullptr) place();
}

/// Today is empty for a reason that has to be known where nothing can be seen.
void ActivityPage::explainEmptyDay() {
    const auto& localization = parts_->services.localization;
    const auto& tracker = parts_->services.tracker;
    const Date now = parts_->services.activity.runLoop().now();
    const bool isToday = Calendar::current().isSameDay(parts_->chart().selectedDate(), now);
    if (isToday && recordingState(tracker) == RecordingState::blind) {
        const auto trouble = captureTrouble(tracker.captureHealth(), localization);
        parts_->day->setEmptyTexts(qt(recordingTitle(RecordingState::blind, localization)),
                                   qt(trouble.reason + " " + trouble.remedy));
    } else if (parts_->chart().hasOnlyHiddenRecords()) {
        parts_->day->setEmptyTexts(qt(localization.text("ui_only_short_records_title")),
                                   qt(localization.text("ui_only_short_records_description")));
    } else {
        parts_->day->setEmptyTexts(qt(localization.text("ui_no_records_title")),
                                   qt(localization.text("ui_no_records_description")));
    }
}

void ActivityPage::setMode(TimelineViewMode mode) {
    if (parts_->header == nullptr) return;
    parts_->wantsFocus = true;
    parts_->header->setMode(mode);
    place();  // also where it is shown already
}

void ActivityPage::goToToday() {
    if (parts_->header != nullptr) parts_->header->goToToday();
}

QRect ActivityPage::mirrored(const QRect& rectangle) const {
    return QStyle::visualRect(layoutDirection(), rect(), rectangle);
}

/// Is there nothing to be said of what is chosen, so that something else stands there?
bool ActivityPage::isCovered() const {
    const auto& activity = parts_->services.activity;
    return activity.isLate() || activity.state() == LiveRecords::State::failed;
}

void ActivityPage::cover() {
    const auto& activity = parts_->services.activity;
    const QRect below = rect().adjusted(0, ActivityLayout::headerHeight, 0, 0);
    parts_->loading->setGeometry(below);
    parts_->loading->setVisible(activity.isLate());
    parts_->unreadable->setTexts(qt(parts_->services.localization.text("ui_records_unreadable_title")),
                                 qt(activity.failure()));
    parts_->unreadable->setGeometry(below);
    parts_->unreadable->setVisible(isCovered() && !activity.isLate());
}

void ActivityPage::place() {
    explainEmptyDay();
    cover();
    const auto mode = parts_->chart().currentViewMode();
    const auto layout = activityLayout(size(), mode, parts_->chart().projectSelector() != nullptr);
    parts_->header->setGeometry(layout.header);
    parts_->header->show();
    const std::pair<QWidget*, TimelineViewMode> views[] = {{parts_->dayCard, TimelineViewMode::day},
                                                           {parts_->week, TimelineViewMode::week},
                                                           {parts_->month, TimelineViewMode::month}};
    const auto* const focus = window()->focusWidget();
    bool losesFocus = mode != TimelineViewMode::day && parts_->details->isAncestorOf(focus);
    for (const auto& [view, shownIn] : views) {
        const bool isShown = shownIn == mode && !isCovered();
        if (isShown) view->setGeometry(mirrored(layout.chart));
        losesFocus = losesFocus || (!isShown && view->isAncestorOf(focus));
        view->setVisible(isShown);
    }
    parts_->wantsFocus = parts_->wantsFocus || losesFocus;
    if (!isCovered() && std::exchange(parts_->wantsFocus, false)) mainView()->setFocus();
    if (layout.legend) parts_->legend->setGeometry(mirrored(*layout.legend));
    parts_->legend->setVisible(layout.legend && !isCovered());
    placePraise(layout);
    placeDetails(layout);
    placeProjectPanel(layout);
    placeAwayLine();
}

/// The keyboard stays with the time that is shown.
QWidget* ActivityPage::mainView() const {
    if (parts_->header == nullptr) return nullptr;
    switch (parts_->chart().currentViewMode()) {
    case TimelineViewMode::day: break;
    case TimelineViewMode::week: return parts_->week->focusProxy();
    case TimelineViewMode::month: return parts_->month->focusProxy();
    }
    return parts_->day;
}

void ActivityPage::placePraise(const ActivityLayout& layout) {
    auto& card = *parts_->praiseCard;
    if (layout.praise) {
        parts_->praise->refresh();
        card.setForm(layout.isPraiseLine   ? PraiseCard::Form::line
                     : height() < lowBelow ? PraiseCard::Form::compact
                                           : PraiseCard::Form::full);
        const int width = layout.praise->width();
        const int wanted = card.hasHeightForWidth() ? card.heightForWidth(width) : card.sizeHint().height();
        const QSize size(width,
                         layout.isPraiseLine ? layout.praise->height() : std::min(wanted, layout.praise->height()));
        card.setGeometry(mirrored(QRect(layout.praise->topLeft(), size)));
    }
    card.setVisible(layout.praise && !isCovered());
}

QRect ActivityPage::detailsColumn(const ActivityLayout& layout) const {
    QRect column = *layout.side;
    if (layout.praise) column.setTop(parts_->praiseCard->geometry().bottom() + 1 + Metrics::cardGap);
    return column;
}

/// The details stand in their column, or beside the block where there is none.
void ActivityPage::placeDetails(const ActivityLayout& layout) {
    auto& details = *parts_->details;
    const auto& chart = parts_->chart();
    const bool isShown = !isCovered() && chart.currentViewMode() == TimelineViewMode::day && chart.selectedActivity() &&
                         parts_->chart().projectSelector() == nullptr;
    if (isShown) {
        const int width = layout.side ? layout.side->width() : ActivityLayout::popUpWidth;
        const int wanted = details.hasHeightForWidth() ? details.heightForWidth(width) : details.sizeHint().height();
        const QSize size(width, std::min(wanted, layout.chart.height()));
        const auto block = parts_->day->selectedBlock().translated(layout.chart.topLeft());
        if (layout.side) {
            QRect column = detailsColumn(layout);
            // Where there is no room for both the praise waits.
            const bool hasRoom = column.height() >= size.height();
            parts_->praiseCard->setVisible(hasRoom && layout.praise.has_value());
            if (!hasRoom) column = *layout.side;
            details.setGeometry(mirrored(QRect(column.topLeft(), size)));
        } else {
            details.setGeometry(mirrored(popUpBeside(block, size, layout.chart, rect())));
        }
        details.raise();
    }
    details.setVisible(isShown);
    const bool floated = std::exchange(parts_->detailsFloat, isShown && !layout.side);
    if (floated || parts_->detailsFloat) update();  // the shadow
}

/// The project panel stands in the details' column, or over everything where there is none.
void ActivityPage::placeProjectPanel(const ActivityLayout& layout) {
    auto& panel = *parts_->project;
    const bool isShown = parts_->chart().projectSelector() != nullptr;
    if (isShown && !layout.side) {
        if (parts_->sheet) return;
        const auto name = parts_->services.localization.text("timeline_assign_project");
        parts_->sheet = new Sheet(*window(), qt(name), ActivityLayout::sheetWidth);
        parts_->sheet->setContent(panel);
        connect(parts_->sheet, &QDialog::rejected, this, [this] {
            parts_->project->setParent(this);  // before the sheet goes with all that is in it
            parts_->chart().cancelProjectSelection();
        });
        panel.setFocus();
        parts_->sheet->open();
        return;
    }
    const bool wasShown = panel.isVisible();
    if (Sheet* const sheet = std::exchange(parts_->sheet, nullptr)) {
        panel.setParent(this);  // which hides it
        sheet->accept();
    }
    if (isShown) panel.setGeometry(mirrored(*layout.side));
    if (!isShown && wasShown) parts_->day->setFocus();
    const bool opens = isShown && !panel.isVisible();
    panel.setVisible(isShown);
    if (opens) panel.setFocus();  // keys go on there, and Esc leaves it
}

/// In the lower corner, over whatever stands there; it comes and goes without the focus.
void ActivityPage::placeAwayLine() {
    auto& line = *parts_->awayLine;
    const bool isShown = line.refresh();
    if (isShown) {
        const int width = std::min(AwayLine::lineWidth, this->width() - 2 * ActivityLayout::margin);
        const QSize size(width, line.hasHeightForWidth() ? line.heightForWidth(width) : line.sizeHint().height());
        line.setGeometry(mirrored(QRect(
            QPoint(this->width() - width - ActivityLayout::margin, height() - size.height() - ActivityLayout::margin),
            size)));
        line.raise();
    } else if (line.isAncestorOf(window()->focusWidget())) {
        parts_->day->setFocus();
    }
    if (isShown || line.isVisible()) update();  // the shadow
    line.setVisible(isShown);
}

void ActivityPage::letGo() {
    parts_->chart().select(nullptr);
    parts_->day->setFocus();
}

void ActivityPage::chooseCategory(const ProcessedActivityItem& item) {
    auto picker = parts_->services.activity.categoryPicker(item);
    if (picker == nullptr) return;
    const bool hasName = item.appName != StoredNames::unknownApp;
    CategorySheet::open(*window(), std::move(picker), parts_->services.categories,
                        hasName ? item.appName : std::string(), parts_->services.localization, [page = QPointer(this)] {
                            if (page == nullptr) return;
                            page->parts_->services.activity.refresh();
                            page->parts_->details->showMarkingSuccess();
                        });
}

/// Details and praise are as high as what they say, which comes after the choice, or later: a category, a longer title.
bool ActivityPage::eventFilter(QObject* watched, QEvent* event) {
    const bool isOfOurs = watched == parts_->details || watched == parts_->praiseCard;
    if (event->type() == QEvent::LayoutRequest && isOfOurs && dynamic_cast<QWidget&>(*watched).isVisible()) place();
    return QWidget::eventFilter(watched, event);
}

/// The keyboard waits here for the day: a window without a focus gives it to whatever stands first.
void ActivityPage::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (parts_->header == nullptr && window()->focusWidget() == nullptr) parts_->loading->setFocus();
}

void ActivityPage::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (parts_->header == nullptr) parts_->loading->setGeometry(rect());
    if (parts_->header != nullptr) place();
}

/// What floats casts a shadow on the page.
void ActivityPage::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (parts_->detailsFloat) paintShadow(painter, parts_->details->geometry(), Metrics::cardRadius, Elevation::popUp);
    if (parts_->awayLine != nullptr && parts_->awayLine->isVisible())
        paintShadow(painter, parts_->awayLine->geometry(), Metrics::cardRadius, Elevation::popUp);
}

void ActivityPage::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange && parts_->header != nullptr) place();
}

}  // namespace quorvane
