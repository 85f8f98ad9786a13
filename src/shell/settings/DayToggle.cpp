#include "shell/settings/DayToggle.h"

#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"

#include <QPainter>
#include <algorithm>

namespace quorvane {
namespace {

constexpr int narrowest = 46;
constexpr int side = 30;
constexpr int padding = 8;

}  // namespace

DayToggle::DayToggle(const QString& name, QWidget* parent) : Switch(name, parent) {
    setFont(quorvane::font(TypeRole::bodyStrong));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize DayToggle::sizeHint() const {
    return {std::max(narrowest, fontMetrics().horizontalAdvance(text()) + 2 * padding), side};
}

double DayToggle::focusRadius() const {
    return Metrics::controlRadius;
}

void DayToggle::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Theme& colors = theme();
    const QColor chosen = underMouse() ? colors.accFillHover : colors.accFill;
    const QColor open = underMouse() ? colors.hover : colors.surface;
    paintPanel(painter, rect(), Metrics::controlRadius, isChecked() ? chosen : open,
               isChecked() ? QColor() : colors.control);
    painter.setPen(isChecked() ? colors.onFill : colors.text2);
    painter.drawText(rect(), Qt::AlignCenter, text());
}

}  // namespace quorvane
