#include "shell/export/ProjectSelection.h"

#include "shell/look/AccessibleRole.h"
#include "shell/look/Boxes.h"
#include "shell/look/Chip.h"
#include "shell/look/Columns.h"
#include "shell/look/Controls.h"
#include "shell/look/EmptyState.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"

#include <QGridLayout>
#include <utility>

namespace quorvane {
namespace {

constexpr int boxGap = 12;
constexpr int emptyRoom = 24;

int columnsFor(int width) {
    if (width < 480) return 1;
    return width < 760 ? 2 : 3;
}

}  // namespace

ProjectSelection::ProjectSelection(ExportState& state, const Localization& localization, QWidget* parent)
    : Card(parent), state_(state), localization_(localization), count_(new Chip({}, Tone::info)),
      projects_(new QWidget), cells_(new QGridLayout(projects_)),
      empty_(new EmptyState(QStringLiteral("folder"), qt(localization.text("no_projects_available")),
                            qt(localization.text("export_project_filter_hint")))) {
    const QString heading = qt(localization.text("select_projects_optional"));
    head_ = makeHead(heading);
    cells_->setContentsMargins(0, 0, 0, 0);
    cells_->setSpacing(boxGap);
    setAccessibleRole(*projects_, QAccessible::Grouping, heading);
    empty_->setContentsMargins(0, emptyRoom, 0, emptyRoom);
    auto* const column = columnBox(14, this);
    column->setContentsMargins(Metrics::cardPadding, Metrics::cardPadding, Metrics::cardPadding, Metrics::cardPadding);
    for (QWidget* const part : {head_, projects_, static_cast<QWidget*>(empty_)})
        column->addWidget(part);
    refresh();
}

QWidget* ProjectSelection::makeHead(const QString& title) {
    auto* const heading = new Label(title, TypeRole::head, &Theme::text);
    heading->setElided(true);
    auto* const line = lineBox(boxGap);
    line->addWidget(heading, 1);
    line->addWidget(count_);
    auto* const hint = new Label(qt(localization_.text("export_project_filter_hint")), TypeRole::body, &Theme::text2);
    hint->setWordWrap(true);
    auto* const head = new QWidget;
    auto* const words = columnBox(4, head);
    words->addLayout(line);
    words->addWidget(hint);
    return head;
}

void ProjectSelection::refresh() {
    std::vector<Shown> present;
    for (const auto& project : state_.projects())
        present.push_back({.id = project->id(),
                           .name = project->name(),
                           .client = project->clientName().value_or(localization_.text("not_set")),
                           .color = project->color().value_or("")});
    if (present != shown_ || present.empty()) {
        shown_ = std::move(present);
        makeBoxes();
    }
    count();
}

QWidget* ProjectSelection::makeBox(const Shown& project) {
    auto* const box = kind("card", new QCheckBox(withoutShortcut(qt(project.name + '\n' + project.client))));
    box->setIcon(projectIcon(project.color));
    box->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    box->setAccessibleName(qt(project.name) + QStringLiteral(", ") + qt(project.client));
    const auto sayState = [box, this] {
        box->setAccessibleDescription(
            qt(box->isChecked() ? localization_.text("selected") : localization_.text("not_selected")));
    };
    box->setChecked(state_.isSelected(project.id));
    sayState();
    connect(box, &QCheckBox::toggled, this, [this, sayState, chosen = project.id] {
        sayState();
        state_.toggle(chosen);
        count();
        changed.send();
    });
    return box;
}

void ProjectSelection::makeBoxes() {
    for (QWidget* const box : std::exchange(boxes_, {}))
        delete box;
    for (const Shown& project : shown_)
        boxes_.push_back(makeBox(project));
    head_->setVisible(!boxes_.empty());
    projects_->setVisible(!boxes_.empty());
    empty_->setVisible(boxes_.empty());
    place();
}

void ProjectSelection::place() {
    placeInColumns(*cells_, boxes_, columnsFor(width()));
}

void ProjectSelection::count() {
    const auto selected = state_.selectedProjectCount();
    count_->setText(qt(localization_.text("selected_project_count_accessibility", selected)));
    count_->setTone(selected == 0 ? Tone::neutral : Tone::info);
}

void ProjectSelection::resizeEvent(QResizeEvent* event) {
    Card::resizeEvent(event);
    place();
}

}  // namespace quorvane
