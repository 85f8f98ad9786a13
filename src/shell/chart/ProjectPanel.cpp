#include "shell/chart/ProjectPanel.h"

#include "shell/chart/ProjectFoot.h"
#include "shell/chart/ProjectRow.h"
#include "shell/chart/RangeWell.h"
#include "shell/chart/RowsArea.h"
#include "shell/look/Controls.h"
#include "shell/look/Label.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/signals/Subscribe.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QVBoxLayout>
#include <utility>

namespace quorvane {
namespace {

constexpr int padding = Metrics::cardPadding - 1;  // the edge of 1 lies inside the card
constexpr int rowPadding = 10;                     // inside a row

/// What the list says of a project.
struct Offer {
    std::shared_ptr<Project> project;
    std::string name;
    std::string client;
    std::string color;
    friend bool operator==(const Offer&, const Offer&) = default;
};

std::vector<Offer> offersOf(const ProjectSelectorState& selector) {
    std::vector<Offer> offers;
    offers.reserve(selector.projects().size());
    for (const auto& project : selector.projects())
        offers.push_back({project, project->name(), project->clientName().value_or(""), project->color().value_or("")});
    return offers;
}

}  // namespace

struct ProjectPanel::Parts {
    Parts(ProjectPanel& owner, DayTimelineChart& shownChart, const Localization& texts);

    void addHead(QVBoxLayout& page);
    void chooseRange(const TimeRange& chosen);
    void refresh();
    void showOffers();
    void addRow(const Offer& offer, const Project* focused);

    ProjectPanel& panel;
    DayTimelineChart& chart;
    const Localization& localization;
    RangeWell* range;
    RowsArea* rows;
    ProjectFoot* foot;
    std::optional<std::pair<std::vector<Offer>, std::size_t>> shown;  ///< what is offered, and how many are hidden
    bool isChangingRange = false;
};

ProjectPanel::Parts::Parts(ProjectPanel& owner, DayTimelineChart& shownChart, const Localization& texts)
    : panel(owner), chart(shownChart), localization(texts), range(new RangeWell(texts)),
      rows(new RowsArea(qt(texts.text("ui_projects")))), foot(new ProjectFoot(shownChart, texts)) {
    auto* const page = new QVBoxLayout(&panel);
    page->setContentsMargins(1, 1, 1, 1);
    page->setSpacing(0);
    addHead(*page);
    rows->rows().setContentsMargins(padding - rowPadding, 6, padding - rowPadding, 12);
    rows->rows().setSpacing(2);
    page->addWidget(rows, 1);
    page->addWidget(new Separator);
    page->addWidget(foot);
    subscribe(range->rangeChosen, panel, [this](const TimeRange& chosen) { chooseRange(chosen); });
    subscribe(chart.changed, panel, [this] { refresh(); });
    refresh();
}

void ProjectPanel::Parts::addHead(QVBoxLayout& page) {
    auto* const head = new QVBoxLayout;
    head->setContentsMargins(padding, 12, padding, 6);
    head->setSpacing(8);
    auto* const line = new QHBoxLayout;
    auto* const title = new Label(qt(localization.text("timeline_assign_project")), TypeRole::head, &Theme::text);
    title->setElided(true);
    line->addWidget(title, 1);
    auto* const close = iconButton(QStringLiteral("close"), qt(localization.text("close")), "ghost small");
    connect(close, &QAbstractButton::clicked, &panel, [this] { chart.cancelProjectSelection(); });
    line->addWidget(close);
    head->addLayout(line);
    head->addWidget(range);
    page.addLayout(head);
}

/// Another range is another selection; what was typed for the new project goes along.
void ProjectPanel::Parts::chooseRange(const TimeRange& chosen) {
    const auto* const before = chart.projectSelector();
    if (before == nullptr) return;
    const std::string name = before->newProjectName();
    const std::string color = before->selectedColor;
    isChangingRange = true;
    chart.selectTimeRange(chosen);
    isChangingRange = false;
    if (auto* const selector = chart.projectSelector()) {
        selector->setNewProjectName(name);
        selector->selectedColor = color;
    }
    refresh();
}

void ProjectPanel::Parts::refresh() {
    const auto* const selector = chart.projectSelector();
    if (selector == nullptr || isChangingRange) return;  // while it is closed, the owner hides the panel
    range->setRange(selector->timeRange(), chart.selectedLength());
    foot->refresh();
    if (auto present = std::pair(offersOf(*selector), selector->hiddenCount()); shown != present) {
        shown = std::move(present);
        showOffers();
    }
}

void ProjectPanel::Parts::showOffers() {
    const auto* const row = dynamic_cast<ProjectRow*>(panel.focusWidget());
    const QVariant focused = row != nullptr ? row->property("project") : QVariant();
    const auto* const focusedProject = static_cast<const Project*>(focused.value<const void*>());
    if (row != nullptr) range->setFocus();  // unless its project is still offered
    rows->clear();
    for (const Offer& offer : shown->first)
        addRow(offer, focusedProject);
    if (const auto hidden = shown->second; hidden > 0) {
        auto* const note =
            new Label(qt(localization.text("ui_projects_already_assigned", hidden)), TypeRole::caption, &Theme::text3);
        note->setWordWrap(true);
        note->setContentsMargins(rowPadding, 10, rowPadding, 0);
        rows->add(note);
    }
    rows->rows().addStretch(1);
}

void ProjectPanel::Parts::addRow(const Offer& offer, const Project* focused) {
    const std::string client = offer.client.empty() ? localization.text("not_set") : offer.client;
    auto* const row = new ProjectRow(qt(offer.name), qt(client), offer.color);
    row->setProperty("project", QVariant::fromValue(static_cast<const void*>(offer.project.get())));
    connect(row, &QAbstractButton::clicked, &panel, [this, project = offer.project] { chart.assignTo(project); });
    rows->add(row);
    if (offer.project.get() == focused) row->setFocus();
}

ProjectPanel::ProjectPanel(DayTimelineChart& chart, const Localization& localization, QWidget* parent)
    : Card(parent), parts_(std::make_unique<Parts>(*this, chart, localization)) {
    setFocusProxy(parts_->range);
}

ProjectPanel::~ProjectPanel() = default;

void ProjectPanel::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Escape: return parts_->chart.cancelProjectSelection();
    case Qt::Key_Return:
    case Qt::Key_Enter: return;  // a field has heard it already; no sheet around the panel shall take it for its own
    default: Card::keyPressEvent(event);
    }
}

}  // namespace quorvane
