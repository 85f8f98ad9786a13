#pragma once

#include "shell/look/Card.h"
#include "shell/state/BillingCards.h"

namespace quorvane {

/// A figure of the report between its title and its caption. For assistive technology one text.
class MetricCard : public Card {
public:
    explicit MetricCard(const Localization& localization, QWidget* parent = nullptr);
    void setCard(const BillingMetricCard& card);
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const Localization& localization_;
    BillingMetricCard card_;
};

}  // namespace quorvane
