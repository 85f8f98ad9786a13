#pragma once

#include <QRect>
#include <QString>
#include <Qt>

namespace quorvane {

/// Where the parts of a row of the review queue stand, in the row; mirrored where the layout is.
struct ReviewRowLayout {
    QRect icon;
    QRect title;
    QRect detail;
    QRect project;
    QRect status;
    QRect billable;
    QRect exclude;
    int height = 0;
};

/// In a narrow row project and status stand under the words. `billable` and `exclude` are the texts of the buttons.
[[nodiscard]] ReviewRowLayout reviewRowLayout(int width, Qt::LayoutDirection direction, const QString& billable,
                                              const QString& exclude);

}  // namespace quorvane
