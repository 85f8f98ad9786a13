#pragma once

#include "shell/state/BillingDashboardView.h"

#include <QWidget>
#include <vector>

class QBoxLayout;
class QPushButton;

namespace quorvane {

class Label;

/// The foot of the billing screen: what a double click does, and the four ways out. Without rows they rest, and a line
/// below them says why.
class BillingActions : public QWidget {
public:
    BillingActions(BillingDashboardView& dashboard, const Localization& localization, QWidget* parent = nullptr);
    void refresh();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QPushButton* add(const std::string& text, const char* iconName, void (BillingDashboardView::*act)());
    void arrange();

    BillingDashboardView& dashboard_;
    const Localization& localization_;
    QBoxLayout* parts_;
    QWidget* hint_;
    Label* words_;
    std::vector<QPushButton*> buttons_;
    bool canBill_ = true;
};

}  // namespace quorvane
