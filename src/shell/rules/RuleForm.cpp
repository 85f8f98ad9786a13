#include "shell/rules/RuleForm.h"

#include "base/Text.h"
#include "shell/look/Controls.h"
#include "shell/look/IconWell.h"
#include "shell/look/Labelled.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/rules/RuleActionFields.h"
#include "shell/signals/Subscribe.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QLineEdit>
#include <QScrollArea>
#include <QSignalBlocker>

namespace quorvane {
namespace {

constexpr int padding = 23;  // the edge of 1 lies inside the card
constexpr int fieldGap = 8;
constexpr int groupGap = 20;
constexpr int priorityWidth = 132;
constexpr int narrowBelow = 480;
constexpr double greatestPriority = 9007199254740992;  // 2^53: up to there a double holds every whole number

/// For whole numbers that an `int` is too small for.
QDoubleSpinBox* priorityField() {
    auto* const field = new QDoubleSpinBox;
    field->setDecimals(0);
    field->setRange(-greatestPriority, greatestPriority);
    field->setSingleStep(10);
    field->setFixedWidth(priorityWidth);
    return field;
}

}  // namespace

RuleForm::RuleForm(RulesDashboardView& state, const Localization& localization, std::function<void()> remove,
                   QWidget* parent)
    : Card(parent), state_(state), localization_(localization), name_(new QLineEdit),
      field_(fieldCombo(qt(localization.text("ui_rule_when")))), operator_(fieldCombo({})), value_(new QLineEdit),
      action_(new RuleActionFields(state, localization)), priority_(priorityField()),
      isEnabled_(switchBox(qt(localization.text("ui_rule_enabled")))),
      stopProcessing_(switchBox(qt(localization.text("ui_rule_stop")))),
      summary_(new Label({}, TypeRole::body, &Theme::text)),
      refusal_(new Label({}, TypeRole::labelPlain, &Theme::text2)),
      remove_(pushButton(qt(localization.text("delete")), "danger")),
      save_(pushButton(qt(localization.text("save")), "primary")) {
    auto* const area = new QScrollArea;
    area->setWidgetResizable(true);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(fields());
    auto* const page = columnBox(0, this);
    page->setContentsMargins(1, 1, 1, 1);
    page->addWidget(area, 1);
    page->addWidget(new Separator);
    page->addLayout(foot(remove));
    connectFields();
    place();
    subscribe(state_.draftChanged, *this, [this] { show(); });
    subscribe(state_.rowsChanged, *this, [this] { show(); });  // projects may be other ones
    show();
}

QWidget* RuleForm::fields() {
    auto* const fields = new QWidget;
    auto* const column = columnBox(fieldGap, fields);
    column->setContentsMargins(padding, 20, padding, 20);
    const auto group = [&](const std::string& title) {
        column->addSpacing(groupGap - fieldGap);
        if (!title.empty()) column->addWidget(new Label(qt(title), TypeRole::label, &Theme::text2));
    };
    column->addLayout(labelled(qt(localization_.text("ui_name")), *name_));
    group(localization_.text("ui_rule_when"));
    column->addLayout(condition());
    group(localization_.text("ui_rule_then"));
    column->addWidget(action_);
    group({});
    column->addLayout(options());
    group({});
    column->addWidget(summary());
    column->addStretch(1);
    return fields;
}

QLayout* RuleForm::condition() {
    for (const auto& entry : RawValues<RuleField>::table)
        field_->addItem(qt(label(entry.first, localization_)));
    for (const auto& entry : RawValues<RuleOperator>::table)
        operator_->addItem(qt(label(entry.first, localization_)));
    value_->setFont(quorvane::font(TypeRole::fixed));
    conditionGrid_ = new QGridLayout;
    conditionGrid_->setSpacing(fieldGap);
    conditionGrid_->addWidget(field_, 0, 0);
    conditionGrid_->addWidget(operator_, 0, 1);
    conditionGrid_->addWidget(value_, 0, 2);  // `place` moves it; its turn among the fields is here
    conditionGrid_->setColumnStretch(0, 180);
    conditionGrid_->setColumnStretch(1, 164);
    return conditionGrid_;
}

QLayout* RuleForm::options() {
    optionLine_ = lineBox(groupGap);
    optionLine_->addLayout(labelled(qt(localization_.text("ui_rule_priority")), *priority_));
    for (QWidget* const each : {isEnabled_, stopProcessing_}) {
        each->setMinimumHeight(Metrics::controlHeight);  // beside the field, its label is above
        optionLine_->addWidget(each, 1, Qt::AlignBottom);
    }
    return optionLine_;
}

void RuleForm::place() {
    const bool isNarrow = width() < narrowBelow;
    if (isNarrow == isNarrow_) return;
    isNarrow_ = isNarrow;
    optionLine_->setDirection(isNarrow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    optionLine_->setSpacing(isNarrow ? fieldGap : 24);
    if (isNarrow)
        conditionGrid_->addWidget(value_, 1, 0, 1, 2);
    else
        conditionGrid_->addWidget(value_, 0, 2);
    conditionGrid_->setColumnStretch(2, isNarrow ? 0 : 206);
}

QWidget* RuleForm::summary() {
    auto* const well = new IconWell(QStringLiteral("flow"), Tone::info);
    summary_->setWordWrap(true);
    summary_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    well->words().addWidget(new Label(qt(localization_.text("ui_rule_summary")), TypeRole::label, &Theme::accInk));
    well->words().addWidget(summary_);
    return well;
}

QLayout* RuleForm::foot(const std::function<void()>& remove) {
    remove_->setIcon(icon(QStringLiteral("trash")));
    refusal_->setElided(true);
    refusal_->setAlignment(Qt::AlignTrailing | Qt::AlignVCenter);
    save_->setMinimumWidth(88);
    connect(remove_, &QAbstractButton::clicked, this, remove);
    connect(save_, &QAbstractButton::clicked, this, [this] { state_.save(); });
    auto* const line = lineBox(12);
    line->setContentsMargins(padding, 12, padding, 11);
    line->addWidget(remove_);
    line->addWidget(refusal_, 1);
    line->addWidget(save_);
    return line;
}

// What the user does and not what the draft says: `activated`, `textEdited` and `clicked`.
void RuleForm::connectFields() {
    const auto set = [this](auto RuleDraft::*part, auto value) {
        state_.edit([&](RuleDraft& draft) { draft.*part = std::move(value); });
    };
    connect(name_, &QLineEdit::textEdited, this,
            [set](const QString& text) { set(&RuleDraft::name, text.toStdString()); });
    connect(field_, &QComboBox::activated, this,
            [set](int index) { set(&RuleDraft::field, static_cast<RuleField>(index)); });
    connect(operator_, &QComboBox::activated, this,
            [set](int index) { set(&RuleDraft::matchOperator, static_cast<RuleOperator>(index)); });
    connect(value_, &QLineEdit::textEdited, this,
            [set](const QString& text) { set(&RuleDraft::value, text.toStdString()); });
    connect(priority_, &QDoubleSpinBox::valueChanged, this,
            [set](double value) { set(&RuleDraft::priority, static_cast<std::int64_t>(value)); });
    connect(isEnabled_, &QAbstractButton::clicked, this, [set](bool isOn) { set(&RuleDraft::isEnabled, isOn); });
    connect(stopProcessing_, &QAbstractButton::clicked, this,
            [set](bool isOn) { set(&RuleDraft::stopProcessing, isOn); });
}

void RuleForm::show() {
    const RuleDraft draft = state_.draft();
    if (name_->text() != qt(draft.name)) name_->setText(qt(draft.name));
    showCondition();
    action_->show(draft);
    {
        // It tells of every change, also of ours.
        const QSignalBlocker priorityIsOurs(priority_);
        priority_->setValue(static_cast<double>(draft.priority));
    }
    isEnabled_->setChecked(draft.isEnabled);
    stopProcessing_->setChecked(draft.stopProcessing);
    summary_->setText(qt(state_.summary()));
    remove_->setVisible(state_.selectedRule() != nullptr);
    save_->setEnabled(draft.canSave());
    const bool isIncomplete =
        text::trimmedWithNewlines(draft.name).empty() || text::trimmedWithNewlines(draft.value).empty();
    refusal_->setText(isIncomplete ? qt(localization_.text("ui_rule_incomplete")) : QString());
}

void RuleForm::showCondition() {
    const RuleDraft& draft = state_.draft();
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

void RuleForm::resizeEvent(QResizeEvent* event) {
    Card::resizeEvent(event);
    place();
}

void RuleForm::focusName() {
    name_->setFocus(Qt::ShortcutFocusReason);
}

}  // namespace quorvane
