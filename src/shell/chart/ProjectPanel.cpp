#include "shell/chart/ProjectPanel.h"

#include "shell/chart/ProjectFoot.h"
#include "shell/chart/RangeWell.h"
#include "shell/look/Controls.h"
#include "shell/look/Label.h"
#include "shell/look/Painting.h"
#include "shell/look/RowList.h"
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

std::vector<ListRow> rowsOf(const ProjectSelectorState& selector, const Localization& localization) {
    std::vector<ListRow> rows;
    rows.reserve(selector.projects().size());
    for (const auto& project : selector.projects()) {
        const auto client = project->clientName().value_or("");
        const QString note = qt(client.empty() ? localization.text("not_set") : client);
        rows.push_back({.tone = AppColorPalette::projectTone(project->color().value_or("")),
                        .text = qt(project->name()),
                        .note = note,
                        .accessibleName = qt(project->name()) + QStringLiteral(", ") + note});
    }
    return rows;
}

}  // namespace

struct ProjectPanel::Parts {
    Parts(ProjectPanel& owner, DayTimelineChart& shownChart, const Localization& texts);

    void addHead(QVBoxLayout& page);
    void chooseRange(const TimeRange& chosen);
    void refresh();

    ProjectPanel& panel;
    DayTimelineChart& chart;
    const Localization& localization;
    RangeWell* range;
    RowList* rows;
    Label* hidden;
    ProjectFoot* foot;
    bool isChangingRange = false;
};

ProjectPanel::Parts::Parts(ProjectPanel& owner, DayTimelineChart& shownChart, const Localization& texts)
    : panel(owner), chart(shownChart), localization(texts), range(new RangeWell(texts)),
      rows(new RowList(qt(texts.text("ui_projects")))), hidden(new Label({}, TypeRole::caption, &Theme::text3)),
      foot(new ProjectFoot(shownChart, texts)) {
    auto* const page = new QVBoxLayout(&panel);
    page->setContentsMargins(1, 1, 1, 1);
    page->setSpacing(0);
    addHead(*page);
    rows->setPressable();
    rows->setMargins({padding - rowPadding, 6, padding - rowPadding, 6});
    connect(rows, &RowList::rowPressed, &panel, [this](int row) {
        const auto* const selector = chart.projectSelector();
        if (selector == nullptr) return;
        const auto project = selector->projects().at(static_cast<std::size_t>(row));  // the list is another one then
        chart.assignTo(project);
    });
    page->addWidget(rows);
    hidden->setWordWrap(true);
    hidden->setContentsMargins(padding, 4, padding, 12);
    page->addWidget(hidden);
    page->addStretch(1);
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
    rows->setRows(rowsOf(*selector, localization));
    const auto hiddenCount = selector->hiddenCount();
    hidden->setText(qt(localization.text("ui_projects_already_assigned", hiddenCount)));
    hidden->setVisible(hiddenCount > 0);
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
