#include "shell/billing/CardText.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStyle>
#include <QWidget>
#include <algorithm>

namespace quorvane {

CardText::CardText(QPainter& painter, const QWidget& card, int start, int end, int top)
    : painter_(painter), card_(card), start_(start), width_(std::max(card.width() - start - end, 0)), y_(top) {}

void CardText::line(const QString& text, TypeRole role, const QColor& ink) {
    const QRect place =
        QStyle::visualRect(card_.layoutDirection(), card_.rect(), {start_, y_, width_, lineHeight(role)});
    y_ += lineHeight(role);
    const QFont face = font(role);
    const QString fitting = QFontMetrics(face).elidedText(text, Qt::ElideRight, width_);
    isCut_ = isCut_ || fitting != text;
    painter_.setFont(face);
    painter_.setPen(ink);
    const auto side = QStyle::visualAlignment(card_.layoutDirection(), Qt::AlignLeft);
    painter_.drawText(place, static_cast<int>(side | Qt::AlignVCenter) | Qt::TextSingleLine, fitting);
}

}  // namespace quorvane
