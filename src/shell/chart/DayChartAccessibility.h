#pragma once

#include "base/Uuid.h"

#include <QAccessible>
#include <compare>
#include <map>

namespace quorvane {

class DayChartView;
struct DayChartOverlay;

/// A painted thing on the day chart, as assistive technology knows it.
struct DayChartItem {
    enum class Kind { block, gap, bar, range };
    Kind kind = Kind::block;
    Uuid id;  ///< all zero for the range
    friend auto operator<=>(const DayChartItem&, const DayChartItem&) = default;
};

/// The accessible objects of a chart's items: made when somebody asks for them, gone with what they stand for.
class DayChartItems {
public:
    explicit DayChartItems(DayChartView& view) : view_(view) {}
    DayChartItems(const DayChartItems&) = delete;
    DayChartItems& operator=(const DayChartItems&) = delete;
    ~DayChartItems() { clear(); }

    [[nodiscard]] QAccessibleInterface* interfaceOf(const DayChartItem& item);
    /// Forgets the items that are no longer on the chart.
    void prune();
    void clear();
    /// Tells assistive technology what has changed between two states: focus, choice and range.
    void announce(const DayChartOverlay& before, const DayChartOverlay& now);

private:
    DayChartView& view_;
    std::map<DayChartItem, QAccessible::Id> ids_;
};

/// Makes Qt find the accessible objects of day charts. Once is enough; more do no harm.
void installDayChartAccessibility();

}  // namespace quorvane
