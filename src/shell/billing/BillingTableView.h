#pragma once

#include "base/Signal.h"

#include <QTableView>

namespace quorvane {

class BillingTableDelegate;

/// The lines of the billing table under their head. It is as high as they are and leaves scrolling to the page.
class BillingTableView : public QTableView {
public:
    explicit BillingTableView(BillingTableDelegate& delegate, QWidget* parent = nullptr);

    Signal<int> edited;     ///< a row, by double click, Enter or F2
    Signal<QRect> focused;  ///< the row on which the focus is now, in the view

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

private:
    [[nodiscard]] QRect rowRectangle(int row) const;
    void hover(int row);

    BillingTableDelegate& delegate_;
    int hoveredRow_ = -1;
};

}  // namespace quorvane
