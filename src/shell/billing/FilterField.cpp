#include "shell/billing/FilterField.h"

#include "shell/look/Label.h"
#include "shell/look/Theme.h"

#include <QSignalBlocker>
#include <QVBoxLayout>

namespace quorvane {
namespace {

constexpr int labelGap = 6;
constexpr int shortestText = 4;  // letters; longer ones are cut in the field and whole in its list

}  // namespace

FilterField::FilterField(const QString& label, QWidget* control, QWidget* parent) : QWidget(parent) {
    auto* const title = new Label(label, TypeRole::label, &Theme::text2);
    title->setElided(true);
    title->setBuddy(control);
    control->setAccessibleName(label);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(labelGap);
    column->addWidget(title);
    column->addWidget(control);
}

ChoiceField::ChoiceField(const QString& label, QWidget* parent)
    : FilterField(label, new QComboBox, parent), combo_(findChild<QComboBox*>()) {
    combo_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo_->setMinimumContentsLength(shortestText);
    connect(combo_, &QComboBox::activated, this, [this](int index) {
        const std::string value = choices_[static_cast<std::size_t>(index)].value;  // filling it anew changes the list
        chosen.send(value);
    });
}

void ChoiceField::setChoices(const std::vector<BillingDashboardView::Choice>& choices, const std::string& value) {
    const QSignalBlocker blocker(combo_);
    if (choices != choices_) {
        choices_ = choices;
        combo_->clear();
        for (const auto& choice : choices_)
            combo_->addItem(qt(choice.label));
    }
    for (std::size_t i = 0; i < choices_.size(); ++i)
        if (choices_[i].value == value) combo_->setCurrentIndex(static_cast<int>(i));
}

DayField::DayField(const QString& label, QWidget* parent)
    : FilterField(label, new QDateEdit, parent), edit_(findChild<QDateEdit*>()) {
    edit_->setCalendarPopup(true);
    connect(edit_, &QDateEdit::dateChanged, this, [this](QDate date) {
        chosen.send(CivilDate{date.year(), date.month(), date.day()});
    });
}

void DayField::setDay(const CivilDate& day) {
    const QSignalBlocker blocker(edit_);
    edit_->setDate(QDate(day.year, day.month, day.day));
}

}  // namespace quorvane
