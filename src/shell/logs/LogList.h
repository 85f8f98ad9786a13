#pragma once

#include "diagnostics/LogEntry.h"
#include "l10n/Localization.h"
#include "shell/state/LogViewerState.h"

#include <QListView>
#include <vector>

namespace quorvane {

class LogListModel;

/// The entries that the log window shows. End follows the newest, Ctrl+C copies whole lines, the context menu copies
/// messages or lines of what is selected.
class LogList : public QListView {
public:
    LogList(LogViewerState& state, const Localization& localization, QWidget* parent = nullptr);

    /// Shows the entries that pass the filter now, and scrolls to the newest if they are others and it follows.
    void refresh();
    [[nodiscard]] std::size_t shownCount() const;

    /// Of the selection, in the list's order.
    void copyMessages() const;
    void copyLogs() const;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    [[nodiscard]] std::vector<LogEntry> selectedEntries() const;

    LogViewerState& state_;
    const Localization& localization_;
    LogListModel* model_;
};

}  // namespace quorvane
