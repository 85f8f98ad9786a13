#include "shell/billing/ReviewQueueList.h"

#include "shell/billing/ReviewRowDelegate.h"
#include "shell/billing/ReviewRowEditor.h"
#include "shell/look/Boxes.h"
#include "shell/look/Typography.h"
#include "shell/signals/Subscribe.h"

#include <QAbstractListModel>
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

/// The titles of the rows, and what assistive technology reads of them; made for what is asked of them alone.
class ReviewQueueModel : public QAbstractListModel {
public:
    ReviewQueueModel(BillingReviewQueueView& queue, const Localization& localization, QObject* parent)
        : QAbstractListModel(parent), queue_(queue), localization_(localization) {
        subscribe(queue.rowChanged, *this, [this](std::size_t row) {
            const QModelIndex changed = index(static_cast<int>(row));
            Q_EMIT dataChanged(changed, changed);
        });
        subscribe(queue.allChanged, *this, [this] {
            if (rowCount() > 0) Q_EMIT dataChanged(index(0), index(rowCount() - 1));
        });
    }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(queue_.records().size());
    }

    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
        if (!index.isValid()) return {};
        const auto row = [&]() -> const BillingReviewRecordRow& {
            return queue_.row(static_cast<std::size_t>(index.row()));
        };
        switch (role) {
        case Qt::DisplayRole: return qt(row().title);
        case Qt::AccessibleTextRole: return qt(localization_.text("a11y_review_row", row().title, row().detail));
        case Qt::AccessibleDescriptionRole: return description(row());
        default: return {};
        }
    }

private:
    /// The name of the icon, the status and the project.
    [[nodiscard]] QString description(const BillingReviewRecordRow& row) const {
        const auto icon = row.hasLowConfidence ? localization_.text("a11y_low_confidence")
                                               : localization_.text("a11y_open_or_unreviewed");
        const auto project = row.project != nullptr ? row.project->name() : localization_.text("not_set");
        return QStringList{qt(icon), qt(label(row.status, localization_)), qt(project)}.join(QStringLiteral(", "));
    }

    BillingReviewQueueView& queue_;
    const Localization& localization_;
};

/// A list whose current row is in sight when Tab leaves it for the row's controls, and whose rows have the height that
/// their width asks for.
class RowsView : public QListView {
public:
    using QListView::QListView;

protected:
    bool focusNextPrevChild(bool next) override {
        if (next) scrollTo(currentIndex());
        return QListView::focusNextPrevChild(next);
    }
    void resizeEvent(QResizeEvent* event) override {
        QListView::resizeEvent(event);
        scheduleDelayedItemsLayout();
    }
};

}  // namespace

ReviewQueueList::ReviewQueueList(BillingReviewQueueView& queue, const Localization& localization, QWidget* parent)
    : QWidget(parent), queue_(queue), notSet_(qt(localization.text("not_set"))), list_(new RowsView(this)),
      current_(new ReviewRowEditor(queue, projects_, localization, this)),
      hovered_(new ReviewRowEditor(queue, projects_, localization, this)) {
    columnBox(0, this)->addWidget(list_);
    hovered_->setReachedByTab(false);
    auto* const form = new ReviewRowEditor(queue, projects_, localization, this);
    delegate_ = new ReviewRowDelegate(queue, localization, *form, *list_);
    fillProjects();
    setUpList(localization);
    follow();
    setFocusProxy(list_);
    list_->setCurrentIndex(list_->model()->index(0, 0));
}

void ReviewQueueList::setUpList(const Localization& localization) {
    list_->setAccessibleName(qt(localization.text("review_queue_title")));
    list_->setModel(new ReviewQueueModel(queue_, localization, list_));
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
    // Buttons take arrows for a way to their neighbours; here they lead to the next row.
    for (auto* const button : current_->buttons())
        button->installEventFilter(this);
}

void ReviewQueueList::follow() {
    connect(list_->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] { showEditors(); });
    connect(list_->verticalScrollBar(), &QScrollBar::valueChanged, this, [this] { hoverUnderPointer(); });
    subscribe(queue_.rowChanged, *this, [this](std::size_t row) {
        for (auto* const editor : {current_, hovered_})
            if (editor->row() == static_cast<int>(row)) editor->refresh();
        announce(static_cast<int>(row));
    });
    subscribe(queue_.allChanged, *this, [this] { fillProjects(); });
    subscribe(hovered_->used, *this, [this] {
        list_->setCurrentIndex(list_->model()->index(hovered_->row(), 0));
        list_->setFocus(Qt::MouseFocusReason);
    });
    subscribe(current_->entered, *this, [this] { setHovered(current_->row()); });
}

void ReviewQueueList::fillProjects() {
    projects_.clear();
    for (const auto& project : queue_.projects())
        projects_.appendRow(new QStandardItem(ReviewRowEditor::icon(project.get()), qt(project->name())));
    projects_.appendRow(new QStandardItem(notSet_));
    for (auto* const editor : {current_, hovered_})
        editor->refresh();
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
    showEditors();
}

void ReviewQueueList::hoverUnderPointer() {
    if (QApplication::activePopupWidget() != nullptr) return;
    const QPoint pointer = list_->viewport()->mapFromGlobal(QCursor::pos());
    const bool isOver = underMouse() && list_->viewport()->rect().contains(pointer);
    delegate_->hoveredRow = isOver ? list_->indexAt(pointer).row() : -1;
    showEditors();
}

bool ReviewQueueList::isInSight(int row) const {
    if (row < 0) return false;
    return list_->visualRect(list_->model()->index(row, 0)).intersects(list_->viewport()->rect());
}

void ReviewQueueList::showEditors() {
    const int current = list_->currentIndex().row();
    const int hovered = delegate_->hoveredRow;
    if (current_->holdsFocus() && (current != current_->row() || !isInSight(current)))
        list_->setFocus(Qt::OtherFocusReason);
    current_->setRow(isInSight(current) ? current : -1);
    hovered_->setRow(hovered != current && isInSight(hovered) ? hovered : -1);
    for (auto* const editor : {current_, hovered_}) {
        if (editor->row() < 0) continue;
        const QRect row = list_->visualRect(list_->model()->index(editor->row(), 0));
        editor->place(list_->viewport()->mapTo(this, row.topLeft()), row.width());
    }
}

/// The status of a row isn't its name, so nobody would hear that it has changed.
void ReviewQueueList::announce(int row) {
    if (!QAccessible::isActive() || row != list_->currentIndex().row()) return;
    QAccessibleEvent event(list_, QAccessible::DescriptionChanged);
    event.setChild(row);
    QAccessible::updateAccessibility(&event);
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
    const bool isViewport = watched == list_->viewport();
    switch (event->type()) {
    case QEvent::KeyPress:
        // Before the list, which would look for a title that begins with the letter.
        return !isViewport && takeKey(static_cast<QKeyEvent&>(*event));
    case QEvent::MouseMove:
        if (isViewport) setHovered(list_->indexAt(static_cast<QMouseEvent*>(event)->position().toPoint()).row());
        return false;
    case QEvent::Paint:
        // Rows are laid out by now; a resize moves them only then.
        if (isViewport) showEditors();
        return false;
    default: return false;
    }
}

}  // namespace quorvane
