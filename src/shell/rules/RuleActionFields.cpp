#include "shell/rules/RuleActionFields.h"

#include "shell/look/Icons.h"
#include "shell/look/Labelled.h"
#include "shell/look/Typography.h"
#include "store/StoredNames.h"

#include <QComboBox>
#include <QLineEdit>
#include <algorithm>

namespace quorvane {
namespace {

constexpr int columnGap = 12;
constexpr int colorRole = Qt::UserRole + 1;

/// An entry of a combo box. The first one is "none", without a value.
struct RuleChoice {
    QString text;
    QString value{};
    std::optional<std::string> color{};  ///< of a project
};

/// Shows the choices, if they are others than before, and chooses; what isn't among them chooses nothing.
void offer(QComboBox& combo, const std::vector<RuleChoice>& choices, const QString& chosen) {
    const auto isShown = [&combo, row = 0](const RuleChoice& choice) mutable {
        const int at = row++;
        return combo.itemText(at) == choice.text && combo.itemData(at).toString() == choice.value &&
               combo.itemData(at, colorRole).toString() == qt(choice.color.value_or(""));
    };
    if (combo.count() != static_cast<int>(choices.size()) || !std::ranges::all_of(choices, isShown)) {
        combo.clear();
        for (const RuleChoice& choice : choices) {
            combo.addItem(choice.text, choice.value);
            if (!choice.color) continue;
            combo.setItemData(combo.count() - 1, qt(*choice.color), colorRole);
            combo.setItemIcon(combo.count() - 1, projectIcon(*choice.color));
        }
    }
    combo.setCurrentIndex(combo.findData(chosen));
}

}  // namespace

RuleActionFields::RuleActionFields(RulesDashboardView& state, const Localization& localization, QWidget* parent)
    : QWidget(parent), state_(state), localization_(localization),
      category_(fieldCombo(qt(localization.text("category")))), project_(fieldCombo(qt(localization.text("project")))),
      tags_(new QLineEdit) {
    auto* const choices = lineBox(columnGap);
    choices->addLayout(labelled(qt(localization.text("category")), *category_), 1);
    choices->addLayout(labelled(qt(localization.text("project")), *project_), 1);
    auto* const column = columnBox(columnGap, this);
    column->addLayout(choices);
    column->addLayout(labelled(qt(localization.text("ui_rule_tags")), *tags_));
    // What the user does and not what the draft says: `activated` and `textEdited`.
    connect(category_, &QComboBox::activated, this, [this] {
        const std::string chosen = category_->currentData().toString().toStdString();
        state_.edit([&](RuleDraft& draft) { draft.category = chosen.empty() ? std::nullopt : std::optional(chosen); });
    });
    connect(project_, &QComboBox::activated, this, [this] {
        const auto chosen = Uuid::parse(project_->currentData().toString().toStdString());
        state_.edit([&](RuleDraft& draft) { draft.projectId = chosen; });
    });
    connect(tags_, &QLineEdit::textEdited, this, [this](const QString& text) {
        state_.edit([&text](RuleDraft& draft) { draft.tags = text.toStdString(); });
    });
}

void RuleActionFields::show(const RuleDraft& draft) {
    std::vector<RuleChoice> categories{{qt(localization_.text("no_category"))}};
    for (const std::string& name : state_.categories())
        categories.push_back({qt(StoredNames::shownCategory(name, localization_)), qt(name)});
    offer(*category_, categories, qt(draft.category.value_or("")));

    const QString chosen = draft.projectId ? qt(draft.projectId->string()) : QString();
    std::vector<RuleChoice> projects{{qt(localization_.text("not_set"))}};
    for (const auto& project : state_.projects())
        projects.push_back({qt(project->name()), qt(project->id().string()), project->color().value_or("")});
    // A project that the store doesn't have stays in the rule.
    if (std::ranges::find(projects, chosen, &RuleChoice::value) == projects.end())
        projects.push_back({qt(localization_.text("unknown_project")), chosen, ""});
    offer(*project_, projects, chosen);

    if (tags_->text() != qt(draft.tags)) tags_->setText(qt(draft.tags));
}

}  // namespace quorvane
