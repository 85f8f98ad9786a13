#include "shell/rules/RuleForm.h"

#include "base/Text.h"
#include "shell/look/Card.h"
#include "shell/look/Controls.h"
#include "shell/look/IconView.h"
#include "shell/look/Label.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/rules/RuleActionFields.h"
#include "shell/rules/RuleConditionFields.h"
#include "shell/rules/RuleFormParts.h"
#include "shell/signals/Subscribe.h"

#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace quorvane {
namespace {

constexpr int padding = 23;  // the edge of 1 lies inside the card
constexpr int priorityWidth = 132;
constexpr int narrowBelow = 480;
constexpr double greatestPriority = 9007199254740992;  // 2^53: up to there a double holds every whole number

Label* groupTitle(const std::string& text) {
    return new Label(qt(text), TypeRole::label, &Theme::text2);
}

/// For whole numbers that an `int` is too small for.
QDoubleSpinBox* makePriorityField() {
    auto* const field = new QDoubleSpinBox;
    field->setDecimals(0);
    field->setRange(-greatestPriority, greatestPriority);
    field->setSingleStep(10);
    field->setFixedWidth(priorityWidth);
    return field;
}

}  // namespace

struct RuleForm::Parts {
    Parts(RuleForm& owner, RulesDashboardView& shownState, const Localization& texts);

    QWidget* makeFields();
    QLayout* makeOptions();
    void placeOptions();
    QWidget* makeSummary();
    QLayout* makeFoot();
    void connectFields();
    void show();

    RuleForm& form;
    RulesDashboardView& state;
    const Localization& localization;
    QLineEdit* name = new QLineEdit;
    RuleConditionFields* condition;
    RuleActionFields* action;
    QDoubleSpinBox* priority = makePriorityField();
    QBoxLayout* options = nullptr;
    QCheckBox* isEnabled;
    QCheckBox* stopProcessing;
    Label* summary;
    Label* refusal;
    QPushButton* remove;
    QPushButton* save;
};

RuleForm::Parts::Parts(RuleForm& owner, RulesDashboardView& shownState, const Localization& texts)
    : form(owner), state(shownState), localization(texts), condition(new RuleConditionFields(state, texts)),
      action(new RuleActionFields(state, texts)), isEnabled(switchBox(qt(texts.text("ui_rule_enabled")))),
      stopProcessing(switchBox(qt(texts.text("ui_rule_stop")))), summary(new Label({}, TypeRole::body, &Theme::text)),
      refusal(new Label({}, TypeRole::labelPlain, &Theme::text2)),
      remove(pushButton(qt(texts.text("delete")), "danger")), save(pushButton(qt(texts.text("save")), "primary")) {
    auto* const page = new QVBoxLayout(&form);
    page->setContentsMargins(1, 1, 1, 1);
    page->setSpacing(0);
    auto* const area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setFocusPolicy(Qt::NoFocus);
    area->viewport()->setAutoFillBackground(false);
    auto* const fields = makeFields();
    area->setWidget(fields);
    fields->setAutoFillBackground(false);  // a scroll area turns it on
    page->addWidget(area, 1);
    page->addWidget(new Separator);
    page->addLayout(makeFoot());
    connectFields();
    subscribe(state.draftChanged, owner, [this] { show(); });
    subscribe(state.rowsChanged, owner, [this] { show(); });  // projects may be other ones
    show();
}

QWidget* RuleForm::Parts::makeFields() {
    auto* const fields = new QWidget;
    auto* const layout = new QVBoxLayout(fields);
    layout->setContentsMargins(padding, 20, padding, 20);
    layout->setSpacing(RuleFormParts::fieldGap);
    layout->addLayout(RuleFormParts::labelled(qt(localization.text("ui_name")), *name));
    constexpr int groupSpacing = RuleFormParts::groupGap - RuleFormParts::fieldGap;
    layout->addSpacing(groupSpacing);
    layout->addWidget(groupTitle(localization.text("ui_rule_when")));
    layout->addWidget(condition);
    layout->addSpacing(groupSpacing);
    layout->addWidget(groupTitle(localization.text("ui_rule_then")));
    layout->addWidget(action);
    layout->addSpacing(groupSpacing);
    layout->addLayout(makeOptions());
    layout->addSpacing(groupSpacing);
    layout->addWidget(makeSummary());
    layout->addStretch(1);
    return fields;
}

QLayout* RuleForm::Parts::makeOptions() {
    options = new QHBoxLayout;
    options->addLayout(RuleFormParts::labelled(qt(localization.text("ui_rule_priority")), *priority));
    options->addWidget(isEnabled, 1, Qt::AlignBottom);
    options->addWidget(stopProcessing, 1, Qt::AlignBottom);
    placeOptions();
    for (QWidget* const each : {isEnabled, stopProcessing})
        each->setMinimumHeight(Metrics::controlHeight);  // beside the field, its label is above
    return options;
}

/// Beside each other, or below each other where that is too narrow.
void RuleForm::Parts::placeOptions() {
    const bool isNarrow = form.width() < narrowBelow;
    options->setDirection(isNarrow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    options->setSpacing(isNarrow ? RuleFormParts::fieldGap : 24);
}

QWidget* RuleForm::Parts::makeSummary() {
    auto* const well = new Well("info");
    auto* const line = new QHBoxLayout(well);
    line->setContentsMargins(16, 14, 20, 14);
    line->setSpacing(12);
    line->addWidget(new IconView(QStringLiteral("flow"), 18, &Theme::accInk), 0, Qt::AlignTop);
    auto* const words = new QVBoxLayout;
    words->setSpacing(3);
    words->addWidget(new Label(qt(localization.text("ui_rule_summary")), TypeRole::label, &Theme::accInk));
    summary->setWordWrap(true);
    summary->setTextInteractionFlags(Qt::TextSelectableByMouse);
    words->addWidget(summary);
    line->addLayout(words, 1);
    return well;
}

QLayout* RuleForm::Parts::makeFoot() {
    auto* const line = new QHBoxLayout;
    line->setContentsMargins(padding, 12, padding, 11);
    line->setSpacing(12);
    remove->setIcon(icon(QStringLiteral("trash")));
    line->addWidget(remove);
    refusal->setElided(true);
    refusal->setAlignment(Qt::AlignTrailing | Qt::AlignVCenter);
    line->addWidget(refusal, 1);
    save->setMinimumWidth(88);
    line->addWidget(save);
    return line;
}

void RuleForm::Parts::connectFields() {
    connect(name, &QLineEdit::textEdited, &form, [this](const QString& text) {
        state.edit([&text](RuleDraft& draft) { draft.name = text.toStdString(); });
    });
    connect(priority, &QDoubleSpinBox::valueChanged, &form, [this](double value) {
        state.edit([value](RuleDraft& draft) { draft.priority = static_cast<std::int64_t>(value); });
    });
    connect(isEnabled, &QAbstractButton::clicked, &form,
            [this](bool isOn) { state.edit([isOn](RuleDraft& draft) { draft.isEnabled = isOn; }); });
    connect(stopProcessing, &QAbstractButton::clicked, &form,
            [this](bool isOn) { state.edit([isOn](RuleDraft& draft) { draft.stopProcessing = isOn; }); });
    connect(remove, &QAbstractButton::clicked, &form, [this] { form.removalWanted.send(); });
    connect(save, &QAbstractButton::clicked, &form, [this] { state.save(); });
}

void RuleForm::Parts::show() {
    const RuleDraft draft = state.draft();
    if (name->text() != qt(draft.name)) name->setText(qt(draft.name));
    condition->show(draft);
    action->show(draft);
    {
        // It tells of every change, also of ours.
        const QSignalBlocker priorityIsOurs(priority);
        priority->setValue(static_cast<double>(draft.priority));
    }
    isEnabled->setChecked(draft.isEnabled);
    stopProcessing->setChecked(draft.stopProcessing);
    summary->setText(qt(state.summary()));
    remove->setVisible(state.selectedRule() != nullptr);
    save->setEnabled(draft.canSave());
    const bool isIncomplete =
        text::trimmedWithNewlines(draft.name).empty() || text::trimmedWithNewlines(draft.value).empty();
    refusal->setText(isIncomplete ? qt(localization.text("ui_rule_incomplete")) : QString());
}

RuleForm::RuleForm(RulesDashboardView& state, const Localization& localization, QWidget* parent)
    : Card(parent), parts_(std::make_unique<Parts>(*this, state, localization)) {}

RuleForm::~RuleForm() = default;

void RuleForm::resizeEvent(QResizeEvent* event) {
    Card::resizeEvent(event);
    parts_->placeOptions();
}

void RuleForm::focusName() {
    parts_->name->setFocus(Qt::ShortcutFocusReason);
}

}  // namespace quorvane
