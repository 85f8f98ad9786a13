#pragma once

#include "base/Signal.h"
#include "shell/state/BillingDashboardView.h"

#include <QComboBox>
#include <QDateEdit>
#include <QWidget>
#include <string>
#include <vector>

namespace quorvane {

/// A control with its label above.
class FilterField : public QWidget {
public:
    FilterField(const QString& label, QWidget* control, QWidget* parent);
};

/// One of some values.
class ChoiceField : public FilterField {
public:
    ChoiceField(const QString& label, QWidget* parent);
    void setChoices(const std::vector<BillingDashboardView::Choice>& choices, const std::string& value);

    Signal<const std::string&> chosen;  ///< by the user

private:
    QComboBox* combo_;
    std::vector<BillingDashboardView::Choice> choices_;
};

/// A day.
class DayField : public FilterField {
public:
    DayField(const QString& label, QWidget* parent);
    void setDay(const CivilDate& day);

    Signal<const CivilDate&> chosen;  ///< by the user

private:
    QDateEdit* edit_;
};

}  // namespace quorvane
