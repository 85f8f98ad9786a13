#include "shell/look/SegmentedControl.h"

#include "shell/look/Painting.h"
#include "shell/look/SegmentedControlAccessible.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <algorithm>

namespace quorvane {
namespace {

constexpr int inset = 3;  // the tray's edge and 2 more
constexpr int padding = 14;

}  // namespace

SegmentedControl::SegmentedControl(const QStringList& texts, const QString& name, QWidget* parent)
    : QWidget(parent), texts_(texts) {
    SegmentedControlAccessible::install();
    setAccessibleName(name);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setFont(quorvane::font(TypeRole::bodyStrong));
}

void SegmentedControl::setCurrent(int index) {
    if (index < 0 || index >= texts_.size() || index == current_) return;
    current_ = index;
    SegmentedControlAccessible::announceCurrent(*this);
    update();
}

void SegmentedControl::setCompact(bool isCompact) {
    isCompact_ = isCompact;
    setFont(quorvane::font(isCompact ? TypeRole::label : TypeRole::bodyStrong));
    updateGeometry();
    update();
}

void SegmentedControl::choose(int index) {
    if (index < 0 || index >= texts_.size() || index == current_) return;
    setCurrent(index);
    chosen.send(index);
}

QSize SegmentedControl::sizeHint() const {
    int width = 2 * inset;
    for (const QString& text : texts_)
        width += fontMetrics().horizontalAdvance(text) + 2 * padding;
    const int height = isCompact_ ? Metrics::smallHeight : Metrics::controlHeight;
    return {width, std::max(height, fontMetrics().height() + 2 * inset + 4)};
}

double SegmentedControl::focusRadius() const {
    return Metrics::controlRadius;
}

QRect SegmentedControl::segment(int index) const {
    // What is left over, or missing, is shared evenly.
    const int spare = width() - sizeHint().width();
    const int count = static_cast<int>(texts_.size());
    int x = inset;
    for (int before = 0; before < index; ++before) {
        x += fontMetrics().horizontalAdvance(texts_[before]) + 2 * padding;
    }
    const int left = x + spare * index / count;
    const int right = x + fontMetrics().horizontalAdvance(texts_[index]) + 2 * padding + spare * (index + 1) / count;
    return QStyle::visualRect(layoutDirection(), rect(), QRect(left, inset, right - left, height() - 2 * inset));
}

int SegmentedControl::segmentAt(const QPointF& position) const {
    for (int index = 0; index < texts_.size(); ++index) {
        if (segment(index).adjusted(0, -inset, 0, inset).contains(position.toPoint())) return index;
    }
    return -1;
}

void SegmentedControl::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const Theme& t = theme();
    paintPanel(painter, rect(), Metrics::controlRadius, t.sunken, t.line);
    for (int index = 0; index < texts_.size(); ++index) {
        const QRect place = segment(index);
        const bool isCurrent = index == current_;
        if (isCurrent) {
            paintPanel(painter, place, Metrics::controlRadius - 2, t.segment, t.isDark ? QColor() : t.line);
        } else if (index == hovered_ && isEnabled()) {
            paintPanel(painter, place, Metrics::controlRadius - 2, t.press, QColor());
        }
        painter.setPen(!isEnabled() ? withOpacity(t.text3, 0.75) : isCurrent ? t.text : t.text2);
        const QString shown = fontMetrics().elidedText(texts_[index], Qt::ElideRight, place.width() - 4);
        painter.drawText(place, Qt::AlignCenter, shown);
    }
}

void SegmentedControl::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) choose(segmentAt(event->position()));
}

void SegmentedControl::mouseMoveEvent(QMouseEvent* event) {
    const int under = segmentAt(event->position());
    if (under == hovered_) return;
    hovered_ = under;
    update();
}

void SegmentedControl::leaveEvent(QEvent* /*event*/) {
    hovered_ = -1;
    update();
}

void SegmentedControl::keyPressEvent(QKeyEvent* event) {
    const int last = static_cast<int>(texts_.size()) - 1;
    const int onwards = layoutDirection() == Qt::RightToLeft ? -1 : 1;
    switch (event->key()) {
    case Qt::Key_Right: return choose(std::clamp(current_ + onwards, 0, last));
    case Qt::Key_Left: return choose(std::clamp(current_ - onwards, 0, last));
    case Qt::Key_Down: return choose(std::min(current_ + 1, last));
    case Qt::Key_Up: return choose(std::max(current_ - 1, 0));
    case Qt::Key_Home: return choose(0);
    case Qt::Key_End: return choose(last);
    default: QWidget::keyPressEvent(event);
    }
}

}  // namespace quorvane
