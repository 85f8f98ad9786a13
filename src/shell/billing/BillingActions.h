#pragma once

#include "shell/billing/ArrangedWidget.h"
#include "shell/state/BillingDashboardView.h"

#include <vector>

class QPushButton;

namespace quorvane {

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
    QPushButton* add(const std::string& text, const char* iconName, void (BillingDashboardView::*act)());
    int arrangeButtons(int width, int top, bool isTrial) const;

    BillingDashboardView& dashboard_;
    const Localization& localization_;
    std::vector<QPushButton*> buttons_;
    QWidget* hint_;
    Label* words_;
    bool canBill_ = true;
};

}  // namespace quorvane
