#include "shell/chart/LegendPanel.h"

#include "shell/chart/ProjectHours.h"
#include "shell/chart/TotalHours.h"
#include "shell/look/Label.h"
#include "shell/look/Painting.h"
#include "shell/look/RowList.h"
#include "shell/look/Theme.h"
#include "shell/signals/Subscribe.h"
#include "store/StoredNames.h"
#include "timeline/AppStatistics.h"

#include <QVBoxLayout>
#include <fmt/format.h>

namespace quorvane {
namespace {

constexpr int padding = Metrics::cardPadding - 1;  // the edge of 1 lies inside the card

std::vector<ListRow> appRows(const AppStatistics& statistics, const Localization& localization) {
    std::vector<ListRow> rows;
    rows.reserve(statistics.appStats.size());
    for (const AppStat& stat : statistics.appStats) {
        const auto name = StoredNames::shownApp(stat.appName, localization);
        const auto hours = fmt::format("{:.1f}", stat.hours);
        const auto share = fmt::format("{:.1f}", stat.percentage);
        rows.push_back({.mark = toQColor(stat.color),
                        .text = qt(name),
                        .figures = qt(hours + " h"),
                        .share = ListRow::Share{stat.percentage / 100, qt(share + '%')},
                        .accessibleName = qt(localization.text("a11y_legend_row", name, hours, share))});
    }
    return rows;
}

std::vector<ListRow> projectRows(const DayTimelineChart& chart) {
    std::vector<ListRow> rows;
    for (const ProjectHours& project : hoursByProject(chart.projectAnnotations())) {
        const auto hours = fmt::format("{:.1f} h", project.hours);
        rows.push_back({.tone = AppColorPalette::projectTone(project.color),
                        .text = qt(project.name),
                        .figures = qt(hours),
                        .accessibleName = qt(project.name + ", " + hours)});
    }
    return rows;
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

    LegendPanel& panel;
    DayTimelineChart& chart;
    platform::RunLoop& runLoop;
    const Localization& localization;
    TotalHours* total;
    Label* noApps;
    RowList* apps;
    Separator* separator;
    Label* projectsTitle;
    RowList* projects;
};

LegendPanel::Parts::Parts(LegendPanel& owner, DayTimelineChart& shownChart, platform::RunLoop& clock,
                          const Localization& texts)
    : panel(owner), chart(shownChart), runLoop(clock), localization(texts), total(new TotalHours),
      noApps(new Label(qt(texts.text("app_usage_empty")), TypeRole::body, &Theme::text3)),
      apps(new RowList(qt(texts.text("app_usage_title")))), separator(new Separator),
      projectsTitle(new Label(qt(texts.text("ui_projects")), TypeRole::label, &Theme::text2)),
      projects(new RowList(qt(texts.text("ui_projects")))) {
    auto* const page = new QVBoxLayout(&panel);
    page->setContentsMargins(1, 1, 1, 1);
    page->setSpacing(0);
    auto* const head = section(*page, 13, 9);
    head->addWidget(new Label(qt(texts.text("app_usage_title")), TypeRole::label, &Theme::text2));
    head->addSpacing(4);
    head->addWidget(total);
    page->addWidget(new Separator);
    noApps->setContentsMargins(padding, 14, padding, 16);
    page->addWidget(noApps);
    apps->setMargins({padding, 7, padding, 12});
    page->addWidget(apps);
    page->addWidget(separator);
    section(*page, 12, 6)->addWidget(projectsTitle);
    page->addWidget(projects);
    projects->setMargins({padding, 0, padding, 12});
    page->addStretch(1);
    for (QWidget* part : std::initializer_list<QWidget*>{noApps, separator, projectsTitle, projects})
        part->hide();
    subscribe(chart.changed, panel, [this] { refresh(); });
}

void LegendPanel::Parts::refresh() {
    // A drag changes nothing here and sends with every move of the pointer.
    if (!panel.isVisible() || chart.selection() || !chart.isDayKnown()) return;
    const AppStatistics statistics = appStatistics(chart.sidebarRecords(), runLoop.now());
    total->setHours(qt(fmt::format("{:.1f}", statistics.totalHours)));
    apps->setRows(appRows(statistics, localization));
    noApps->setVisible(statistics.appStats.empty());
    auto rows = projectRows(chart);
    for (QWidget* part : std::initializer_list<QWidget*>{separator, projectsTitle, projects})
        part->setVisible(!rows.empty());
    projects->setRows(std::move(rows));
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
