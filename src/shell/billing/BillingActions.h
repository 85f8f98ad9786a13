#pragma once

#include "shell/billing/ArrangedWidget.h"
#include "shell/state/BillingDashboardView.h"

#include <vector>

namespace quorvane {

class Button;
class Label;

/// The foot of the billing screen: what a double click does, and the four ways out. Without rows they rest, and a line
/// below them says why.
class BillingActions : public ArrangedWidget {
public:
    BillingActions(BillingDashboardView& dashboard, const Localization& localization, QWidget* parent = nullptr);
    void refresh();

protected:
    int arrange(int width, bool isTrial) const override;

private:
    Button* add(const std::string& text, const char* iconName, void (BillingDashboardView::*act)());
    int arrangeButtons(int width, int top, bool isTrial) const;

    BillingDashboardView& dashboard_;
    const Localization& localization_;
    std::vector<Button*> buttons_;
    QWidget* hint_;
    Label* words_;
    bool canBill_ = true;
};

}  // namespace quorvane
