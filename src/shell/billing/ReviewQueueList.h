#pragma once

#include "base/Signal.h"
#include "shell/state/BillingReviewQueueView.h"

#include <QListView>
#include <functional>

namespace quorvane {

class ReviewRowControls;
class ReviewRowDelegate;

/// The rows of the review queue. However many there are, only the row under the pointer and the one that the keys act
/// upon have live controls. B, X, R and N give the current row a status, Tab leads into its controls.
class ReviewQueueList : public QWidget {
public:
    ReviewQueueList(BillingReviewQueueView& queue, const Localization& localization, QWidget* parent = nullptr);

    [[nodiscard]] QListView& list() { return *list_; }

protected:
    void resizeEvent(QResizeEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool takeKey(QKeyEvent& event);
    void moveCurrent(int rows);
    void setHovered(int row);
    void hoverUnderPointer();
    void makeCurrent(int row);
    void showControls();
    [[nodiscard]] bool isInSight(int row) const;
    void announce(int row);

    BillingReviewQueueView& queue_;
    QListView* list_;
    ReviewRowDelegate* delegate_;
    ReviewRowControls* current_;
    ReviewRowControls* hovered_;
};

}  // namespace quorvane
