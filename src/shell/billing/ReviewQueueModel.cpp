#include "shell/billing/ReviewQueueModel.h"

#include "shell/look/Typography.h"
#include "shell/signals/Subscribe.h"

namespace quorvane {

ReviewQueueModel::ReviewQueueModel(BillingReviewQueueView& queue, const Localization& localization, QObject* parent)
    : QAbstractListModel(parent), queue_(queue), localization_(localization) {
    subscribe(queue_.rowChanged, *this, [this](std::size_t row) {
        const QModelIndex changed = index(static_cast<int>(row));
        Q_EMIT dataChanged(changed, changed);
    });
    subscribe(queue_.allChanged, *this, [this] {
        if (rowCount() > 0) Q_EMIT dataChanged(index(0), index(rowCount() - 1));
    });
}

int ReviewQueueModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(queue_.records().size());
}

QVariant ReviewQueueModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const bool isKnown =
        role == Qt::DisplayRole || role == Qt::AccessibleTextRole || role == Qt::AccessibleDescriptionRole;
    if (!isKnown) return {};  // rows are made for what is asked of them alone
    const BillingReviewRecordRow& row = queue_.row(static_cast<std::size_t>(index.row()));
    if (role == Qt::DisplayRole) return qt(row.title);
    if (role == Qt::AccessibleTextRole) return qt(localization_.text("a11y_review_row", row.title, row.detail));
    return description(row);
}

/// The name of the icon, the status and the project.
QString ReviewQueueModel::description(const BillingReviewRecordRow& row) const {
    const auto icon = row.hasLowConfidence ? localization_.text("a11y_low_confidence")
                                           : localization_.text("a11y_open_or_unreviewed");
    const auto project = row.project != nullptr ? row.project->name() : localization_.text("not_set");
    return QStringList{qt(icon), qt(label(row.status, localization_)), qt(project)}.join(QStringLiteral(", "));
}

}  // namespace quorvane
