#pragma once

#include "shell/state/BillingReviewQueueView.h"

#include <QListView>
#include <QStandardItemModel>
#include <array>

namespace quorvane {

class ReviewRowDelegate;
class ReviewRowEditor;

/// The rows of the review queue. However many there are, only the row under the pointer and the one that the keys act
/// upon have live controls. B, X, R and N give the current row a status, Tab leads into its controls.
class ReviewQueueList : public QWidget {
public:
    ReviewQueueList(BillingReviewQueueView& queue, const Localization& localization, QWidget* parent = nullptr);

    [[nodiscard]] QListView& list() { return *list_; }

protected:
    void leaveEvent(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void setUpList(const Localization& localization);
    void follow();
    void fillProjects();
    bool takeKey(QKeyEvent& event);
    void moveCurrent(int rows);
    void setHovered(int row);
    void hoverUnderPointer();
    void showEditors();
    [[nodiscard]] bool isInSight(int row) const;
    void announce(int row);

    BillingReviewQueueView& queue_;
    QString notSet_;
    QStandardItemModel projects_;
    QListView* list_;
    // Not in the list: what is inside a list's rows no assistive technology finds.
    ReviewRowEditor* current_;
    ReviewRowEditor* hovered_;
    ReviewRowDelegate* delegate_;
};

}  // namespace quorvane
