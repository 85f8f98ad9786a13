#include "shell/logs/LogList.h"

#include "shell/logs/LogEntryRow.h"
#include "shell/logs/LogListModel.h"
#include "shell/look/Icons.h"
#include "shell/look/Typography.h"
#include "shell/signals/Subscribe.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <algorithm>

namespace quorvane {

LogList::LogList(LogViewerState& state, const Localization& localization, QWidget* parent)
    : QListView(parent), state_(state), localization_(localization), model_(new LogListModel(this)) {
    setAccessibleName(qt(localization.text("recent_logs_title")));
    setModel(model_);
    setItemDelegate(new LogEntryRow(this));
    setUniformItemSizes(true);
    setSelectionMode(ExtendedSelection);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFrameShape(NoFrame);
    setMouseTracking(true);
    subscribe(state.autoScrollChanged, *this, [this] {
        if (state_.autoScroll()) scrollToBottom();
    });
}

void LogList::refresh() {
    auto entries = state_.displayedLogs();
    const auto& before = model_->entries();
    const bool isSame = before.size() == entries.size() && (before.empty() || before.back().id == entries.back().id);
    model_->setEntries(std::move(entries));
    if (!isSame && state_.autoScroll()) scrollToBottom();
}

std::size_t LogList::shownCount() const {
    return model_->entries().size();
}

std::vector<LogEntry> LogList::selectedEntries() const {
    auto rows = selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    std::vector<LogEntry> entries;
    entries.reserve(static_cast<std::size_t>(rows.size()));
    for (const QModelIndex& row : rows)
        entries.push_back(model_->entry(row));
    return entries;
}

void LogList::copyMessages() const {
    QGuiApplication::clipboard()->setText(qt(LogViewerState::messages(selectedEntries())));
}

void LogList::copyLogs() const {
    QGuiApplication::clipboard()->setText(qt(LogViewerState::formattedLogs(selectedEntries())));
}

void LogList::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) {
        if (selectionModel()->hasSelection()) copyLogs();
        return;
    }
    QListView::keyPressEvent(event);
    if (event->key() == Qt::Key_End) state_.setAutoScroll(true);
}

void LogList::contextMenuEvent(QContextMenuEvent* event) {
    if (!selectionModel()->hasSelection()) return;
    const bool isByKey = event->reason() == QContextMenuEvent::Keyboard;
    if (!isByKey && !indexAt(event->pos()).isValid()) return;
    auto* const menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(icon(QStringLiteral("copy")), qt(localization_.text("copy_message")), this,
                    [this] { copyMessages(); });
    menu->addAction(icon(QStringLiteral("copy")), qt(localization_.text("copy_log")), this, [this] { copyLogs(); });
    const QPoint place = isByKey ? visualRect(currentIndex()).center() : event->pos();
    menu->popup(viewport()->mapToGlobal(place));
}

}  // namespace quorvane
