#pragma once

#include "base/Signal.h"
#include "base/TimeZone.h"
#include "base/Weak.h"
#include "diagnostics/ConsoleSink.h"
#include "platform/RunLoop.h"
#include "store/LiveQuery.h"
#include "timeline/AnnotationAssignment.h"
#include "timeline/AnnotationLayout.h"
#include "timeline/AwayGaps.h"
#include "timeline/DayTimelineGeometry.h"
#include "timeline/HourLayout.h"
#include "timeline/ProjectSelectorState.h"
#include "timeline/TimelineProcessor.h"

#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

namespace quorvane {

/// What the chart asks its view to do: bring the row of an hour to where `fraction` of the view's height is (0: top).
struct ScrollTarget {
    int hour = 0;
    double fraction = 0;
    Seconds duration{};  ///< of an animation that eases in and out
    friend bool operator==(const ScrollTarget&, const ScrollTarget&) = default;
};

/// The day chart without its pixels: which day, zoom and blocks it shows, what is selected, and what gestures do. It
/// sees the records that its owner passes, while it shows a day, and finds annotations itself. What is drawn is read
/// from its caches only, which the stated events rebuild; blocks are processed beside the main thread. Nothing throws:
/// what fails is printed. Main thread only; what it is made on outlives it.
class DayTimelineChart {
public:
    DayTimelineChart(ModelContext& context, platform::RunLoop& runLoop, ConsoleSink& console);
    DayTimelineChart(const DayTimelineChart&) = delete;
    DayTimelineChart& operator=(const DayTimelineChart&) = delete;

    /// Sent after anything that is drawn has changed.
    Signal<> changed;
    Signal<const ScrollTarget&> scrollRequested;

    // What comes from outside
    /// The records of a range: processes those of its day, if that lies in the range. Until such a range has been
    /// passed it isn't known what happened on the day.
    void setRecords(std::span<const TimelineRecordSnapshot> records, DateInterval range);
    /// There is something to show for the first time: processes.
    void appear();
    /// The view comes on screen again: it stands where the day begins, unless the user has chosen another place.
    void comeBack();
    /// The user goes to another application.
    void applicationLeft();
    /// The user comes back to the window. If it was left on today, it shows today, though a new day has begun since.
    void applicationBecameActive();
    void setScrollViewHeight(double height) { scrollViewHeight_ = height; }
    /// How far the content reaches above the view's top edge: 0 at the top, positive once it has been scrolled down.
    void noteScroll(double offset, bool isByUser = true);

    // Which time
    [[nodiscard]] TimelineViewMode currentViewMode() const { return currentViewMode_; }
    void setViewMode(TimelineViewMode mode);
    [[nodiscard]] Date selectedDate() const { return selectedDate_; }
    /// Another day lets go of all that is chosen.
    void selectDate(Date date);
    /// A day, week or month later (1) or earlier (-1).
    void stepDate(int direction);
    /// "2026/3" in month mode, else the day or the days of the week.
    [[nodiscard]] std::string dateLabel() const;
    /// From a week's column or a month's cell.
    void openDay(Date date);

    // What is drawn
    /// Are the blocks those of the day? Not before its records have been passed and processed; until then there are
    /// none.
    [[nodiscard]] bool isDayKnown() const { return isDayKnown_; }
    /// Has the known day no block though there are records, which began the day before or lasted too short?
    [[nodiscard]] bool hasOnlyHiddenRecords() const { return isDayKnown_ && processedRecords_.empty() && hasRecords_; }
    [[nodiscard]] const std::vector<ProcessedActivityItem>& processedRecords() const { return processedRecords_; }
    [[nodiscard]] const std::vector<TimelineRecordSnapshot>& sidebarRecords() const { return sidebarRecords_; }
    [[nodiscard]] double sidebarTotalHours() const { return sidebarTotalHours_; }
    [[nodiscard]] const std::set<int>& activityHours() const { return activityHours_; }
    [[nodiscard]] const HourLayout& layout() const { return layout_; }
    [[nodiscard]] const std::vector<PlacedProjectAnnotation>& projectAnnotations() const { return projectAnnotations_; }
    /// Where nobody was there and nothing fills the time; by start.
    [[nodiscard]] const std::vector<AwayGap>& gaps() const { return gaps_; }
    [[nodiscard]] double hourHeight() const { return hourHeight_; }
    void zoomIn();
    void zoomOut();
    void resetZoom();

    // What is selected
    [[nodiscard]] const std::optional<ProcessedActivityItem>& selectedActivity() const { return selectedActivity_; }
    [[nodiscard]] const std::shared_ptr<ProjectTimeAnnotation>& selectedProjectAnnotation() const {
        return selectedProjectAnnotation_;
    }
    [[nodiscard]] const std::optional<AwayGap>& selectedGap() const { return selectedGap_; }
    void click(ChartPoint point, double width);
    /// The block or gap with the id; none has no effect.
    void selectBlock(const Uuid& id);
    void selectGap(const Uuid& id);
    void select(const std::shared_ptr<ProjectTimeAnnotation>& annotation);
    /// The next (1) or previous (-1) block or gap by start, for the keyboard; from none the first or the last.
    void selectNeighbour(int direction);

    /// The rectangle of the drag under way; none while there is none.
    [[nodiscard]] const std::optional<SelectionRect>& selection() const { return selection_; }
    void drag(ChartPoint from, ChartPoint to);
    void endDrag();

    // Giving time to projects
    [[nodiscard]] std::optional<TimeRange> selectedTimeRange() const {
        return selectedTimeRange_ ? std::optional(selectedTimeRange_->hours) : std::nullopt;
    }
    /// How long that lasts.
    [[nodiscard]] Seconds selectedLength() const {
        return selectedTimeRange_ ? selectedTimeRange_->instants.end - selectedTimeRange_->instants.start : 0s;
    }
    /// The open panel; none while it is closed.
    [[nodiscard]] ProjectSelectorState* projectSelector() { return projectSelector_ ? &*projectSelector_ : nullptr; }
    void selectTimeRange(const TimeRange& range);
    /// From the details of the selected block.
    void selectTimeRangeOfActivity();
    /// A gap of the day that is shown.
    void assignGap(DateInterval time);
    void cancelProjectSelection();
    void assignTo(const std::shared_ptr<Project>& project);
    /// Makes a project of the panel's name and colour and assigns the range to it.
    void createProjectAndAssign();

    /// Notes that the absence is to stay nobody's time; false if that can't be saved.
    bool leaveGapEmpty(DateInterval time);

    // Taking away
    /// What the delete keys do.
    void deleteSelectedProjectAnnotation();
    void deleteAnnotation(const std::shared_ptr<ProjectTimeAnnotation>& annotation);
    /// Deletes the record whose id the block bears: of a merged block only the first.
    void deleteActivity(const ProcessedActivityItem& item);

private:
    [[nodiscard]] bool hasOpenRecordOnSelectedDay() const;
    void startTimelineProcessing();
    void finish(std::vector<TimelineProcessedSnapshot> blocks, bool hasRecords);
    void rebuildSidebar();
    void rebuildHourLayout();
    void clearTimelineCaches();
    void forgetRecords();
    void followAnnotations();
    void recalculateProjectAnnotations();
    void followAbsences();
    void rebuildGaps();
    [[nodiscard]] const AwayGap* gapAt(ChartPoint point, double width) const;
    void choose(const ProcessedActivityItem* block, const AwayGap* gap);
    void passMinute();
    void letGo();
    void zoomTo(double hourHeight);
    void anchor();
    void recentreSoon();
    void scrollToBeginning(Seconds duration);
    void openProjectSelector(const ChosenRange& range);
    void closeProjectSelector();
    template <class Change>
    bool saved(Change change, const char* failure);

    ModelContext& context_;
    platform::RunLoop& runLoop_;
    ConsoleSink& console_;
    TimelineProcessor processor_;
    std::vector<TimelineRecordSnapshot> records_;
    std::optional<DateInterval> recordsRange_;  ///< all of whose records these are; none while there are none
    std::optional<LiveQuery<ProjectTimeAnnotation>> annotations_;  ///< of the selected day; none if it can't be read
    Subscription annotationsChanged_;
    std::optional<LiveQuery<Absence>> absences_;  ///< around the selected day; none if they can't be read
    Subscription absencesChanged_;
    std::unique_ptr<platform::Timer> refreshTimer_;
    std::unique_ptr<platform::WorkItem> pendingScroll_;

    TimelineViewMode currentViewMode_ = TimelineViewMode::day;
    Date selectedDate_;
    std::shared_ptr<const TimeZone> zone_;  ///< in which the day was read
    bool hasAppeared_ = false;
    std::optional<bool> leftOnToday_;  ///< none while the user is here

    bool isDayKnown_ = false;
    bool hasRecords_ = false;  ///< on the known day
    std::vector<ProcessedActivityItem> processedRecords_;
    std::vector<TimelineRecordSnapshot> sidebarRecords_;  ///< the blocks as records of their own, in draw order
    double sidebarTotalHours_ = 0;
    std::set<int> activityHours_;
    HourLayout layout_;
    std::vector<PlacedProjectAnnotation> projectAnnotations_;
    std::vector<AwayGap> gaps_;

    double hourHeight_ = HourLayout::defaultHourHeight;
    double scrollViewHeight_ = 500;
    double currentScrollOffset_ = 0;
    double lastVisibleHour_ = 12;
    bool hasScrolled_ = false;
    bool hasUserScrolled_ = false;  ///< since the day came on screen

    std::optional<ProcessedActivityItem> selectedActivity_;
    std::shared_ptr<ProjectTimeAnnotation> selectedProjectAnnotation_;
    std::optional<AwayGap> selectedGap_;
    std::optional<SelectionRect> selection_;
    std::optional<ChosenRange> selectedTimeRange_;
    std::optional<ProjectSelectorState> projectSelector_;
    WeakSource<DayTimelineChart> weak_{*this};  // last: dies first, so that no callback meets half a chart
};

}  // namespace quorvane
