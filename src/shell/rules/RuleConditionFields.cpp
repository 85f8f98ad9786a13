#include "shell/rules/RuleConditionFields.h"

#include "shell/look/Typography.h"
#include "shell/rules/RuleFormParts.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLineEdit>

namespace quorvane {
namespace {

constexpr int conditionNarrowBelow = 420;

}  // namespace

RuleConditionFields::RuleConditionFields(RulesDashboardView& state, const Localization& localization, QWidget* parent)
    : QWidget(parent), state_(state), localization_(localization),
      field_(RuleFormParts::makeCombo(qt(localization.text("ui_rule_when")))), operator_(RuleFormParts::makeCombo({})),
      value_(new QLineEdit) {
    fill();
    value_->setFont(quorvane::font(TypeRole::fixed));
    auto* const grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(RuleFormParts::fieldGap);
    place(false);
    // What the user does and not what the draft says: `activated` and `textEdited`.
    connect(field_, &QComboBox::activated, this, [this](int index) {
        state_.edit([index](RuleDraft& draft) { draft.field = static_cast<RuleField>(index); });
    });
    connect(operator_, &QComboBox::activated, this, [this](int index) {
        state_.edit([index](RuleDraft& draft) { draft.matchOperator = static_cast<RuleOperator>(index); });
    });
    connect(value_, &QLineEdit::textEdited, this, [this](const QString& text) {
        state_.edit([&text](RuleDraft& draft) { draft.value = text.toStdString(); });
    });
}

void RuleConditionFields::fill() {
    for (const auto& entry : RawValues<RuleField>::table)
        field_->addItem(qt(label(entry.first, localization_)));
    for (const auto& entry : RawValues<RuleOperator>::table)
        operator_->addItem(qt(label(entry.first, localization_)));
}

void RuleConditionFields::show(const RuleDraft& draft) {
    field_->setCurrentIndex(static_cast<int>(draft.field));
    operator_->setCurrentIndex(static_cast<int>(draft.matchOperator));
    value_->setPlaceholderText(qt(placeholder(draft.field, localization_)));
    // Each is called after what stands before it: "When, Application, contains".
    const QString separator = qt(localization_.text("list_separator"));
    operator_->setAccessibleName(field_->accessibleName() + separator + field_->currentText());
    operator_->setAccessibleDescription(operator_->accessibleName());
    value_->setAccessibleName(operator_->accessibleName() + separator + operator_->currentText());
    if (value_->text() != qt(draft.value)) value_->setText(qt(draft.value));
}

void RuleConditionFields::place(bool isNarrow) {
    auto& grid = dynamic_cast<QGridLayout&>(*layout());
    grid.addWidget(field_, 0, 0);
    grid.addWidget(operator_, 0, 1);
    if (isNarrow)
        grid.addWidget(value_, 1, 0, 1, 2);
    else
        grid.addWidget(value_, 0, 2);
    constexpr int stretches[] = {180, 164, 206};
    for (int column = 0; column < 3; ++column)
        grid.setColumnStretch(column, isNarrow && column == 2 ? 0 : stretches[column]);
}

void RuleConditionFields::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    const bool isNarrow = width() < conditionNarrowBelow;
    if (isNarrow == isNarrow_) return;
    isNarrow_ = isNarrow;
    place(isNarrow);
}

}  // namespace quorvane
