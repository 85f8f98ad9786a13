#pragma once

#include "base/Signal.h"
#include "base/Weak.h"
#include "diagnostics/ConsoleSink.h"
#include "platform/RunLoop.h"
#include "rules/CategoryPickerState.h"
#include "rules/CategoryTagManager.h"
#include "timeline/DayTimelineChart.h"
#include "timeline/LiveRecords.h"
#include "timeline/TimelineAnnotation.h"
#include "timeline/TimelineRecordSnapshot.h"

#include <memory>
#include <string>
#include <vector>

namespace quorvane {

/// The timeline section without its pixels: the chart, and the records of the day, week or month that it shows,
/// wherever in the history that lies. They are read when it goes there, kept up to date, and let go when it goes on.
/// Nothing throws: what fails is printed. Main thread only; what it is made on outlives it.
class MyActivityView {
public:
    static constexpr Seconds patience{0.2};  ///< as long as it reads, what stood there before may stay

    MyActivityView(ModelContainer& store, platform::RunLoop& runLoop, CategoryTagManager& categories,
                   ConsoleSink& console);
    MyActivityView(const MyActivityView&) = delete;
    MyActivityView& operator=(const MyActivityView&) = delete;

    /// The first task, once it is on screen: begins to read.
    void load();
    /// Has it read, or tried to, at least once?
    [[nodiscard]] bool isDataLoaded() const { return isDataLoaded_; }
    /// Reads anew, for what another program has changed, or after a failure.
    void refresh();

    [[nodiscard]] DayTimelineChart& chart() { return chart_; }
    [[nodiscard]] platform::RunLoop& runLoop() { return runLoop_; }

    /// Those of what is shown, oldest first. As long as they are none of these, nothing may be said of it.
    [[nodiscard]] const std::vector<TimelineRecordSnapshot>& records() const { return records_.records(); }
    [[nodiscard]] LiveRecords::State state() const { return records_.state(); }
    [[nodiscard]] const std::string& failure() const { return records_.failure(); }
    /// Does it read for longer than people would take for a moment?
    [[nodiscard]] bool isLate() const { return isLate_; }
    /// What was given to projects and shares a moment with the range, newest first.
    [[nodiscard]] std::vector<TimelineAnnotation> annotations(DateInterval range);

    /// The choice of category and tags for the record of a block; none, with a line, if the record can't be read.
    [[nodiscard]] std::unique_ptr<CategoryPickerState> categoryPicker(const ProcessedActivityItem& item);

    /// Sent after records have been read, and after records, assignments or anything on the chart has changed.
    Signal<> changed;
    /// Sent after so many records have been let go that their memory should be given back to the system.
    Signal<> leftMany;

private:
    void goWhereTheChartIs();
    void take();
    void changeSoon();

    ModelContext& context_;
    platform::RunLoop& runLoop_;
    CategoryTagManager& categories_;
    ConsoleSink& console_;
    DayTimelineChart chart_;
    LiveRecords records_;
    bool hasBegun_ = false;
    bool isLate_ = false;
    bool hasLeftMany_ = false;
    std::unique_ptr<platform::WorkItem> late_;
    bool isDataLoaded_ = false;
    bool isChangePosted_ = false;
    Subscription recordsChanged_;
    Subscription chartChanged_;
    Subscription projectsChanged_;
    WeakSource<MyActivityView> weak_{*this};
};

}  // namespace quorvane
