#include "shell/window/NavigationButton.h"

#include "shell/look/Icons.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyle>

namespace quorvane {
namespace {

constexpr int rowHeight = 38;
constexpr int iconSide = 17;
constexpr int ringRoom = 4;

}  // namespace

NavigationButton::NavigationButton(const QString& iconName, const QString& title, QWidget* parent)
    : QAbstractButton(parent), iconName_(iconName) {
    setText(title);
    setAccessibleName(title);
    setCheckable(true);
    setAutoExclusive(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
}

void NavigationButton::setRail(bool isRail) {
    isRail_ = isRail;
    setToolTip(isRail ? text() : QString());
    updateGeometry();
    update();
}

QSize NavigationButton::sizeHint() const {
    if (isRail_) return {rowHeight + 2 * ringRoom, rowHeight};
    return {QFontMetrics(quorvane::font(TypeRole::bodyStrong)).horizontalAdvance(text()) + 60, rowHeight};
}

void NavigationButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Theme& colors = theme();
    const QRectF face = isRail_ ? QRectF(rect()).adjusted(ringRoom, 0, -ringRoom, 0) : QRectF(rect());
    if (isChecked())
        paintPanel(painter, face, Metrics::controlRadius, colors.surface, colors.line);
    else if (underMouse())
        paintPanel(painter, face, Metrics::controlRadius, isDown() ? colors.press : colors.hover, {});
    if (hasFocus() && showsFocusRing(*this))
        paintFocusRing(painter, face.adjusted(4, 4, -4, -4), Metrics::controlRadius - 2, colors.side);
    const QColor ink = isChecked() ? colors.accent : colors.text2;
    const int left = isRail_ ? (width() - iconSide) / 2 : 11;
    const QRect iconPlace = QStyle::visualRect(layoutDirection(), rect(),
                                               QRect(left, (rect().height() - iconSide) / 2, iconSide, iconSide));
    drawIcon(painter, iconPlace, iconName_, ink, iconSide, layoutDirection());
    if (isRail_) return;
    painter.setFont(quorvane::font(TypeRole::bodyStrong));
    painter.setPen(isChecked() ? colors.text : colors.text2);
    const QRect textPlace = QStyle::visualRect(layoutDirection(), rect(), rect().adjusted(38, 0, -8, 0));
    painter.drawText(textPlace,
                     static_cast<int>(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft)) | Qt::AlignVCenter |
                         Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(text(), Qt::ElideRight, textPlace.width()));
}

void NavigationButton::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return click();
    QAbstractButton::keyPressEvent(event);
}

}  // namespace quorvane
