#include "shell/chart/ProjectFoot.h"

#include "shell/chart/TonePicker.h"
#include "shell/look/Controls.h"
#include "shell/look/Icons.h"
#include "shell/look/Label.h"
#include "shell/look/Painting.h"
#include "shell/look/TextField.h"
#include "shell/look/Theme.h"
#include "shell/signals/Subscribe.h"

#include <QAction>
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace quorvane {
namespace {

constexpr int padding = Metrics::cardPadding - 1;  // the edge of 1 lies inside the card

}  // namespace

ProjectFoot::ProjectFoot(DayTimelineChart& chart, const Localization& localization, QWidget* parent)
    : QWidget(parent), chart_(chart), localization_(localization),
      name_(new TextField({}, qt(localization.text("project_name_placeholder")))),
      enter_(new QAction(icon(QStringLiteral("enter")), qt(localization.text("ui_create_and_assign")), this)),
      tones_(new TonePicker(qt(localization.text("project_color_title")), localization)),
      create_(pushButton(qt(localization.text("ui_create_and_assign")), "primary")) {
    name_->setHint(qt(localization.text("project_name_placeholder")));
    name_->edit().addAction(enter_, QLineEdit::TrailingPosition);
    auto* const cancel = pushButton(qt(localization.text("cancel")));

    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(padding, 13, padding, 13);
    layout->setSpacing(0);
    layout->addWidget(name_);
    layout->addSpacing(12);
    layout->addWidget(new Label(qt(localization.text("project_color_title")), TypeRole::label, &Theme::text2));
    layout->addSpacing(8);
    layout->addWidget(tones_);
    layout->addSpacing(16);
    auto* const answers = new QHBoxLayout;
    answers->setSpacing(8);
    answers->addWidget(cancel, 1);
    answers->addWidget(create_, 1);
    layout->addLayout(answers);

    connect(&name_->edit(), &QLineEdit::textEdited, this, [this](const QString& text) {
        auto* const selector = chart_.projectSelector();
        if (selector == nullptr) return;
        selector->setNewProjectName(text.toStdString());
        refresh();
    });
    connect(&name_->edit(), &QLineEdit::returnPressed, this, [this] { create(); });
    connect(enter_, &QAction::triggered, this, [this] { create(); });
    connect(create_, &QAbstractButton::clicked, this, [this] { create(); });
    connect(cancel, &QAbstractButton::clicked, this, [this] { chart_.cancelProjectSelection(); });
    subscribe(tones_->chosen, *this, [this](const std::string& tone) {
        if (auto* const selector = chart_.projectSelector()) selector->selectedColor = tone;
    });
}

void ProjectFoot::refresh() {
    const auto* const selector = chart_.projectSelector();
    if (selector == nullptr) return;
    const QString name = qt(selector->newProjectName());
    if (name_->edit().text() != name) name_->edit().setText(name);  // another selection
    const auto error = selector->nameError();
    name_->setError(error ? qt(localization_.text(*error)) : QString());
    tones_->setTone(selector->selectedColor);
    enter_->setEnabled(selector->canCreate());
    create_->setEnabled(selector->canCreate());
}

void ProjectFoot::create() {
    chart_.createProjectAndAssign();  // asks by itself whether there is enough for it
}

}  // namespace quorvane
