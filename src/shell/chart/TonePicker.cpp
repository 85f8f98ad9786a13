#include "shell/chart/TonePicker.h"

#include "shell/look/AccessibleRole.h"
#include "shell/look/Icons.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"
#include "timeline/ProjectTone.h"

#include <QPainter>
#include <QSignalBlocker>
#include <QStyle>
#include <algorithm>

namespace quorvane {
namespace {

constexpr int swatch = 26;
constexpr int rowPitch = swatch + 6;
constexpr int columns = 8;

}  // namespace

ToneButton::ToneButton(std::string_view tone, const QString& name, QWidget* parent)
    : QRadioButton(parent), tone_(tone) {
    setAccessibleName(name);
    setToolTip(qt(tone_));
    setAttribute(Qt::WA_Hover);
}

QSize ToneButton::sizeHint() const {
    return {swatch, swatch};
}

bool ToneButton::hitButton(const QPoint& position) const {
    return rect().contains(position);
}

void ToneButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF square(rect());
    const ProjectTone tone = AppColorPalette::projectTone(tone_);
    painter.setBrush(toQColor(tone.fill));
    painter.setPen(QPen(toQColor(tone.accent), 2));
    painter.drawRoundedRect(square.adjusted(1, 1, -1, -1), Metrics::controlRadius - 1, Metrics::controlRadius - 1);
    if (isChecked()) drawIcon(painter, square, QStringLiteral("check"), inkOn(toQColor(tone.fill)), 16);
}

TonePicker::TonePicker(const QString& name, const Localization& localization, QWidget* parent) : QWidget(parent) {
    setAccessibleRole(*this, QAccessible::Grouping, name);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    buttons_.reserve(AppColorPalette::projectToneNames().size());
    for (const std::string_view tone : AppColorPalette::projectToneNames()) {
        auto* const button = new ToneButton(tone, qt(localization.text("a11y_color_tone", tone)), this);
        connect(button, &QAbstractButton::toggled, this, [this, button](bool isChecked) {
            if (isChecked) chosen.send(button->tone());
        });
        buttons_.push_back(button);
    }
}

void TonePicker::setTone(std::string_view tone) {
    const auto button = std::ranges::find(buttons_, tone, &ToneButton::tone);
    if (button == buttons_.end()) return;
    const QSignalBlocker quiet(*button);
    (*button)->setChecked(true);
}

QSize TonePicker::sizeHint() const {
    return {columns * (swatch + 8), rowPitch + swatch};
}

QSize TonePicker::minimumSizeHint() const {
    return {columns * (swatch + 1), rowPitch + swatch};
}

void TonePicker::resizeEvent(QResizeEvent*) {
    const int way = width() - swatch;
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
        const int column = static_cast<int>(i) % columns;
        const QRect place(way * column / (columns - 1), static_cast<int>(i) / columns * rowPitch, swatch, swatch);
        buttons_[i]->setGeometry(QStyle::visualRect(layoutDirection(), rect(), place));
    }
}

}  // namespace quorvane
