#include "shell/chart/LegendPanel.h"

#include "shell/chart/LegendRow.h"
#include "shell/chart/ProjectHours.h"
#include "shell/chart/RowsArea.h"
#include "shell/chart/TotalHours.h"
#include "shell/look/Label.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/signals/Subscribe.h"
#include "store/StoredNames.h"
#include "timeline/AppStatistics.h"

#include <QVBoxLayout>
#include <fmt/format.h>

namespace quorvane {
namespace {

constexpr int padding = Metrics::cardPadding - 1;  // the edge of 1 lies inside the card

/// What can be seen; the panel is built anew only when it differs.
struct Shown {
    std::string total;
    std::vector<LegendRow::Content> apps;
    std::vector<ProjectHours> projects;
    friend bool operator==(const Shown&, const Shown&) = default;
};

Shown shownOf(const DayTimelineChart& chart, Date now, const Localization& localization) {
    const AppStatistics statistics = appStatistics(chart.sidebarRecords(), now);
    Shown shown{.total = fmt::format("{:.1f}", statistics.totalHours),
                .projects = hoursByProject(chart.projectAnnotations())};
    shown.apps.reserve(statistics.appStats.size());
    for (const AppStat& stat : statistics.appStats)
        shown.apps.push_back({.appName = qt(StoredNames::shownApp(stat.appName, localization)),
                              .hours = qt(fmt::format("{:.1f}", stat.hours)),
                              .percentage = qt(fmt::format("{:.1f}", stat.percentage)),
                              .fraction = stat.percentage / 100,
                              .color = stat.color});
    return shown;
}

QVBoxLayout* section(QVBoxLayout& page, int top, int bottom) {
    auto* const layout = new QVBoxLayout;
    layout->setContentsMargins(padding, top, padding, bottom);
    layout->setSpacing(0);
    page.addLayout(layout);
    return layout;
}

}  // namespace

struct LegendPanel::Parts {
    Parts(LegendPanel& panel, DayTimelineChart& shownChart, platform::RunLoop& clock, const Localization& texts);

    void refresh();
    void showApps();
    void showProjects();

    LegendPanel& panel;
    DayTimelineChart& chart;
    platform::RunLoop& runLoop;
    const Localization& localization;
    TotalHours* total;
    RowsArea* apps;
    Separator* separator;
    Label* projectsTitle;
    RowsArea* projects;
    std::optional<Shown> shown;
};

LegendPanel::Parts::Parts(LegendPanel& owner, DayTimelineChart& shownChart, platform::RunLoop& clock,
                          const Localization& texts)
    : panel(owner), chart(shownChart), runLoop(clock), localization(texts), total(new TotalHours),
      apps(new RowsArea(qt(texts.text("app_usage_title")))), separator(new Separator),
      projectsTitle(new Label(qt(texts.text("ui_projects")), TypeRole::label, &Theme::text2)),
      projects(new RowsArea(qt(texts.text("ui_projects")))) {
    auto* const page = new QVBoxLayout(&panel);
    page->setContentsMargins(1, 1, 1, 1);
    page->setSpacing(0);
    auto* const head = section(*page, 13, 9);
    head->addWidget(new Label(qt(texts.text("app_usage_title")), TypeRole::label, &Theme::text2));
    head->addSpacing(4);
    head->addWidget(total);
    page->addWidget(new Separator);
    page->addWidget(apps);
    apps->rows().setContentsMargins(padding, 10, padding, 16);
    apps->rows().setSpacing(7);
    page->addWidget(separator);
    section(*page, 12, 6)->addWidget(projectsTitle);
    page->addWidget(projects);
    projects->rows().setContentsMargins(padding, 0, padding, 12);
    projects->rows().setSpacing(0);
    page->addStretch(1);
    for (QWidget* part : std::initializer_list<QWidget*>{separator, projectsTitle, projects})
        part->hide();
    subscribe(chart.changed, panel, [this] { refresh(); });
}

void LegendPanel::Parts::refresh() {
    // A drag changes nothing here and sends with every move of the pointer.
    if (!panel.isVisible() || chart.selection() || !chart.isDayKnown()) return;
    Shown present = shownOf(chart, runLoop.now(), localization);
    if (shown == present) return;
    const bool hasOtherApps = !shown || shown->apps != present.apps;
    const bool hasOtherProjects = !shown || shown->projects != present.projects;
    shown = std::move(present);
    total->setHours(qt(shown->total));
    if (hasOtherApps) showApps();
    if (hasOtherProjects) showProjects();
}

void LegendPanel::Parts::showApps() {
    apps->clear();
    for (const auto& app : shown->apps) {
        const auto name = localization.text("a11y_legend_row", app.appName.toStdString(), app.hours.toStdString(),
                                            app.percentage.toStdString());
        apps->add(new LegendRow(app, qt(name)));
    }
    if (shown->apps.empty())
        apps->add(new Label(qt(localization.text("app_usage_empty")), TypeRole::body, &Theme::text3));
}

void LegendPanel::Parts::showProjects() {
    projects->clear();
    for (const auto& project : shown->projects)
        projects->add(new ProjectHoursRow(project, qt(fmt::format("{:.1f} h", project.hours))));
    const bool hasProjects = !shown->projects.empty();
    separator->setVisible(hasProjects);
    projectsTitle->setVisible(hasProjects);
    projects->setVisible(hasProjects);
}

LegendPanel::LegendPanel(DayTimelineChart& chart, platform::RunLoop& runLoop, const Localization& localization,
                         QWidget* parent)
    : Card(parent), parts_(std::make_unique<Parts>(*this, chart, runLoop, localization)) {}

LegendPanel::~LegendPanel() = default;

void LegendPanel::showEvent(QShowEvent* event) {
    parts_->refresh();
    Card::showEvent(event);
}

}  // namespace quorvane
