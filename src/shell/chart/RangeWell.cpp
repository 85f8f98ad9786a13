#include "shell/chart/RangeWell.h"

#include "base/TimeText.h"
#include "shell/chart/QuarterField.h"
#include "shell/look/Label.h"
#include "shell/look/Theme.h"

#include <QHBoxLayout>
#include <QSignalBlocker>
#include <algorithm>

namespace quorvane {
namespace {

constexpr int leastLength = 15;  // minutes
constexpr int endOfDay = 24 * 60;
constexpr int leastWidthWithButtons = 260;

int minutesOf(double hour) {
    return static_cast<int>(wholeMinutes(hour * 1h));
}

void set(QuarterField& field, int minutes, int least, int most) {
    const QSignalBlocker quiet(field);
    field.setRange(least, most);
    field.setValue(minutes);
}

}  // namespace

RangeWell::RangeWell(const Localization& localization, QWidget* parent)
    : Well("info", parent), start_(new QuarterField(qt(localization.text("start_time")))),
      end_(new QuarterField(qt(localization.text("end_time")))),
      length_(new Label({}, TypeRole::bodyStrong, &Theme::accInk)) {
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 6, 12, 6);
    layout->setSpacing(6);
    layout->addWidget(start_);
    layout->addWidget(new Label(QStringLiteral("–"), TypeRole::head, &Theme::accInk));
    layout->addWidget(end_);
    layout->addStretch(1);
    layout->addWidget(length_);
    setFocusProxy(start_);
    for (QuarterField* const field : {start_, end_})
        connect(field, &QSpinBox::valueChanged, this, [this] { choose(); });
}

void RangeWell::setRange(const TimeRange& range, Seconds length) {
    range_ = range;
    const int start = minutesOf(range.startHour);
    const int end = minutesOf(range.endHour);
    set(*start_, start, 0, std::max(start, end - leastLength));
    set(*end_, end, std::min(end, start + leastLength), std::max(end, endOfDay));
    length_->setText(isolated(qt(lengthText(length))));
}

/// The buttons go where there is no room for them; keys and wheel step as well.
void RangeWell::resizeEvent(QResizeEvent* event) {
    const auto symbols = width() < leastWidthWithButtons ? QAbstractSpinBox::NoButtons : QAbstractSpinBox::UpDownArrows;
    start_->setButtonSymbols(symbols);
    end_->setButtonSymbols(symbols);
    Well::resizeEvent(event);
}

void RangeWell::choose() {
    TimeRange range = range_;
    if (start_->value() != minutesOf(range.startHour)) range.startHour = start_->value() / 60.0;
    if (end_->value() != minutesOf(range.endHour)) range.endHour = end_->value() / 60.0;
    if (range != range_) rangeChosen.send(range);
}

}  // namespace quorvane
