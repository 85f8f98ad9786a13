#pragma once

#include "platform/RunLoop.h"
#include "shell/chart/DayChartScene.h"

#include <optional>

namespace quorvane {

/// What the keys do on the day chart: moving between blocks, gaps and bars, letting go, assigning, deleting, going to
/// today.
class DayChartKeys {
public:
    DayChartKeys(DayTimelineChart& chart, const platform::RunLoop& runLoop, const DayChartScene& scene)
        : chart_(chart), runLoop_(runLoop), scene_(scene) {}

    /// A key without modifiers (`Qt::Key`). False if it means nothing here, so that others may have it.
    bool press(int key);

private:
    void moveBetweenBlocks(int direction);
    void moveBetweenBars(int direction);
    [[nodiscard]] std::vector<const DayChartBar*> barsBeside() const;
    [[nodiscard]] bool letGo();
    [[nodiscard]] bool hasChosen() const;
    void assign();
    void takeAway();

    DayTimelineChart& chart_;
    const platform::RunLoop& runLoop_;
    const DayChartScene& scene_;
    std::optional<Uuid> block_;  ///< from which the way led into the bars
};

/// A quarter of an hour from the first full quarter after the last block; from 8:00 on a day without any.
[[nodiscard]] TimeRange nextFreeQuarter(const DayChartScene& scene);

}  // namespace quorvane
