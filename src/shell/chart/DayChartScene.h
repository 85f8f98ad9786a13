#pragma once

#include "l10n/Localization.h"
#include "timeline/DayTimelineChart.h"
#include "timeline/ProjectTone.h"

#include <QColor>
#include <QRectF>
#include <QString>
#include <array>
#include <memory>
#include <vector>

namespace quorvane {

struct DayChartBlock {
    Uuid id;
    QRectF frame;
    QColor color;
    QString name;
    QString title;  ///< of the window; may be empty
    QString duration;
    double startHour = 0;
    double endHour = 0;
    bool showsName = false;
    friend bool operator==(const DayChartBlock&, const DayChartBlock&) = default;
};

struct DayChartBar {
    std::shared_ptr<ProjectTimeAnnotation> annotation;
    Uuid id;
    QRectF frame;
    QString name;
    ProjectTone tone;
    double startHour = 0;
    double endHour = 0;
    int column = 0;
    friend bool operator==(const DayChartBar&, const DayChartBar&) = default;
};

/// Where nobody was there.
struct DayChartGap {
    Uuid id;
    QRectF frame;
    QString text;      ///< "away 16:38 – 17:05"
    QString duration;  ///< "27m"
    double startHour = 0;
    double endHour = 0;
    bool isLeftEmpty = false;
    friend bool operator==(const DayChartGap&, const DayChartGap&) = default;
};

struct DayChartHour {
    double centre = 0;  ///< of its label
    bool isActive = false;
    friend bool operator==(const DayChartHour&, const DayChartHour&) = default;
};

/// What stands on the day chart, and where: logical pixels from the top left corner of its content. A value that is
/// made anew after each change and compared with the one before it, so that only real changes are painted.
struct DayChartScene {
    double width = 0;       ///< with the gutter
    double rowsHeight = 0;  ///< of the 24 hours
    double height = 0;      ///< of all; bars and low blocks may reach below the rows
    bool isEmpty = false;   ///< is it known that there is no block?
    std::vector<DayTimelineGeometry::GridLine> grid;
    std::array<DayChartHour, 24> hours;
    std::vector<DayChartGap> gaps;           ///< by start; under all else
    std::vector<DayChartBlock> blocks;       ///< in draw order
    std::vector<std::size_t> blocksByStart;  ///< their places in `blocks`, from morning to night
    std::vector<DayChartBar> bars;           ///< by start
    friend bool operator==(const DayChartScene&, const DayChartScene&) = default;

    /// None if there is no such thing, or no longer.
    [[nodiscard]] const DayChartBlock* block(const Uuid& id) const;
    [[nodiscard]] const DayChartBar* bar(const Uuid& id) const;
    [[nodiscard]] const DayChartGap* gap(const Uuid& id) const;
    /// The one drawn last.
    [[nodiscard]] const DayChartBar* barAt(QPointF point) const;
};

[[nodiscard]] DayChartScene dayChartScene(const DayTimelineChart& chart, double width,
                                          const Localization& localization);

/// Where a press on the close-circle of a bar counts: 28 wide, around the bar's top right corner.
[[nodiscard]] QRectF closeCircleTarget(const QRectF& bar);

}  // namespace quorvane
