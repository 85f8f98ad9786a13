#pragma once

#include "shell/state/BillingDashboardView.h"

#include <QWidget>
#include <array>
#include <functional>

class QComboBox;
class QDateEdit;
class QGridLayout;

namespace quorvane {

/// What a bill is made of: range, project, client and category, with two days for a range of the user's own. Four side
/// by side; two from a width below 760.
class BillingFilterBar : public QWidget {
public:
    BillingFilterBar(BillingDashboardView& dashboard, const Localization& localization, QWidget* parent = nullptr);
    void refresh();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QWidget* addField(const std::string& label, QWidget& field);
    QComboBox* addChoice(const std::string& label, std::function<void(const std::string& value)> choose);
    QDateEdit* addDay(const std::string& label, void (BillingDashboardView::*choose)(Date));

    BillingDashboardView& dashboard_;
    QGridLayout* grid_;
    std::vector<QWidget*> fields_;  ///< with their labels
    QComboBox* range_;
    QComboBox* project_;
    QComboBox* client_;
    QComboBox* category_;
    std::array<QDateEdit*, 2> days_;
};

}  // namespace quorvane
