#include "shell/window/DateHeader.h"

#include "shell/look/Controls.h"
#include "shell/look/Label.h"
#include "shell/look/Theme.h"
#include "shell/signals/Subscribe.h"

#include <QAccessible>
#include <QComboBox>
#include <QHBoxLayout>
#include <QResizeEvent>
#include <array>

namespace quorvane {
namespace {

using enum TimelineViewMode;
constexpr std::array modes{day, week, month};
constexpr int dateWidth = 172;  // of most dates: the arrows stay where they are

int indexOf(TimelineViewMode mode) {
    return static_cast<int>(mode);
}

struct StepNames {
    TextKey back;
    TextKey forward;
};

StepNames stepNames(TimelineViewMode mode) {
    switch (mode) {
    case day: break;
    case week: return {"a11y_previous_week", "a11y_next_week"};
    case month: return {"a11y_previous_month", "a11y_next_month"};
    }
    return {"a11y_previous_day", "a11y_next_day"};
}

void name(QPushButton& button, const QString& text) {
    button.setAccessibleName(text);
    button.setToolTip(text);
}

}  // namespace

DateHeader::DateHeader(DayTimelineChart& chart, platform::RunLoop& runLoop, const Localization& localization,
                       QWidget* parent)
    : QWidget(parent), chart_(chart), runLoop_(runLoop), localization_(localization) {
    auto* const row = new QHBoxLayout(this);
    buildDates(*row);
    row->addStretch(1);
    buildModes(*row);
    row->addStretch(1);
    buildZoom(*row);
    subscribe(chart_.changed, *this, [this] { showState(); });
    showState();
}

void DateHeader::buildDates(QHBoxLayout& row) {
    back_ = iconButton("left", {}, "plain");
    date_ = new Label({}, TypeRole::head, &Theme::text);
    date_->setAlignment(Qt::AlignCenter);
    forward_ = iconButton("right", {}, "plain");
    today_ = pushButton(qt(localization_.text("ui_today")), "ghost");
    connect(back_, &QAbstractButton::clicked, this, [this] { chart_.stepDate(-1); });
    connect(forward_, &QAbstractButton::clicked, this, [this] { chart_.stepDate(1); });
    connect(today_, &QAbstractButton::clicked, this, [this] { goToToday(); });
    for (QWidget* const part : {static_cast<QWidget*>(back_), static_cast<QWidget*>(date_),
                                static_cast<QWidget*>(forward_), static_cast<QWidget*>(today_)})
        row.addWidget(part);
}

void DateHeader::buildModes(QHBoxLayout& row) {
    QStringList texts;
    for (const auto mode : modes)
        texts << qt(label(mode, localization_));
    const QString title = qt(localization_.text("view_mode"));
    modes_ = segments(texts, title);
    modesCompact_ = new QComboBox;
    modesCompact_->addItems(texts);
    modesCompact_->setAccessibleName(title);
    connect(modes_, &QTabBar::currentChanged, this,
            [this](int index) { setMode(modes.at(static_cast<std::size_t>(index))); });
    connect(modesCompact_, &QComboBox::activated, this,
            [this](int index) { setMode(modes.at(static_cast<std::size_t>(index))); });
    row.addWidget(modes_);
    row.addWidget(modesCompact_);
}

void DateHeader::buildZoom(QHBoxLayout& row) {
    zoomOut_ = iconButton("minus", qt(localization_.text("a11y_zoom_out")), "plain");
    zoomValue_ = new Label({}, TypeRole::body, &Theme::text2);
    zoomValue_->setAlignment(Qt::AlignCenter);
    zoomIn_ = iconButton("plus", qt(localization_.text("a11y_zoom_in")), "plain");
    connect(zoomOut_, &QAbstractButton::clicked, this, [this] { chart_.zoomOut(); });
    connect(zoomIn_, &QAbstractButton::clicked, this, [this] { chart_.zoomIn(); });
    for (QWidget* const part :
         {static_cast<QWidget*>(zoomOut_), static_cast<QWidget*>(zoomValue_), static_cast<QWidget*>(zoomIn_)})
        row.addWidget(part);
}

void DateHeader::setMode(TimelineViewMode mode) {
    if (mode != chart_.currentViewMode()) chart_.setViewMode(mode);
}

void DateHeader::goToToday() {
    chart_.selectDate(runLoop_.now());
}

void DateHeader::showState() {
    const auto mode = chart_.currentViewMode();
    const auto names = stepNames(mode);
    name(*back_, qt(localization_.text(names.back)));
    name(*forward_, qt(localization_.text(names.forward)));
    date_->setText(isolated(qt(chart_.dateLabel())));
    modes_->setCurrentIndex(indexOf(mode));
    modesCompact_->setCurrentIndex(indexOf(mode));
    const auto height = static_cast<std::int64_t>(chart_.hourHeight());
    zoomValue_->setText(isolated(QString::number(height) + "px"));
    zoomValue_->setAccessibleName(qt(localization_.text("a11y_zoom_value", height)));
    const bool isDay = mode == day;
    zoomOut_->setVisible(isDay);
    zoomIn_->setVisible(isDay);
    adaptTo(width());
}

void DateHeader::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    adaptTo(event->size().width());
}

void DateHeader::adaptTo(int width) {
    using namespace DayTimelineGeometry;
    const auto density = headerDensity(width);
    const bool isRegular = density == HeaderDensity::regular;
    const bool isMinimal = density == HeaderDensity::minimal;
    for (QWidget* const control : std::initializer_list<QWidget*>{back_, forward_, today_, zoomOut_, zoomIn_, modes_})
        setKind(*control, "small", !isRegular);
    modes_->setVisible(!isMinimal);
    modesCompact_->setVisible(isMinimal);
    today_->setVisible(!isMinimal);
    zoomValue_->setVisible(isRegular && chart_.currentViewMode() == day);
    date_->setMinimumWidth(isRegular ? dateWidth : 0);
    layout()->setSpacing(static_cast<int>(headerSpacing(density)));
    const int margin = isRegular ? 20 : 12;
    layout()->setContentsMargins(margin, 0, margin, 0);
}

}  // namespace quorvane
