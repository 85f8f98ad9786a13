#include "shell/chart/DayCells.h"

#include "shell/look/Painting.h"
#include "timeline/TimelineCalendar.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QToolTip>
#include <algorithm>
#include <utility>

namespace quorvane {

DayCells::DayCells(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
}

void DayCells::setDays(std::vector<Day> days) {
    days_ = std::move(days);
    if (focused_ && indexOf(focused_) < 0) focused_.reset();
    hoveredDay_ = underMouse() ? dayAt(mapFromGlobal(QCursor::pos())) : -1;
    update();
}

void DayCells::startFocusAt(Date day) {
    if (std::exchange(start_, day) == day) return;
    focused_.reset();
    update();
    if (hasFocus()) tellFocus();
}

int DayCells::indexOf(std::optional<Date> date) const {
    const auto found =
        std::find_if(days_.begin(), days_.end(), [&](const Day& candidate) { return candidate.date == date; });
    return found == days_.end() ? -1 : static_cast<int>(found - days_.begin());
}

QRect DayCells::rectangleOf(Date date) const {
    const int index = indexOf(date);
    return index < 0 ? QRect() : partRectangle(index);
}

int DayCells::focusedPart() const {
    if (days_.empty()) return -1;
    return std::max(indexOf(focused_ ? focused_ : start_), 0);
}

int DayCells::ringedDay() const {
    return hasFocus() && showsFocusRing(*this) ? focusedPart() : -1;
}

int DayCells::dayAt(const QPointF& point) const {
    for (int i = 0; i < partCount(); ++i)
        if (day(i).rectangle.contains(point)) return i;
    return -1;
}

bool DayCells::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QWidget::event(event);
    const auto* const help = static_cast<QHelpEvent*>(event);
    if (const QString tip = tipAt(help->pos()); !tip.isEmpty()) {
        QToolTip::showText(help->globalPos(), tip, this);
    } else {
        QToolTip::hideText();
        event->ignore();
    }
    return true;
}

void DayCells::mousePressEvent(QMouseEvent* event) {
    const int index = dayAt(event->position());
    if (event->button() != Qt::LeftButton || index < 0) {
        event->ignore();
        return;
    }
    pressed_ = focused_ = day(index).date;
    update();
}

void DayCells::mouseMoveEvent(QMouseEvent* event) {
    hover(dayAt(event->position()));
}

void DayCells::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    // A drag away from the day where it began is no tap.
    const auto pressed = std::exchange(pressed_, std::nullopt);
    const int index = dayAt(event->position());
    if (pressed && index >= 0 && day(index).date == pressed) pressPart(index);
}

void DayCells::leaveEvent(QEvent* event) {
    hover(-1);
    QWidget::leaveEvent(event);
}

void DayCells::hover(int index) {
    const int before = std::exchange(hoveredDay_, index);
    if (before == index) return;
    setCursor(index < 0 ? Qt::ArrowCursor : Qt::PointingHandCursor);
    for (const int changed : {before, index})
        if (changed >= 0 && changed < partCount()) update(partRectangle(changed));
}

void DayCells::keyPressEvent(QKeyEvent* event) {
    const bool isPlain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    if (isPlain && !days_.empty()) {
        switch (event->key()) {
        case Qt::Key_Right: return moveFocus(1);
        case Qt::Key_Left: return moveFocus(-1);
        case Qt::Key_Up:
        case Qt::Key_Down:
            if (daysInRow_ > 0) return moveFocus(event->key() == Qt::Key_Up ? -daysInRow_ : daysInRow_);
            break;
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Space: return pressPart(focusedPart());
        default: break;
        }
    }
    QWidget::keyPressEvent(event);
}

void DayCells::moveFocus(int steps) {
    const int target = focusedPart() + steps;
    if (target < 0 || target >= partCount())
        return left.send(timelineCalendar().addingDays(steps, day(focusedPart()).date));
    focused_ = day(target).date;
    focusMoved.send(partRectangle(target));
    tellFocus();
}

void DayCells::tellFocus() {
    update();
    const int part = focusedPart();
    if (part < 0) return;
    QAccessibleEvent focus(this, QAccessible::Focus);
    focus.setChild(part);
    QAccessible::updateAccessibility(&focus);
}

void DayCells::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    tellFocus();
    const bool isByKey = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    if (isByKey && focusedPart() >= 0) focusMoved.send(partRectangle(focusedPart()));
}

void DayCells::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    update();
}

}  // namespace quorvane
