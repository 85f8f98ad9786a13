#include "shell/billing/ReviewQueueList.h"

#include "shell/billing/ReviewQueueModel.h"
#include "shell/billing/ReviewRowControls.h"
#include "shell/billing/ReviewRowDelegate.h"
#include "shell/look/Typography.h"
#include "shell/signals/Subscribe.h"

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <algorithm>
#include <optional>

namespace quorvane {
namespace {

std::optional<BillingStatus> statusOf(int key) {
    switch (key) {
    case Qt::Key_B: return BillingStatus::billable;
    case Qt::Key_X: return BillingStatus::excluded;
    case Qt::Key_R: return BillingStatus::review;
    case Qt::Key_N: return BillingStatus::nonBillable;
    default: return std::nullopt;
    }
}

/// A list whose current row is in sight when Tab leaves it for the row's controls.
class RowsView : public QListView {
protected:
    bool focusNextPrevChild(bool next) override {
        if (next) scrollTo(currentIndex());
        return QListView::focusNextPrevChild(next);
    }
};

}  // namespace

ReviewQueueList::ReviewQueueList(BillingReviewQueueView& queue, const Localization& localization, QWidget* parent)
    : QWidget(parent), queue_(queue), list_(new RowsView),
      delegate_(new ReviewRowDelegate(queue, localization, *list_)) {
    list_->setParent(this);
    list_->setAccessibleName(qt(localization.text("review_queue_title")));
    list_->setModel(new ReviewQueueModel(queue, localization, list_));
    list_->setItemDelegate(delegate_);
    list_->setUniformItemSizes(true);
    list_->setResizeMode(QListView::Adjust);
    list_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list_->setFrameShape(QFrame::NoFrame);
    list_->setMouseTracking(true);
    list_->viewport()->setAutoFillBackground(false);
    list_->installEventFilter(this);
    list_->viewport()->installEventFilter(this);
    current_ = new ReviewRowControls(queue, localization, true, this);
    hovered_ = new ReviewRowControls(queue, localization, false, this);
    setFocusProxy(list_);
    connect(list_->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] { showControls(); });
    connect(list_->verticalScrollBar(), &QScrollBar::valueChanged, this, [this] { hoverUnderPointer(); });
    subscribe(queue.rowChanged, *this, [this](std::size_t row) {
        for (auto* const controls : {current_, hovered_})
            if (controls->row() == static_cast<int>(row)) controls->refresh();
        announce(static_cast<int>(row));
    });
    subscribe(queue.allChanged, *this, [this] {
        for (auto* const controls : {current_, hovered_})
            controls->fillProjects();
    });
    subscribe(hovered_->used, *this, [this] { makeCurrent(hovered_->row()); });
    subscribe(current_->entered, *this, [this] { setHovered(current_->row()); });
    list_->setCurrentIndex(list_->model()->index(0, 0));
}

void ReviewQueueList::makeCurrent(int row) {
    list_->setCurrentIndex(list_->model()->index(row, 0));
    list_->setFocus(Qt::MouseFocusReason);
}

void ReviewQueueList::moveCurrent(int rows) {
    const int last = list_->model()->rowCount() - 1;
    const int row = std::clamp(list_->currentIndex().row() + rows, 0, last);
    list_->setFocus(Qt::OtherFocusReason);
    list_->setCurrentIndex(list_->model()->index(row, 0));
    list_->scrollTo(list_->currentIndex());
}

void ReviewQueueList::setHovered(int row) {
    // A field whose choices are open keeps its row, though the pointer has left for them.
    if (row == delegate_->hoveredRow || QApplication::activePopupWidget() != nullptr) return;
    delegate_->hoveredRow = row;
    list_->viewport()->update();
    showControls();
}

void ReviewQueueList::hoverUnderPointer() {
    if (QApplication::activePopupWidget() != nullptr) return;
    const QPoint pointer = list_->viewport()->mapFromGlobal(QCursor::pos());
    const bool isOver = underMouse() && list_->viewport()->rect().contains(pointer);
    delegate_->hoveredRow = isOver ? list_->indexAt(pointer).row() : -1;
    showControls();
}

bool ReviewQueueList::isInSight(int row) const {
    if (row < 0) return false;
    return list_->visualRect(list_->model()->index(row, 0)).intersects(list_->viewport()->rect());
}

void ReviewQueueList::showControls() {
    const int current = list_->currentIndex().row();
    const int hovered = delegate_->hoveredRow;
    if (current_->holdsFocus() && current != current_->row()) list_->setFocus(Qt::OtherFocusReason);
    if (current_->holdsFocus() && !isInSight(current)) list_->setFocus(Qt::OtherFocusReason);
    current_->setRow(isInSight(current) ? current : -1);
    hovered_->setRow(hovered != current && isInSight(hovered) ? hovered : -1);
    const ReviewRowLayout layout = delegate_->layout();
    for (auto* const controls : {current_, hovered_}) {
        if (controls->row() < 0) continue;
        const int top = list_->visualRect(list_->model()->index(controls->row(), 0)).top();
        controls->place(list_->viewport()->mapTo(this, QPoint(0, top)), layout);  // the scroll bar may stand before it
    }
}

/// The status of a row isn't its name, so nobody would hear that it has changed.
void ReviewQueueList::announce(int row) {
    if (!QAccessible::isActive() || row != list_->currentIndex().row()) return;
    QAccessibleEvent event(list_, QAccessible::DescriptionChanged);
    event.setChild(row);
    QAccessible::updateAccessibility(&event);
}

void ReviewQueueList::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    list_->setGeometry(rect());
}

void ReviewQueueList::leaveEvent(QEvent* event) {
    QWidget::leaveEvent(event);
    setHovered(-1);
}

void ReviewQueueList::wheelEvent(QWheelEvent* event) {
    QApplication::sendEvent(list_->verticalScrollBar(), event);  // it came from the controls, which let it pass
}

void ReviewQueueList::keyPressEvent(QKeyEvent* event) {
    if (!takeKey(*event)) QWidget::keyPressEvent(event);
}

bool ReviewQueueList::takeKey(QKeyEvent& event) {
    const int row = list_->currentIndex().row();
    if (row < 0 || (event.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier) return false;
    if (event.key() == Qt::Key_Up || event.key() == Qt::Key_Down) {
        moveCurrent(event.key() == Qt::Key_Up ? -1 : 1);
        return true;
    }
    const auto status = statusOf(event.key());
    if (!status) return false;
    list_->scrollTo(list_->currentIndex());
    queue_.setStatus(static_cast<std::size_t>(row), *status);
    return true;
}

bool ReviewQueueList::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::KeyPress:
        // Before the list, which would look for a title that begins with the letter.
        return watched == list_ && takeKey(static_cast<QKeyEvent&>(*event));
    case QEvent::MouseMove:
        if (watched == list_->viewport())
            setHovered(list_->indexAt(static_cast<QMouseEvent*>(event)->position().toPoint()).row());
        return false;
    case QEvent::FocusIn:
    case QEvent::FocusOut:
        if (watched == list_) list_->viewport()->update();
        return false;
    case QEvent::Paint:
        // Rows are laid out by now; a resize moves them only then.
        if (watched == list_->viewport()) showControls();
        return false;
    default: return false;
    }
}

}  // namespace quorvane
