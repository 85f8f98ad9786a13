#include "shell/billing/BillingReviewQueueSheet.h"

#include "shell/billing/ReviewQueueList.h"
#include "shell/look/Boxes.h"
#include "shell/look/Card.h"
#include "shell/look/Chip.h"
#include "shell/look/Controls.h"
#include "shell/look/EmptyState.h"
#include "shell/look/Sheet.h"
#include "shell/look/Typography.h"
#include "shell/signals/Keeps.h"

#include <utility>

namespace quorvane::BillingReviewQueueSheet {
namespace {

constexpr int width = 940;
constexpr int height = 660;

/// Its rows, and with them the queue that they show.
class OwningList : private Keeps<BillingReviewQueueView>, public ReviewQueueList {
public:
    OwningList(std::unique_ptr<BillingReviewQueueView> queue, const Localization& localization)
        : Keeps(std::move(queue)), ReviewQueueList(*parts_, localization) {}
};

QWidget* emptyState(const Localization& localization) {
    return new EmptyState(QStringLiteral("seal"), qt(localization.text("review_queue_empty_title")),
                          qt(localization.text("review_queue_empty_description")));
}

void addBulkActions(Sheet& sheet, BillingReviewQueueView& queue, const Localization& localization) {
    auto* const billable = pushButton(qt(localization.text("review_queue_mark_all_billable")));
    billable->setIcon(icon(QStringLiteral("check")));
    auto* const exclude = pushButton(qt(localization.text("review_queue_exclude_all")), "danger");
    exclude->setIcon(icon(QStringLiteral("exclude")));
    QObject::connect(billable, &QAbstractButton::clicked, &sheet, [&queue] { queue.markAllBillable(); });
    QObject::connect(exclude, &QAbstractButton::clicked, &sheet, [&queue] { queue.excludeAll(); });
    auto* const both = new QWidget;
    auto* const line = lineBox(8, both);
    line->addWidget(billable);
    line->addWidget(exclude);
    line->addStretch(1);
    sheet.addToFootStart(both);
}

}  // namespace

Sheet& open(QWidget& window, std::unique_ptr<BillingReviewQueueView> queue, const Localization& localization) {
    auto* const sheet = new Sheet(window, qt(localization.text("review_queue_title")), width, height);
    sheet->setSubtitle(qt(localization.text("review_queue_subtitle")));
    const bool isEmpty = queue->records().empty();
    sheet->addToHead(new Chip(qt(queue->countCaption()), isEmpty ? Chip::Tone::ok : Chip::Tone::warn));
    sheet->body().setContentsMargins(0, 0, 0, 0);
    sheet->body().setSpacing(0);
    sheet->body().addWidget(new Separator);
    if (isEmpty) {
        sheet->body().addWidget(emptyState(localization), 1);
        sheet->addToFootStart(new QWidget);  // keeps the button at the end
    } else {
        auto& shown = *queue;
        auto* const rows = new OwningList(std::move(queue), localization);
        sheet->body().addWidget(rows, 1);
        addBulkActions(*sheet, shown, localization);  // after the rows, as Tab goes
        rows->setFocus();
    }
    auto* const done = pushButton(qt(localization.text("done")), "primary");
    if (isEmpty) done->setFocus();
    QObject::connect(done, &QAbstractButton::clicked, sheet, [sheet] { sheet->close(); });
    sheet->addAction(done);
    sheet->open();
    return *sheet;
}

}  // namespace quorvane::BillingReviewQueueSheet
