#include "shell/chart/ProjectHours.h"

#include "shell/chart/RowPainter.h"
#include "shell/look/AccessibleRole.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace quorvane {
namespace {

constexpr int dotSize = 12;
constexpr int textStart = 20;
constexpr int gap = 8;

}  // namespace

std::vector<ProjectHours> hoursByProject(const std::vector<PlacedProjectAnnotation>& annotations) {
    std::vector<std::pair<Uuid, ProjectHours>> found;
    for (const auto& placed : annotations) {
        const Project& project = *placed.annotation.project;
        auto entry = std::ranges::find(found, project.id(), &std::pair<Uuid, ProjectHours>::first);
        if (entry == found.end())
            entry = found.insert(entry, {project.id(), {project.name(), project.color().value_or(""), 0}});
        const ProjectTimeAnnotation& annotation = *placed.annotation.dbAnnotation;
        entry->second.hours += (annotation.endTime() - annotation.startTime()) / 1h;
    }
    std::vector<ProjectHours> projects;
    projects.reserve(found.size());
    for (auto& [id, project] : found)
        projects.push_back(std::move(project));
    std::ranges::stable_sort(projects, std::greater(), &ProjectHours::hours);
    return projects;
}

ProjectHoursRow::ProjectHoursRow(const ProjectHours& project, const QString& hours, QWidget* parent)
    : QWidget(parent), project_(project), hours_(hours) {
    setAccessibleRole(*this, QAccessible::ListItem, qt(project.name) + QStringLiteral(", ") + hours);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

QSize ProjectHoursRow::sizeHint() const {
    return {160, lineHeight(TypeRole::body) + 8};
}

QSize ProjectHoursRow::minimumSizeHint() const {
    return {0, sizeHint().height()};
}

void ProjectHoursRow::paintEvent(QPaintEvent*) {
    RowPainter row(*this);
    paintProjectDot(row.painter(), QRectF(row.placed({0, (height() - dotSize) / 2, dotSize, dotSize})),
                    AppColorPalette::projectTone(project_.color));
    const int hours = row.figures(rect(), TypeRole::body, theme().text, hours_);
    row.text(rect().adjusted(textStart, 0, -(hours + gap), 0), TypeRole::body, theme().text, qt(project_.name));
}

}  // namespace quorvane
