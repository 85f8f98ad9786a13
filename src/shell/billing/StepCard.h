#pragma once

#include "shell/look/Card.h"
#include "shell/state/BillingCards.h"

namespace quorvane {

/// A step of the checkout: its icon in a well, number and title, value and caption. For assistive technology one text.
class StepCard : public Card {
public:
    explicit StepCard(const Localization& localization, QWidget* parent = nullptr);
    void setCard(const CheckoutStepCard& card);
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const Localization& localization_;
    CheckoutStepCard card_;
};

}  // namespace quorvane
