#include "shell/billing/ReviewRowControls.h"

#include "shell/billing/ReviewRowFields.h"
#include "shell/look/Typography.h"

#include <QRegion>
#include <algorithm>
#include <iterator>

namespace quorvane {

ReviewRowControls::ReviewRowControls(BillingReviewQueueView& queue, const Localization& localization, bool takesFocus,
                                     QWidget* parent)
    : QWidget(parent), queue_(queue), localization_(localization),
      project_(new ReviewRowCombo(qt(localization.text("project")), this)),
      status_(new ReviewRowCombo(qt(localization.text("billing_status")), this)),
      billable_(
          new ReviewRowButton(qt(localization.text("review_queue_mark_billable")), BillingStatus::billable, this)),
      exclude_(new ReviewRowButton(qt(localization.text("review_queue_exclude")), BillingStatus::excluded, this)) {
    if (!takesFocus)
        for (QWidget* control : {static_cast<QWidget*>(project_), static_cast<QWidget*>(status_),
                                 static_cast<QWidget*>(billable_), static_cast<QWidget*>(exclude_)})
            control->setFocusPolicy(Qt::NoFocus);
    fillProjects();
    fillStatuses();
    connect(project_, &QComboBox::activated, this, [this](int choice) {
        if (row_ < 0) return;
        const auto index = static_cast<std::size_t>(choice);
        const auto& projects = queue_.projects();
        queue_.setProject(static_cast<std::size_t>(row_), index < projects.size() ? projects[index] : nullptr);
        refresh();
        used.send();
    });
    connect(status_, &QComboBox::activated, this,
            [this](int choice) { give(BillingReviewQueueView::statuses.at(static_cast<std::size_t>(choice))); });
    connect(billable_, &QAbstractButton::clicked, this, [this] { give(BillingStatus::billable); });
    connect(exclude_, &QAbstractButton::clicked, this, [this] { give(BillingStatus::excluded); });
    hide();
}

void ReviewRowControls::fillProjects() {
    project_->clear();
    for (const auto& project : queue_.projects())
        project_->addChoice(qt(project->name()), ReviewRowParts::markOf(*project));
    project_->addItem(qt(localization_.text("not_set")));
    refresh();
}

void ReviewRowControls::fillStatuses() {
    for (const BillingStatus status : BillingReviewQueueView::statuses)
        status_->addChoice(qt(label(status, localization_)), {.projectColor = std::nullopt, .status = status});
}

void ReviewRowControls::give(BillingStatus status) {
    if (row_ < 0) return;
    queue_.setStatus(static_cast<std::size_t>(row_), status);
    refresh();
    used.send();
}

void ReviewRowControls::setRow(int row) {
    if (row == row_) return;
    row_ = row;
    setVisible(row_ >= 0);
    refresh();
}

void ReviewRowControls::refresh() {
    if (row_ < 0) return;
    const BillingReviewRecordRow& row = queue_.row(static_cast<std::size_t>(row_));
    const auto& projects = queue_.projects();
    const auto found = std::find(projects.begin(), projects.end(), row.project);
    const bool isOther = row.project != nullptr && found == projects.end();
    project_->show(ReviewRowParts::projectField(row.project.get(), localization_),
                   isOther ? -1 : static_cast<int>(std::distance(projects.begin(), found)));
    status_->show(ReviewRowParts::statusField(row.status, localization_), static_cast<int>(row.status));
    billable_->setChecked(row.status == BillingStatus::billable);
    exclude_->setChecked(row.status == BillingStatus::excluded);
    for (QWidget* control : {static_cast<QWidget*>(project_), static_cast<QWidget*>(status_),
                             static_cast<QWidget*>(billable_), static_cast<QWidget*>(exclude_)})
        control->setAccessibleDescription(qt(row.title));
}

void ReviewRowControls::place(const QPoint& topLeft, const ReviewRowLayout& layout) {
    const QRect all = layout.project | layout.status | layout.billable | layout.exclude;
    setGeometry(all.translated(topLeft));
    QRegion region;
    const auto put = [&](QWidget& control, const QRect& where) {
        control.setGeometry(where.translated(-all.topLeft()));
        region |= control.geometry();
    };
    put(*project_, layout.project);
    put(*status_, layout.status);
    put(*billable_, layout.billable);
    put(*exclude_, layout.exclude);
    setMask(region);
}

bool ReviewRowControls::holdsFocus() const {
    const QWidget* focused = window()->focusWidget();
    return focused != nullptr && isAncestorOf(focused);
}

void ReviewRowControls::enterEvent(QEnterEvent* event) {
    QWidget::enterEvent(event);
    entered.send();
}

}  // namespace quorvane
