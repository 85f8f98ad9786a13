#pragma once

#include "timeline/AnnotationLayout.h"

#include <QString>
#include <QWidget>
#include <string>
#include <vector>

namespace quorvane {

/// What a day gave to a project.
struct ProjectHours {
    std::string name;
    std::string color;  ///< the name of a tone; may be empty
    double hours = 0;
    friend bool operator==(const ProjectHours&, const ProjectHours&) = default;
};

/// The hours of each project, most first, among equals by their first annotation.
[[nodiscard]] std::vector<ProjectHours> hoursByProject(const std::vector<PlacedProjectAnnotation>& annotations);

/// A project's dot, name and hours.
class ProjectHoursRow : public QWidget {
public:
    ProjectHoursRow(const ProjectHours& project, const QString& hours, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    ProjectHours project_;
    QString hours_;  ///< "2.5 h"
};

}  // namespace quorvane
