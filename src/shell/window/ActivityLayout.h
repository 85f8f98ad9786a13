#pragma once

#include "timeline/TimelineViewMode.h"

#include <QRect>
#include <QSize>
#include <optional>

namespace quorvane {

/// Where the parts of the timeline section stand on its page, left to right; the page mirrors them.
struct ActivityLayout {
    static constexpr int headerHeight = 56;
    static constexpr int margin = 16;          ///< below, and beside the outer columns
    static constexpr int scrollBarWidth = 12;  ///< right of the hour column
    static constexpr int popUpWidth = 284;     ///< of details that float
    static constexpr int sheetWidth = 320;     ///< of a project panel that has no column
    static constexpr int praiseWidth = 280;    ///< of a praise right of the column, at least
    static constexpr int mostPraise = 360;     ///< its greatest width there
    static constexpr int praiseLine = 48;      ///< height of a praise above the column

    QRect header;
    QRect chart;                  ///< hour column and scroll bar; in the overviews the whole width
    std::optional<QRect> legend;  ///< the left list
    std::optional<QRect> side;    ///< praise and details, or project panel; without it details and panel float
    std::optional<QRect> praise;  ///< of the day alone: at the top of the side, right of the column, or above it
    /// Is the praise a line above the column? Elsewhere it is as high as it likes, up to the height of its place.
    bool isPraiseLine = false;
    friend bool operator==(const ActivityLayout&, const ActivityLayout&) = default;
};

/// For a page of this size. `hasProjectPanel`: it takes the place of the details and is a little wider.
[[nodiscard]] ActivityLayout activityLayout(QSize page, TimelineViewMode mode, bool hasProjectPanel);

/// Where a pop-up of this size goes so that it stands beside the block: right of the column if it fits there, else over
/// its right end; never outside of the page.
[[nodiscard]] QRect popUpBeside(const QRect& block, QSize popUp, const QRect& column, const QRect& page);

}  // namespace quorvane
