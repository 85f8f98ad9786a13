#include "shell/rules/RuleActionFields.h"

#include "shell/look/Painting.h"
#include "shell/look/Typography.h"
#include "shell/rules/RuleFormParts.h"
#include "store/StoredNames.h"
#include "timeline/ProjectTone.h"

#include <QComboBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPainter>
#include <QPixmap>
#include <QVBoxLayout>
#include <algorithm>
#include <functional>
#include <optional>
#include <utility>

namespace quorvane {
namespace {

constexpr int dotSize = 14;
constexpr int columnGap = 12;

QIcon projectIcon(const std::string& color, double devicePixelRatio) {
    QPixmap picture(QSize(dotSize, dotSize) * devicePixelRatio);
    picture.setDevicePixelRatio(devicePixelRatio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    paintProjectDot(painter, QRectF(0, 0, dotSize, dotSize), AppColorPalette::projectTone(color));
    painter.end();
    return picture;
}

/// The entry of a combo box whose first one is "none".
template <class List, class Projection, class Value>
int entryOf(const List& list, const std::optional<Value>& value, Projection projection) {
    if (!value) return 0;
    const auto found = std::ranges::find(list, *value, projection);
    return found == list.end() ? -1 : static_cast<int>(found - list.begin()) + 1;
}

}  // namespace

RuleActionFields::RuleActionFields(RulesDashboardView& state, const Localization& localization, QWidget* parent)
    : QWidget(parent), state_(state), localization_(localization),
      category_(RuleFormParts::makeCombo(qt(localization.text("category")))),
      project_(RuleFormParts::makeCombo(qt(localization.text("project")))), tags_(new QLineEdit) {
    project_->setIconSize({dotSize, dotSize});
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(columnGap);
    auto* const choices = new QHBoxLayout;
    choices->setSpacing(columnGap);
    choices->addLayout(RuleFormParts::labelled(qt(localization.text("category")), *category_), 1);
    choices->addLayout(RuleFormParts::labelled(qt(localization.text("project")), *project_), 1);
    layout->addLayout(choices);
    layout->addLayout(RuleFormParts::labelled(qt(localization.text("ui_rule_tags")), *tags_));
    connectFields();
}

void RuleActionFields::connectFields() {
    connect(category_, &QComboBox::activated, this, [this](int index) {
        const auto chosen = index > 0 ? std::optional(categories_[static_cast<std::size_t>(index) - 1]) : std::nullopt;
        state_.edit([&chosen](RuleDraft& draft) { draft.category = chosen; });
    });
    connect(project_, &QComboBox::activated, this, [this](int index) {
        const auto chosen = index > 0 ? std::optional(projects_[static_cast<std::size_t>(index) - 1].id) : std::nullopt;
        state_.edit([&chosen](RuleDraft& draft) { draft.projectId = chosen; });
    });
    connect(tags_, &QLineEdit::textEdited, this, [this](const QString& text) {
        state_.edit([&text](RuleDraft& draft) { draft.tags = text.toStdString(); });
    });
}

void RuleActionFields::show(const RuleDraft& draft) {
    showCategories(draft);
    showProjects(draft);
    if (tags_->text() != qt(draft.tags)) tags_->setText(qt(draft.tags));
}

void RuleActionFields::showCategories(const RuleDraft& draft) {
    if (auto offered = state_.categories(); offered != categories_ || category_->count() == 0) {
        categories_ = std::move(offered);
        category_->clear();
        category_->addItem(qt(localization_.text("no_category")));
        for (const std::string& name : categories_)
            category_->addItem(qt(StoredNames::shownCategory(name, localization_)));
    }
    category_->setCurrentIndex(entryOf(categories_, draft.category, std::identity()));
}

void RuleActionFields::showProjects(const RuleDraft& draft) {
    std::vector<OfferedProject> offered;
    for (const auto& project : state_.projects())
        offered.push_back({project->id(), project->name(), project->color().value_or("")});
    // A project that the store doesn't have stays in the rule.
    if (draft.projectId && entryOf(offered, draft.projectId, &OfferedProject::id) < 0)
        offered.push_back({*draft.projectId, localization_.text("unknown_project"), {}});
    if (offered != projects_ || project_->count() == 0) {
        projects_ = std::move(offered);
        fillProjects();
    }
    project_->setCurrentIndex(entryOf(projects_, draft.projectId, &OfferedProject::id));
}

void RuleActionFields::fillProjects() {
    project_->clear();
    project_->addItem(qt(localization_.text("not_set")));
    for (const OfferedProject& offer : projects_)
        project_->addItem(projectIcon(offer.color, devicePixelRatioF()), qt(offer.name));
}

void RuleActionFields::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() != QEvent::PaletteChange || project_->count() == 0) return;
    const int chosen = project_->currentIndex();
    fillProjects();
    project_->setCurrentIndex(chosen);
}

}  // namespace quorvane
