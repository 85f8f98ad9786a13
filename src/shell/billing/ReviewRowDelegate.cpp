#include "shell/billing/ReviewRowDelegate.h"

#include "shell/billing/ReviewRowParts.h"
#include "shell/look/Icons.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"

#include <QAbstractItemView>
#include <QPainter>
#include <QStyle>

namespace quorvane {
namespace {

constexpr int rowIconSize = 20;

void paintLine(QPainter& painter, const QRect& rectangle, TypeRole role, const QColor& color, const QString& text,
               Qt::LayoutDirection direction) {
    painter.setFont(font(role));
    painter.setPen(color);
    painter.drawText(rectangle, static_cast<int>(QStyle::visualAlignment(direction, Qt::AlignLeft) | Qt::AlignVCenter),
                     painter.fontMetrics().elidedText(text, Qt::ElideRight, rectangle.width()));
}

}  // namespace

ReviewRowDelegate::ReviewRowDelegate(const BillingReviewQueueView& queue, const Localization& localization,
                                     QAbstractItemView& list)
    : QStyledItemDelegate(&list), queue_(queue), localization_(localization), list_(list),
      billable_(qt(localization.text("review_queue_mark_billable"))),
      exclude_(qt(localization.text("review_queue_exclude"))) {}

ReviewRowLayout ReviewRowDelegate::layout() const {
    return reviewRowLayout(list_.viewport()->width(), list_.layoutDirection(), billable_, exclude_);
}

QSize ReviewRowDelegate::sizeHint(const QStyleOptionViewItem& /*option*/, const QModelIndex& /*index*/) const {
    return {0, layout().height};
}

void ReviewRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const BillingReviewRecordRow& row = queue_.row(static_cast<std::size_t>(index.row()));
    const ReviewRowLayout parts = layout();
    const QPoint origin(0, option.rect.top());
    const QRect whole(0, option.rect.top(), list_.viewport()->width(), parts.height);
    const Qt::LayoutDirection direction = list_.layoutDirection();
    painter->save();
    painter->setClipRect(whole);
    if (index.row() == hoveredRow) painter->fillRect(whole, theme().hover);
    painter->fillRect(QRect(whole.left(), whole.bottom(), whole.width(), 1), theme().line2);
    paintWords(*painter, row, parts, origin);
    ReviewRowParts::paintField(*painter, parts.project.translated(origin),
                               ReviewRowParts::projectField(row.project.get(), localization_), direction);
    ReviewRowParts::paintField(*painter, parts.status.translated(origin),
                               ReviewRowParts::statusField(row.status, localization_), direction);
    for (const auto& [text, status, place] : {std::tuple(billable_, BillingStatus::billable, parts.billable),
                                              std::tuple(exclude_, BillingStatus::excluded, parts.exclude)})
        ReviewRowParts::paintButton(*painter, place.translated(origin),
                                    {.text = text, .status = status, .isChosen = row.status == status}, direction);
    if (list_.hasFocus() && index == list_.currentIndex() && showsFocusRing(list_))
        paintFocusRing(*painter, QRectF(whole).adjusted(8, 5, -8, -6), Metrics::controlRadius,
                       index.row() == hoveredRow ? theme().hover : theme().surface);
    painter->restore();
}

void ReviewRowDelegate::paintWords(QPainter& painter, const BillingReviewRecordRow& row, const ReviewRowLayout& parts,
                                   const QPoint& origin) const {
    const Theme& t = theme();
    const Qt::LayoutDirection direction = list_.layoutDirection();
    const QString icon = row.hasLowConfidence ? QStringLiteral("warn") : QStringLiteral("clock-q");
    const QColor ground = list_.currentIndex().row() == hoveredRow ? t.hover : t.surface;
    drawIcon(painter, parts.icon.translated(origin), icon, row.hasLowConfidence ? t.orange : t.text2, rowIconSize,
             direction, row.hasLowConfidence ? t.surface : ground);
    paintLine(painter, parts.title.translated(origin), TypeRole::bodyStrong, t.text, isolated(qt(row.title)),
              direction);
    paintLine(painter, parts.detail.translated(origin), TypeRole::labelPlain, t.text2, isolated(qt(row.detail)),
              direction);
}

}  // namespace quorvane
