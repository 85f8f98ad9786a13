#include "shell/chart/TotalHours.h"

#include "shell/look/AccessibleRole.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"

#include <QPainter>
#include <QStyle>

namespace quorvane {
namespace {

constexpr int unitGap = 6;
const QString unit = QStringLiteral("h");

QFont unitFont() {
    QFont chosen = font(TypeRole::head);
    chosen.setWeight(QFont::Normal);
    return chosen;
}

}  // namespace

TotalHours::TotalHours(QWidget* parent) : QWidget(parent) {
    setAccessibleRole(*this, QAccessible::StaticText);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setHours(QStringLiteral("–"));
}

void TotalHours::setHours(const QString& hours) {
    hours_ = hours;
    setAccessibleName(hours + ' ' + unit);
    updateGeometry();
    update();
}

QSize TotalHours::sizeHint() const {
    const double figures = figuresWidth(quorvane::font(TypeRole::display), hours_);
    const int letter = QFontMetrics(unitFont()).horizontalAdvance(unit);
    return {qRound(figures) + unitGap + letter + 1, lineHeight(TypeRole::display)};
}

void TotalHours::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setFont(quorvane::font(TypeRole::display));
    painter.setPen(theme().text);
    // Number and unit keep their order from right to left; only where they stand is mirrored.
    const QRect place = QStyle::alignedRect(layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter, sizeHint(), rect());
    const double width =
        drawFigures(painter, QRectF(place), static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter), hours_);
    const QFontMetricsF large(painter.font());
    const double baseline = place.top() + (place.height() - large.height()) / 2 + large.ascent();
    painter.setFont(unitFont());
    painter.setPen(theme().text2);
    painter.drawText(QPointF(place.left() + width + unitGap, baseline), unit);
}

}  // namespace quorvane
