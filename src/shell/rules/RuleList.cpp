#include "shell/rules/RuleList.h"

#include "shell/look/AccessibleRole.h"
#include "shell/look/Boxes.h"
#include "shell/look/Controls.h"
#include "shell/look/EmptyState.h"
#include "shell/look/Label.h"
#include "shell/look/Labelled.h"
#include "shell/look/Theme.h"
#include "shell/rules/RuleRows.h"
#include "shell/signals/Subscribe.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <algorithm>

namespace quorvane {

RuleList::RuleList(RulesDashboardView& state, const Localization& localization, Deeds deeds, QWidget* parent)
    : Card(parent), state_(state), localization_(localization), deeds_(std::move(deeds)),
      search_(searchField(qt(localization.text("ui_rule_search")))), view_(kind("round", new QListView)),
      rows_(new RuleRows(localization, view_)),
      none_(new EmptyState(QStringLiteral("rules"), qt(localization.text("ui_no_rules_title")),
                           qt(localization.text("ui_no_rules_description")))),
      notFound_(new EmptyState(QStringLiteral("search"), qt(localization.text("no_matching_logs")), {})),
      foot_(new Label({}, TypeRole::labelPlain, &Theme::text2)) {
    auto* const page = columnBox(0, this);
    page->setContentsMargins(1, 1, 1, 1);
    page->addLayout(searchLine());
    page->addWidget(new Separator);
    prepareView();
    auto* const rowsPlace = columnBox(0);
    rowsPlace->setContentsMargins(6, 5, 6, 0);
    rowsPlace->addWidget(view_);
    page->addLayout(rowsPlace, 1);
    page->addWidget(none_, 1);
    page->addWidget(notFound_, 1);
    setAccessibleRole(*foot_, QAccessible::Notification);
    foot_->setWordWrap(true);
    foot_->setContentsMargins(16, 10, 16, 10);
    foot_->hide();
    page->addWidget(foot_);

    auto* const import = pushButton(qt(localization.text("builtin_rules_import_button")));
    import->setIcon(icon(QStringLiteral("save")));
    connect(import, &QAbstractButton::clicked, this, [this] { deeds_.import(); });
    none_->addButton(import);
    subscribe(state_.rowsChanged, *this, [this] { showRows(); });
    subscribe(state_.draftChanged, *this, [this] {
        foot_->hide();
        showSelection();
    });
    showRows();
}

QLayout* RuleList::searchLine() {
    setKind(*search_, "quiet");
    search_->installEventFilter(this);
    connect(search_, &QLineEdit::textChanged, this,
            [this](const QString& text) { state_.setSearch(text.toStdString()); });
    auto* const line = columnBox(0);
    line->setContentsMargins(12, 12, 12, 11);
    line->addWidget(search_);
    return line;
}

void RuleList::prepareView() {
    view_->setAccessibleName(qt(localization_.text("nav_rules")));
    view_->setFrameShape(QFrame::NoFrame);
    view_->viewport()->setAutoFillBackground(false);
    view_->viewport()->setAttribute(Qt::WA_Hover);
    view_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view_->setVerticalScrollMode(QListView::ScrollPerPixel);
    view_->setUniformItemSizes(true);
    view_->setEditTriggers(QListView::NoEditTriggers);
    view_->setItemDelegate(new RuleRowDelegate(qt(localization_.text("ui_rule_off")), view_));
    view_->setModel(rows_);
    view_->installEventFilter(this);
    connect(view_, &QListView::clicked, this, [this](const QModelIndex& index) { choose(index); });
    connect(view_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this](const QItemSelection& selected) {
                if (!isShowing_ && !selected.isEmpty()) state_.select(rows_->row(selected.indexes().front()).rule);
            });
}

void RuleList::showRows() {
    const QScopedValueRollback showing(isShowing_, true);
    const int scrolled = view_->verticalScrollBar()->value();
    rows_->show(state_.rows());
    showSelection();
    view_->doItemsLayout();
    view_->verticalScrollBar()->setValue(scrolled);
    none_->setVisible(state_.isEmpty());
    notFound_->setVisible(!state_.isEmpty() && state_.rows().empty());
    view_->setVisible(!state_.rows().empty());
}

void RuleList::showSelection() {
    const QScopedValueRollback showing(isShowing_, true);
    const auto index = rows_->indexOf(state_.selectedRule().get());
    if (!index.isValid()) {
        view_->selectionModel()->clearSelection();
        const int row = std::min(lastRow_, rows_->rowCount() - 1);
        if (!view_->currentIndex().isValid() && row >= 0)
            view_->selectionModel()->setCurrentIndex(rows_->index(row), QItemSelectionModel::NoUpdate);
        return;
    }
    lastRow_ = index.row();
    if (view_->selectionModel()->isSelected(index)) return;
    view_->setCurrentIndex(index);
    view_->scrollTo(index);
}

void RuleList::choose(const QModelIndex& index) {
    if (!index.isValid()) return;
    view_->setCurrentIndex(index);
    deeds_.edit();
}

void RuleList::focusSearch() {
    search_->setFocus(Qt::ShortcutFocusReason);
    search_->selectAll();
}

QWidget* RuleList::view() const {
    return view_;
}

void RuleList::announceRemoval(const std::string& name) {
    foot_->setText(qt(localization_.text("ui_rule_removed", isolated(qt(name)).toStdString())));
    foot_->show();
    if (!QAccessible::isActive()) return;
    QAccessibleEvent event(foot_, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&event);
}

bool RuleList::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return false;
    const int key = static_cast<const QKeyEvent*>(event)->key();
    return watched == search_ ? searchKey(key) : rowKey(key);
}

/// From the search into what it found, and out of it.
bool RuleList::searchKey(int key) {
    if (key == Qt::Key_Down && view_->isVisible()) {
        view_->setFocus(Qt::TabFocusReason);
        return true;
    }
    if (key == Qt::Key_Escape && !search_->text().isEmpty()) {
        search_->clear();
        return true;
    }
    return false;
}

bool RuleList::rowKey(int key) {
    switch (key) {
    case Qt::Key_Delete:
    case Qt::Key_Backspace: deeds_.remove(); return true;
    case Qt::Key_Return:
    case Qt::Key_Enter: choose(view_->currentIndex()); return true;
    default: return false;
    }
}

}  // namespace quorvane
