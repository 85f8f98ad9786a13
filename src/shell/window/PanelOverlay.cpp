#include "shell/window/PanelOverlay.h"

#include "shell/look/AccessibleRole.h"
#include "shell/look/Theme.h"

#include <QEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

namespace quorvane {
namespace {

constexpr int margin = 24;
constexpr int mostHeight = 640;

}  // namespace

PanelOverlay::PanelOverlay(QWidget& page, QWidget& panel, int width, const QString& name)
    : QWidget(&page), panel_(panel), width_(width) {
    setAccessibleRole(*this, QAccessible::Dialog, name);
    panel_.setParent(this);
    panel_.show();
    page.installEventFilter(this);
    setGeometry(page.rect());
    place();
    raise();
    show();
    announceDialog(*this, true);
}

void PanelOverlay::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    announceDialog(*this, false);
}

void PanelOverlay::place() {
    const QSize size(std::min(width_, width() - 2 * margin), std::min(mostHeight, height() - 2 * margin));
    QRect place(QPoint(), size);
    place.moveCenter(rect().center());
    panel_.setGeometry(place);
}

void PanelOverlay::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), theme().scrim);
}

void PanelOverlay::resizeEvent(QResizeEvent*) {
    place();
}

void PanelOverlay::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) return closeWanted.send();
    event->accept();  // nothing behind the scrim hears of it
}

void PanelOverlay::mousePressEvent(QMouseEvent* event) {
    event->accept();
}

bool PanelOverlay::focusNextPrevChild(bool next) {
    const QWidget* const start = focusWidget() != nullptr ? focusWidget() : this;
    const QWidget* widget = start;
    do {
        widget = next ? widget->nextInFocusChain() : widget->previousInFocusChain();
        const bool isStop = panel_.isAncestorOf(widget) && widget->isVisible() && widget->isEnabled() &&
                            (widget->focusPolicy() & Qt::TabFocus) != 0;
        if (!isStop) continue;
        const_cast<QWidget*>(widget)->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
        return true;
    } while (widget != start);
    return true;
}

bool PanelOverlay::eventFilter(QObject* watched, QEvent* event) {
    if (watched == parentWidget() && event->type() == QEvent::Resize) setGeometry(parentWidget()->rect());
    return QWidget::eventFilter(watched, event);
}

}  // namespace quorvane
