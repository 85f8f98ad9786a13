#include "shell/billing/StepCard.h"

#include "shell/billing/CardText.h"
#include "shell/look/AccessibleRole.h"
#include "shell/look/Icons.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"

#include <QPainter>
#include <QStyle>
#include <fmt/format.h>

namespace quorvane {
namespace {

constexpr int padding = 16;
constexpr int wellTop = 15;
constexpr int wellSide = 36;
constexpr int stepIconSize = 18;
constexpr int textGap = 12;
constexpr int stepLineGap = 2;

struct WellColors {
    QColor Theme::*ground;
    QColor Theme::*ink;
};

/// The second step's say how it stands; its icon tells the same.
WellColors wellColors(const CheckoutStepCard& card) {
    if (card.systemImage == "review-mag") return {&Theme::warnSoft, &Theme::warn};
    if (card.systemImage == "seal") return {&Theme::okSoft, &Theme::ok};
    return {&Theme::accSoft, &Theme::accInk};
}

}  // namespace

StepCard::StepCard(const Localization& localization, QWidget* parent) : Card(parent), localization_(localization) {
    setAccessibleRole(*this, QAccessible::StaticText);
}

void StepCard::setCard(const CheckoutStepCard& card) {
    if (card == card_) return;
    card_ = card;
    setAccessibleName(
        qt(localization_.text("a11y_step_card", std::to_string(card.index), card.title, card.value, card.caption)));
    update();
}

QSize StepCard::sizeHint() const {
    return {240, wellTop + lineHeight(TypeRole::label) + lineHeight(TypeRole::title) +
                     lineHeight(TypeRole::labelPlain) + 2 * stepLineGap + wellTop - 1};
}

void StepCard::paintEvent(QPaintEvent* event) {
    Card::paintEvent(event);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const auto mirrored = [this](const QRect& place) { return QStyle::visualRect(layoutDirection(), rect(), place); };
    const WellColors colors = wellColors(card_);
    const QRect well = mirrored({padding + 1, wellTop, wellSide, wellSide});
    paintPanel(painter, well, Metrics::cardRadius, theme().*colors.ground, QColor());
    drawIcon(painter, well, qt(card_.systemImage), theme().*colors.ink, stepIconSize, layoutDirection(),
             theme().*colors.ground);
    CardText text(painter, *this, padding + 1 + wellSide + textGap, padding, wellTop);
    text.line(qt(fmt::format("{} · {}", card_.index, card_.title)), TypeRole::label, theme().text2);
    text.skip(stepLineGap);
    text.line(isolated(qt(card_.value)), TypeRole::title, theme().text);
    text.skip(stepLineGap);
    text.line(qt(card_.caption), TypeRole::labelPlain, theme().text3);
    setToolTip(text.isCut() ? accessibleName() : QString());
}

}  // namespace quorvane
