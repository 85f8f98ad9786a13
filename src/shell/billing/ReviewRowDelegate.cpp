#include "shell/billing/ReviewRowDelegate.h"

#include "shell/billing/ReviewRowEditor.h"
#include "shell/look/Icons.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QPainter>
#include <QPushButton>
#include <QStyle>

namespace quorvane {
namespace {

constexpr int rowIconSize = 20;

void paintLine(QPainter& painter, const QRect& place, TypeRole role, const QColor& ink, const std::string& text,
               Qt::LayoutDirection direction) {
    const auto start = QStyle::visualAlignment(direction, Qt::AlignLeft | Qt::AlignVCenter);
    painter.setFont(font(role));
    painter.setPen(ink);
    const QString fitting = painter.fontMetrics().elidedText(isolated(qt(text)), Qt::ElideRight, place.width());
    painter.drawText(place, static_cast<int>(start), fitting);
}

void paintCombo(QPainter& painter, const QComboBox& combo, const std::string& text, const QIcon& icon) {
    QStyleOptionComboBox option;
    option.initFrom(&combo);
    option.rect = combo.geometry();
    option.currentText = qt(text);
    option.currentIcon = icon;
    painter.setFont(combo.font());
    combo.style()->drawComplexControl(QStyle::CC_ComboBox, &option, &painter, &combo);
    combo.style()->drawControl(QStyle::CE_ComboBoxLabel, &option, &painter, &combo);
}

void paintButton(QPainter& painter, const QPushButton& button, bool isChecked) {
    QStyleOptionButton option;
    option.initFrom(&button);
    option.rect = button.geometry();
    option.text = button.text();
    option.icon = button.icon();
    option.state.setFlag(QStyle::State_On, isChecked);
    painter.setFont(button.font());
    button.style()->drawControl(QStyle::CE_PushButton, &option, &painter, &button);
}

}  // namespace

ReviewRowDelegate::ReviewRowDelegate(const BillingReviewQueueView& queue, const Localization& localization,
                                     ReviewRowEditor& form, QAbstractItemView& list)
    : QStyledItemDelegate(&list), queue_(queue), localization_(localization), form_(form), list_(list) {}

QSize ReviewRowDelegate::sizeHint(const QStyleOptionViewItem& /*option*/, const QModelIndex& /*index*/) const {
    return {0, form_.heightFor(list_.viewport()->width())};
}

void ReviewRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const BillingReviewRecordRow& row = queue_.row(static_cast<std::size_t>(index.row()));
    painter->save();
    painter->setClipRect(option.rect);
    paintGround(*painter, option, index);
    painter->translate(option.rect.topLeft());
    form_.place({}, option.rect.width());
    paintWords(*painter, row, index.row() == hoveredRow);
    paintControls(*painter, row);
    painter->restore();
}

void ReviewRowDelegate::paintGround(QPainter& painter, const QStyleOptionViewItem& option,
                                    const QModelIndex& index) const {
    const QRect& whole = option.rect;
    const bool isHovered = index.row() == hoveredRow;
    if (isHovered) painter.fillRect(whole, theme().hover);
    painter.fillRect(QRect(whole.left(), whole.bottom(), whole.width(), 1), theme().line2);
    if (index == list_.currentIndex() && showsFocusRing(list_))
        paintFocusRing(painter, QRectF(whole).adjusted(8, 5, -8, -6), Metrics::controlRadius,
                       isHovered ? theme().hover : theme().surface);
}

void ReviewRowDelegate::paintWords(QPainter& painter, const BillingReviewRecordRow& row, bool isHovered) const {
    const Theme& t = theme();
    const Qt::LayoutDirection direction = list_.layoutDirection();
    const bool isDoubtful = row.hasLowConfidence;
    QRect icon = form_.iconPlace();
    icon = QStyle::alignedRect(direction, Qt::AlignLeft | Qt::AlignVCenter, {rowIconSize, rowIconSize}, icon);
    drawIcon(painter, icon, isDoubtful ? QStringLiteral("warn") : QStringLiteral("clock-q"),
             isDoubtful ? t.orange : t.text2, rowIconSize, direction, isHovered && !isDoubtful ? t.hover : t.surface);
    const QRect words = form_.wordsPlace();
    const int titleHeight = lineHeight(TypeRole::bodyStrong);
    const int detailHeight = lineHeight(TypeRole::labelPlain);
    const QRect title(words.left(), words.top() + (words.height() - titleHeight - detailHeight) / 2, words.width(),
                      titleHeight);
    paintLine(painter, title, TypeRole::bodyStrong, t.text, row.title, direction);
    paintLine(painter, {title.left(), title.bottom() + 1, title.width(), detailHeight}, TypeRole::labelPlain, t.text2,
              row.detail, direction);
}

void ReviewRowDelegate::paintControls(QPainter& painter, const BillingReviewRecordRow& row) const {
    const auto* const project = row.project.get();
    paintCombo(painter, form_.project(), project != nullptr ? project->name() : localization_.text("not_set"),
               ReviewRowEditor::icon(project));
    paintCombo(painter, form_.status(), label(row.status, localization_), ReviewRowEditor::icon(row.status));
    for (std::size_t i = 0; i < form_.buttons().size(); ++i)
        paintButton(painter, *form_.buttons()[i], row.status == ReviewRowEditor::buttonStatuses[i]);
}

}  // namespace quorvane
