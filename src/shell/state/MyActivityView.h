#pragma once

#include "base/Signal.h"
#include "base/Weak.h"
#include "diagnostics/ConsoleSink.h"
#include "platform/RunLoop.h"
#include "rules/CategoryPickerState.h"
#include "rules/CategoryTagManager.h"
#include "store/LiveQuery.h"
#include "timeline/DayTimelineChart.h"
#include "timeline/TimelineAnnotation.h"
#include "timeline/TimelineRecordSnapshot.h"

#include <memory>
#include <optional>
#include <vector>

namespace quorvane {

/// The timeline section without its pixels: the records of the last seven days, kept up to date, and the chart that
/// shows them. The seven days count from the moment at which it is made. Nothing throws: what fails is printed. Main
/// thread only; what it is made on outlives it.
class MyActivityView {
public:
    static constexpr Seconds reach{604800};  ///< how far back the records go

    MyActivityView(ModelContext& context, platform::RunLoop& runLoop, CategoryTagManager& categories,
                   ConsoleSink& console);
    MyActivityView(const MyActivityView&) = delete;
    MyActivityView& operator=(const MyActivityView&) = delete;

    /// The first task, once it is on screen: reads the records and hands them to the chart.
    void load();
    [[nodiscard]] bool isDataLoaded() const { return isDataLoaded_; }
    /// Reads anew and processes anew, for what another program has changed.
    void refresh();

    [[nodiscard]] DayTimelineChart& chart() { return chart_; }
    [[nodiscard]] platform::RunLoop& runLoop() { return runLoop_; }

    /// All of the seven days, newest first; empty until they are loaded.
    [[nodiscard]] const std::vector<TimelineRecordSnapshot>& records() const { return records_; }
    /// What was given to projects and shares a moment with the range, newest first.
    [[nodiscard]] std::vector<TimelineAnnotation> annotations(DateInterval range);

    /// The choice of category and tags for the record of a block; none, with a line, if the record can't be read.
    [[nodiscard]] std::unique_ptr<CategoryPickerState> categoryPicker(const ProcessedActivityItem& item);

    /// Sent after it has been loaded, and after records, assignments or anything on the chart has changed.
    Signal<> changed;

private:
    void take();
    void takeSoon();
    void changeSoon();

    ModelContext& context_;
    platform::RunLoop& runLoop_;
    CategoryTagManager& categories_;
    ConsoleSink& console_;
    Date cutOff_;
    DayTimelineChart chart_;
    std::optional<LiveQuery<ActivityRecord>> allRecords_;
    std::vector<TimelineRecordSnapshot> records_;
    Uuid refreshTrigger_ = Uuid::random();
    bool isDataLoaded_ = false;
    bool isChangePosted_ = false;
    bool mustTake_ = false;
    Subscription recordsChanged_;
    Subscription chartChanged_;
    Subscription projectsChanged_;
    WeakSource<MyActivityView> weak_{*this};
};

}  // namespace quorvane
