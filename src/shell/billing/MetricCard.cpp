#include "shell/billing/MetricCard.h"

#include "shell/billing/CardText.h"
#include "shell/look/AccessibleRole.h"
#include "shell/look/Theme.h"

#include <QPainter>

namespace quorvane {
namespace {

constexpr int top = 13;
constexpr int side = 17;  // padding and edge
constexpr int lineGap = 2;

}  // namespace

MetricCard::MetricCard(const Localization& localization, QWidget* parent) : Card(parent), localization_(localization) {
    setAccessibleRole(*this, QAccessible::StaticText);
}

void MetricCard::setCard(const BillingMetricCard& card) {
    if (card == card_) return;
    card_ = card;
    setAccessibleName(qt(localization_.text("a11y_metric_card", card.title, card.value, card.caption)));
    update();
}

QSize MetricCard::sizeHint() const {
    return {200, top + lineHeight(TypeRole::label) + lineHeight(TypeRole::display) + lineHeight(TypeRole::labelPlain) +
                     2 * lineGap + top};
}

void MetricCard::paintEvent(QPaintEvent* event) {
    Card::paintEvent(event);
    QPainter painter(this);
    CardText text(painter, *this, side, side, top);
    text.line(qt(card_.title), TypeRole::label, theme().text2);
    text.skip(lineGap);
    text.number(qt(card_.value), TypeRole::display, theme().text);
    text.skip(lineGap);
    text.line(qt(card_.caption), TypeRole::labelPlain, theme().text3);
    setToolTip(text.isCut() ? accessibleName() : QString());
}

}  // namespace quorvane
