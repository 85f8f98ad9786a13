#pragma once

#include "base/Signal.h"
#include "shell/state/BillingReviewQueueView.h"

#include <QWidget>
#include <array>

class QAbstractItemModel;
class QComboBox;
class QGridLayout;
class QHBoxLayout;
class QIcon;
class QPushButton;
class QSpacerItem;

namespace quorvane {

/// The fields and buttons of one row of the review queue, over what the list has painted there. It can be moved to
/// another row at any time. Between the controls the pointer reaches what lies below. One that is never shown tells
/// the list's delegate where the parts of a row stand.
class ReviewRowEditor : public QWidget {
public:
    /// `projects` to choose from are those of the queue, and none behind them.
    ReviewRowEditor(BillingReviewQueueView& queue, QAbstractItemModel& projects, const Localization& localization,
                    QWidget* parent);

    /// Reached by Tab; else by the pointer alone.
    void setReachedByTab(bool isReached);
    /// The row that it stands for; -1 for none, and then it hides.
    void setRow(int row);
    [[nodiscard]] int row() const { return row_; }
    /// Shows what the row says now.
    void refresh();
    [[nodiscard]] bool holdsFocus() const;

    /// In a narrow row the fields stand under the words.
    [[nodiscard]] int heightFor(int width) const;
    void place(const QPoint& topLeft, int width);

    // Where the parts are, and what they look like.
    [[nodiscard]] QRect iconPlace() const;
    [[nodiscard]] QRect wordsPlace() const;
    [[nodiscard]] const QComboBox& project() const { return *project_; }
    [[nodiscard]] const QComboBox& status() const { return *status_; }
    [[nodiscard]] const std::array<QPushButton*, 2>& buttons() const { return buttons_; }

    static constexpr std::array<BillingStatus, 2> buttonStatuses{BillingStatus::billable, BillingStatus::excluded};

    [[nodiscard]] static QIcon icon(const Project* project);  ///< empty for none
    [[nodiscard]] static QIcon icon(BillingStatus status);

    Signal<> used;     ///< the user has chosen or pressed something
    Signal<> entered;  ///< by the pointer

protected:
    void enterEvent(QEnterEvent* event) override;

private:
    void layOut();
    void chooseProject(std::size_t choice);
    void give(BillingStatus status);
    [[nodiscard]] std::array<QWidget*, 4> controls() const;

    BillingReviewQueueView& queue_;
    QComboBox* project_;
    QComboBox* status_;
    std::array<QPushButton*, 2> buttons_{};
    QGridLayout* grid_;
    QHBoxLayout* fields_;
    QSpacerItem* icon_;
    QSpacerItem* words_;
    int row_ = -1;
    Qt::LayoutDirection direction_ = Qt::LayoutDirectionAuto;  ///< in which it has been laid out
};

}  // namespace quorvane
