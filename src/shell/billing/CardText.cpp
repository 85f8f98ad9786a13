#include "shell/billing/CardText.h"

#include "shell/billing/FittingFont.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStyle>
#include <QWidget>
#include <algorithm>

namespace quorvane {

CardText::CardText(QPainter& painter, const QWidget& card, int start, int end, int top)
    : painter_(painter), card_(card), start_(start), width_(std::max(card.width() - start - end, 0)), y_(top) {}

void CardText::number(const QString& text, TypeRole role, const QColor& ink) {
    write(isolated(text), fittingFont(font(role), text, width_), lineHeight(role), ink);
}

void CardText::write(const QString& text, const QFont& face, int height, const QColor& ink) {
    const QRect place = QStyle::visualRect(card_.layoutDirection(), card_.rect(), {start_, y_, width_, height});
    y_ += height;
    const QString fitting = QFontMetrics(face).elidedText(text, Qt::ElideRight, width_);
    isCut_ = isCut_ || fitting != text;
    painter_.setFont(face);
    painter_.setPen(ink);
    const auto side = QStyle::visualAlignment(card_.layoutDirection(), Qt::AlignLeft);
    painter_.drawText(place, static_cast<int>(side | Qt::AlignVCenter) | Qt::TextSingleLine, fitting);
}

}  // namespace quorvane
