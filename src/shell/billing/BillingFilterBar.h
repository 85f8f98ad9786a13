#pragma once

#include "shell/billing/ArrangedWidget.h"
#include "shell/billing/FilterField.h"

#include <array>

namespace quorvane {

/// What a bill is made of: range, project, client and category, with two days for a range of the user's own. Four side
/// by side; two from a width below 760.
class BillingFilterBar : public ArrangedWidget {
public:
    BillingFilterBar(BillingDashboardView& dashboard, const Localization& localization, QWidget* parent = nullptr);
    void refresh();

protected:
    int arrange(int width, bool isTrial) const override;

private:
    void follow();

    BillingDashboardView& dashboard_;
    ChoiceField* range_;
    ChoiceField* project_;
    ChoiceField* client_;
    ChoiceField* category_;
    DayField* start_;
    DayField* end_;
};

}  // namespace quorvane
