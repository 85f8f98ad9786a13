#include "shell/rules/RuleListView.h"

#include "shell/look/Typography.h"
#include "shell/rules/RuleListModel.h"
#include "shell/rules/RuleRowDelegate.h"
#include "shell/signals/Subscribe.h"

#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <algorithm>

namespace quorvane {
namespace {

constexpr int margin = 6;

}  // namespace

RuleListView::RuleListView(RulesDashboardView& state, const Localization& localization, QWidget* parent)
    : QListView(parent), state_(state), model_(new RuleListModel(localization, this)) {
    setAccessibleName(qt(localization.text("nav_rules")));
    setFrameShape(QFrame::NoFrame);
    viewport()->setAutoFillBackground(false);
    viewport()->setAttribute(Qt::WA_Hover);
    setViewportMargins(margin, margin - 1, margin, 0);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(ScrollPerPixel);
    setUniformItemSizes(true);
    setEditTriggers(NoEditTriggers);
    setItemDelegate(new RuleRowDelegate(qt(localization.text("ui_rule_off")), this));
    setModel(model_);
    connect(this, &QListView::clicked, this, [this](const QModelIndex& index) { open(index); });
    subscribe(state_.rowsChanged, *this, [this] { showRows(); });
    subscribe(state_.draftChanged, *this, [this] { showSelection(); });
    showRows();
}

void RuleListView::showRows() {
    const QScopedValueRollback showing(isShowing_, true);
    const int scrolled = verticalScrollBar()->value();
    model_->show(state_.rows());
    showSelection();
    executeDelayedItemsLayout();
    verticalScrollBar()->setValue(scrolled);
}

void RuleListView::showSelection() {
    const QScopedValueRollback showing(isShowing_, true);
    const auto index = model_->indexOf(state_.selectedRule().get());
    if (!index.isValid()) {
        selectionModel()->clearSelection();
        const int row = std::min(lastRow_, model_->rowCount() - 1);
        if (!currentIndex().isValid() && row >= 0)
            selectionModel()->setCurrentIndex(model_->index(row), QItemSelectionModel::NoUpdate);
        return;
    }
    lastRow_ = index.row();
    if (selectionModel()->isSelected(index)) return;
    setCurrentIndex(index);
    scrollTo(index);
}

void RuleListView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QListView::selectionChanged(selected, deselected);
    if (isShowing_ || selected.isEmpty()) return;
    state_.select(model_->row(selected.indexes().front()).rule);
}

void RuleListView::open(const QModelIndex& index) {
    if (!index.isValid()) return;
    setCurrentIndex(index);
    opened.send();
}

void RuleListView::focusInEvent(QFocusEvent* event) {
    const QScopedValueRollback showing(isShowing_, true);  // coming by Tab is no choice
    QListView::focusInEvent(event);
}

void RuleListView::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Delete:
    case Qt::Key_Backspace: return removalWanted.send();
    case Qt::Key_Return:
    case Qt::Key_Enter: return open(currentIndex());
    default: QListView::keyPressEvent(event);
    }
}

}  // namespace quorvane
