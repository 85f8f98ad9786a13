#pragma once

#include "base/Signal.h"
#include "shell/state/RulesDashboardView.h"

#include <QListView>

namespace quorvane {

class RuleListModel;

/// The rules that the search finds, one below the other; only what shows is painted.
class RuleListView : public QListView {
public:
    RuleListView(RulesDashboardView& state, const Localization& localization, QWidget* parent = nullptr);

    /// A rule was chosen to be edited: with Enter or a click.
    Signal<> opened;
    /// The selected rule shall go: the delete key.
    Signal<> removalWanted;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

private:
    void showRows();
    void showSelection();
    void open(const QModelIndex& index);

    RulesDashboardView& state_;
    RuleListModel* model_;
    int lastRow_ = 0;  ///< where the selection was, for the keys after a removal
    bool isShowing_ = false;
};

}  // namespace quorvane
