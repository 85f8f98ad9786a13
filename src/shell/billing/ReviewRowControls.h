#pragma once

#include "base/Signal.h"
#include "shell/billing/ReviewRowLayout.h"
#include "shell/state/BillingReviewQueueView.h"

#include <QWidget>

namespace quorvane {

class ReviewRowButton;
class ReviewRowCombo;

/// The live fields and buttons of one row of the review queue, laid over the painted ones. It can be moved to another
/// row at any time. Between the controls the pointer reaches what lies below.
class ReviewRowControls : public QWidget {
public:
    /// `takesFocus`: by Tab; else the pointer alone reaches them.
    ReviewRowControls(BillingReviewQueueView& queue, const Localization& localization, bool takesFocus,
                      QWidget* parent);

    /// The row that it stands for; -1 for none, and then it hides.
    void setRow(int row);
    [[nodiscard]] int row() const { return row_; }
    /// Shows what the row says now.
    void refresh();
    /// The names of the projects have changed.
    void fillProjects();
    void place(const QPoint& topLeft, const ReviewRowLayout& layout);
    [[nodiscard]] bool holdsFocus() const;

    Signal<> used;     ///< the user has chosen or pressed something
    Signal<> entered;  ///< by the pointer

protected:
    void enterEvent(QEnterEvent* event) override;

private:
    void fillStatuses();
    void give(BillingStatus status);

    BillingReviewQueueView& queue_;
    const Localization& localization_;
    ReviewRowCombo* project_;
    ReviewRowCombo* status_;
    ReviewRowButton* billable_;
    ReviewRowButton* exclude_;
    int row_ = -1;
};

}  // namespace quorvane
