#include "shell/export/ProjectSelection.h"

#include "shell/look/AccessibleRole.h"
#include "shell/look/Chip.h"
#include "shell/look/EmptyState.h"
#include "shell/look/Label.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace quorvane {
namespace {

constexpr int gap = 12;
constexpr int emptyRoom = 24;

int columnsFor(int width) {
    if (width < 480) return 1;
    return width < 760 ? 2 : 3;
}

}  // namespace

ProjectSelection::ProjectSelection(ExportState& state, const Localization& localization, QWidget* parent)
    : Card(parent), state_(state), localization_(localization), count_(new Chip({}, Chip::Tone::info)),
      head_(new QWidget), grid_(new QWidget), cells_(new QGridLayout(grid_)),
      empty_(new EmptyState(QStringLiteral("folder"), qt(localization.text("no_projects_available")),
                            qt(localization.text("export_project_filter_hint")))) {
    const QString heading = qt(localization.text("select_projects_optional"));
    auto* const title = new Label(heading, TypeRole::head, &Theme::text);
    title->setElided(true);
    auto* const line = new QHBoxLayout;
    line->addWidget(title, 1);
    line->addWidget(count_);
    auto* const hint = new Label(qt(localization.text("export_project_filter_hint")), TypeRole::body, &Theme::text2);
    hint->setWordWrap(true);
    auto* const words = new QVBoxLayout(head_);
    words->setContentsMargins(0, 0, 0, 0);
    words->setSpacing(4);
    words->addLayout(line);
    words->addWidget(hint);
    cells_->setContentsMargins(0, 0, 0, 0);
    cells_->setSpacing(gap);
    setAccessibleRole(*grid_, QAccessible::Grouping, heading);
    empty_->setContentsMargins(0, emptyRoom, 0, emptyRoom);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(Metrics::cardPadding, Metrics::cardPadding, Metrics::cardPadding, Metrics::cardPadding);
    column->setSpacing(14);
    column->addWidget(head_);
    column->addWidget(grid_);
    column->addWidget(empty_);
    refresh();
}

void ProjectSelection::refresh() {
    Shown present;
    for (const auto& project : state_.projects())
        present.emplace_back(project->id(), ProjectSelectionCard::Content{
                                                .name = project->name(),
                                                .client = project->clientName().value_or(localization_.text("not_set")),
                                                .color = project->color().value_or("")});
    if (present != shown_ || present.empty()) {
        shown_ = std::move(present);
        makeCards();
    }
    count();
}

void ProjectSelection::makeCards() {
    for (auto* const card : cards_)
        delete card;
    cards_.clear();
    cards_.reserve(shown_.size());
    for (const auto& [id, content] : shown_) {
        auto* const card = new ProjectSelectionCard(content, localization_, grid_);
        card->setChecked(state_.isSelected(id));
        connect(card, &QAbstractButton::clicked, this, [this, chosen = id] {
            state_.toggle(chosen);
            count();
            changed.send();
        });
        cards_.push_back(card);
    }
    head_->setVisible(!cards_.empty());
    grid_->setVisible(!cards_.empty());
    empty_->setVisible(cards_.empty());
    columns_ = 0;
    place();
}

void ProjectSelection::place() {
    const int columns = columnsFor(width());
    if (columns == columns_) return;
    for (int column = 0; column < columns_; ++column)
        cells_->setColumnStretch(column, 0);
    columns_ = columns;
    int place = 0;
    for (auto* const card : cards_) {
        cells_->addWidget(card, place / columns, place % columns);
        card->show();
        ++place;
    }
    for (int column = 0; column < columns; ++column)
        cells_->setColumnStretch(column, 1);
}

void ProjectSelection::count() {
    const auto selected = state_.selectedProjectCount();
    count_->setText(qt(localization_.text("selected_project_count_accessibility", selected)));
    count_->setTone(selected == 0 ? Chip::Tone::neutral : Chip::Tone::info);
}

void ProjectSelection::resizeEvent(QResizeEvent* event) {
    Card::resizeEvent(event);
    place();
}

}  // namespace quorvane
