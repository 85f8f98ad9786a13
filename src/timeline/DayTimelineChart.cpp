#include "timeline/DayTimelineChart.h"

#include "base/DateText.h"
#include "base/LocalTimeZone.h"
#include "platform/Clock.h"
#include "store/ActivityRecord.h"
#include "store/StoreError.h"
#include "timeline/CalendarTitles.h"
#include "timeline/TimelineCalendar.h"
#include "timeline/TimelineProcessing.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace quorvane {
namespace {

constexpr Seconds refreshInterval = 60s;
constexpr double scrollGrain = 24;  // smaller moves aren't worth noting
constexpr double scrollNoise = 0.1;

}  // namespace

DayTimelineChart::DayTimelineChart(ModelContext& context, platform::RunLoop& runLoop, ConsoleSink& console)
    : context_(context), runLoop_(runLoop), console_(console), processor_(runLoop), selectedDate_(runLoop.now()),
      zone_(localTimeZone()) {
    followAbsences();
    followAnnotations();
    refreshTimer_ = runLoop_.every(refreshInterval, [weak = weak_.handle()] {
        if (auto* self = weak.get()) self->passMinute();
    });
}

// --- What comes from outside --------------------------------------------------------------------------------------

void DayTimelineChart::setRecords(std::span<const TimelineRecordSnapshot> records, DateInterval range) {
    records_.assign(records.begin(), records.end());
    recordsRange_ = range;
    startTimelineProcessing();
}

void DayTimelineChart::appear() {
    const bool isFirst = !std::exchange(hasAppeared_, true);
    startTimelineProcessing();
    recalculateProjectAnnotations();
    if (!isFirst) return;
    // The view needs a moment to lay itself out.
    pendingScroll_ = runLoop_.after(0.2s, [weak = weak_.handle()] {
        if (auto* self = weak.get()) self->scrollToBeginning(0.5s);
    });
}

void DayTimelineChart::comeBack() {
    if (isDayKnown_ && !hasUserScrolled_) scrollToBeginning(0s);
}

/// People look for the present on its day, and for where it begins on another.
void DayTimelineChart::scrollToBeginning(Seconds duration) {
    hasUserScrolled_ = false;
    if (timelineCalendar().isSameDay(runLoop_.now(), selectedDate_))
        scrollRequested.send({Calendar::current().components(runLoop_.now()).hour, 0.5, duration});
    else
        scrollRequested.send({activityHours_.empty() ? 0 : *activityHours_.begin(), 0, duration});
}

void DayTimelineChart::applicationLeft() {
    if (!leftOnToday_) leftOnToday_ = timelineCalendar().isSameDay(runLoop_.now(), selectedDate_);
}

void DayTimelineChart::applicationBecameActive() {
    const Date now = runLoop_.now();
    const bool wasOnToday = std::exchange(leftOnToday_, std::nullopt).value_or(false);
    if (!wasOnToday || currentViewMode_ != TimelineViewMode::day || timelineCalendar().isSameDay(now, selectedDate_))
        return;
    console_.line("DayTimelineChart: 检测到日期变化，从 {} 更新到 {}", mediumDate(selectedDate_), mediumDate(now));
    selectDate(now);
}

void DayTimelineChart::noteScroll(double offset, bool isByUser) {
    if (std::abs(-offset - currentScrollOffset_) > scrollGrain) currentScrollOffset_ = -offset;
    hasScrolled_ = hasScrolled_ || std::abs(offset) > scrollNoise;
    hasUserScrolled_ = hasUserScrolled_ || isByUser;
}

// --- Which time ---------------------------------------------------------------------------------------------------

void DayTimelineChart::setViewMode(TimelineViewMode mode) {
    currentViewMode_ = mode;
    if (mode != TimelineViewMode::day) {
        forgetRecords();
        clearTimelineCaches();
    }
    changed.send();
}

/// What is chosen belongs to the day that was shown.
void DayTimelineChart::letGo() {
    selectedActivity_.reset();
    selectedProjectAnnotation_.reset();
    selectedGap_.reset();
    selection_.reset();
    selectedTimeRange_.reset();
    projectSelector_.reset();
}

void DayTimelineChart::selectDate(Date date) {
    if (!timelineCalendar().isSameDay(date, selectedDate_)) letGo();
    selectedDate_ = date;
    clearTimelineCaches();
    startTimelineProcessing();
    followAbsences();
    followAnnotations();  // which tells of all
}

void DayTimelineChart::stepDate(int direction) {
    const auto calendar = Calendar::current();
    switch (currentViewMode_) {
    case TimelineViewMode::day: return selectDate(calendar.addingDays(direction, selectedDate_));
    case TimelineViewMode::week: return selectDate(calendar.addingDays(7 * direction, selectedDate_));
    case TimelineViewMode::month: return selectDate(calendar.addingMonths(direction, selectedDate_));
    }
}

std::string DayTimelineChart::dateLabel() const {
    switch (currentViewMode_) {
    case TimelineViewMode::day: break;
    case TimelineViewMode::week: return daysTitle(timelineCalendar().week(selectedDate_));
    case TimelineViewMode::month: return localDateText(selectedDate_, "yyyy/M");
    }
    return dayTitle(selectedDate_);
}

void DayTimelineChart::openDay(Date date) {
    currentViewMode_ = TimelineViewMode::day;
    selectDate(date);
}

// --- Blocks -------------------------------------------------------------------------------------------------------

bool DayTimelineChart::hasOpenRecordOnSelectedDay() const {
    const auto day = Calendar::current().day(selectedDate_);
    return std::any_of(records_.begin(), records_.end(), [&](const auto& record) {
        return !record.endTime && record.startTime >= day.start && record.startTime < day.end;
    });
}

void DayTimelineChart::startTimelineProcessing() {
    const auto calendar = Calendar::current();
    const auto day = calendar.day(selectedDate_);
    const bool isPassed = recordsRange_ && recordsRange_->start <= day.start && day.end <= recordsRange_->end;
    if (!isPassed) forgetRecords();
    if (!hasAppeared_ || !isPassed) return;
    const Date now = runLoop_.now();
    std::vector<TimelineRecordSnapshot> ofDay;  // copies of the day's records alone
    std::ranges::copy_if(records_, std::back_inserter(ofDay), [&](const auto& record) {
        const bool reachesIn = record.startTime >= day.start || record.endTime.value_or(now) > day.start;
        return record.startTime < day.end && record.startTime <= now && reachesIn && !record.isLoginWindow();
    });
    const bool hasRecords = !ofDay.empty();
    processor_.start(TimelineProcessing::snapshotsOfDay(std::move(ofDay), selectedDate_, now, calendar), now,
                     [hasRecords, weak = weak_.handle()](std::vector<TimelineProcessedSnapshot> blocks) {
                         if (auto* self = weak.get()) self->finish(std::move(blocks), hasRecords);
                     });
}

void DayTimelineChart::forgetRecords() {
    processor_.cancel();
    records_ = {};
    recordsRange_.reset();
}

void DayTimelineChart::finish(std::vector<TimelineProcessedSnapshot> blocks, bool hasRecords) {
    processedRecords_ = TimelineProcessing::makeItems(std::move(blocks));
    hasRecords_ = hasRecords;
    const bool isNew = !std::exchange(isDayKnown_, true);
    rebuildSidebar();
    activityHours_ = TimelineProcessing::activityHours(processedRecords_);
    rebuildHourLayout();
    rebuildGaps();
    changed.send();
    if (isNew) scrollToBeginning(0s);
}

void DayTimelineChart::rebuildSidebar() {
    sidebarTotalHours_ = 0;
    sidebarRecords_.clear();
    for (const ProcessedActivityItem& item : processedRecords_) {
        sidebarTotalHours_ += item.duration;
        sidebarRecords_.push_back({.id = item.id,
                                   .startTime = item.stretch.start,
                                   .endTime = item.stretch.end,
                                   .bundleId = item.bundleId,
                                   .appName = item.appName,
                                   .windowTitle = item.windowTitle,
                                   .documentPath = item.documentPath,
                                   .url = item.url,
                                   .category = item.category,
                                   .tags = item.tags});
    }
}

void DayTimelineChart::rebuildHourLayout() {
    layout_ = HourLayout(activityHours_, hourHeight_);
    TimelineProcessing::layOut(processedRecords_, layout_);
}

void DayTimelineChart::clearTimelineCaches() {
    isDayKnown_ = false;
    pendingScroll_.reset();
    processedRecords_ = {};
    sidebarRecords_ = {};
    sidebarTotalHours_ = 0;
    activityHours_.clear();
    gaps_.clear();
}

/// An open record grows while somebody looks at it. Where the user has come to another zone, days begin elsewhere.
void DayTimelineChart::passMinute() {
    auto zone = localTimeZone();
    if (zone != zone_) {
        zone_ = std::move(zone);
        letGo();  // hours mean other instants there
        return selectDate(selectedDate_);
    }
    if (currentViewMode_ == TimelineViewMode::day && Calendar::current().isSameDay(selectedDate_, runLoop_.now()) &&
        hasOpenRecordOnSelectedDay())
        startTimelineProcessing();
}

void DayTimelineChart::followAnnotations() {
    const auto day = Calendar::current().day(selectedDate_);
    const auto start = field(&ProjectTimeAnnotation::startTime);
    annotationsChanged_.reset();
    annotations_.reset();
    try {
        annotations_.emplace(
            context_, FetchDescriptor<ProjectTimeAnnotation>{.predicate = start >= day.start && start < day.end,
                                                             .sort = {ascending(&ProjectTimeAnnotation::startTime)}});
        annotationsChanged_ =
            annotations_->didChange.subscribe([this](const auto&) { recalculateProjectAnnotations(); });
    } catch (const StoreError& error) {
        console_.line("DayTimelineChart: Failed to fetch annotations: {}", error.what());
    }
    recalculateProjectAnnotations();
}

void DayTimelineChart::recalculateProjectAnnotations() {
    projectAnnotations_.clear();
    try {
        if (annotations_)
            projectAnnotations_ = placeProjectAnnotations(annotations_->results(), selectedDate_, Calendar::current());
    } catch (const StoreError& error) {
        console_.line("DayTimelineChart: Failed to fetch projects: {}", error.what());
    }
    rebuildGaps();
    changed.send();
}

void DayTimelineChart::followAbsences() {
    absencesChanged_.reset();
    absences_.reset();
    try {
        absences_.emplace(context_, absencesAround(Calendar::current().day(selectedDate_)));
        absencesChanged_ = absences_->didChange.subscribe([this](const auto&) {
            rebuildGaps();
            changed.send();
        });
    } catch (const StoreError& error) {
        console_.line("DayTimelineChart: Failed to fetch absences: {}", error.what());
    }
}

void DayTimelineChart::rebuildGaps() {
    if (!isDayKnown_) return gaps_.clear();  // records that are still to come take their part of an absence
    std::vector<DateInterval> taken;
    for (const ProcessedActivityItem& item : processedRecords_)
        taken.push_back(item.stretch);
    if (annotations_)
        for (const auto& annotation : annotations_->results())
            taken.push_back({annotation->startTime(), annotation->endTime()});
    const auto calendar = Calendar::current();
    gaps_.clear();
    if (absences_) gaps_ = awayGaps(absences_->results(), std::move(taken), calendar.day(selectedDate_), calendar);
    if (!selectedGap_) return;
    const auto kept = std::ranges::find(gaps_, selectedGap_->id, &AwayGap::id);
    selectedGap_ = kept == gaps_.end() ? std::nullopt : std::optional(*kept);
}

// --- Zoom ---------------------------------------------------------------------------------------------------------

void DayTimelineChart::zoomIn() {
    zoomTo(std::min(hourHeight_ + DayTimelineGeometry::zoomStep, DayTimelineGeometry::maxHourHeight));
}

void DayTimelineChart::zoomOut() {
    zoomTo(std::max(hourHeight_ - DayTimelineGeometry::zoomStep, DayTimelineGeometry::minHourHeight));
}

void DayTimelineChart::resetZoom() {
    zoomTo(HourLayout::defaultHourHeight);
}

void DayTimelineChart::zoomTo(double hourHeight) {
    anchor();
    hourHeight_ = hourHeight;
    rebuildHourLayout();
    changed.send();
    recentreSoon();
}

/// Notes which hour is in the middle: the present one until something has been scrolled.
void DayTimelineChart::anchor() {
    if (hasScrolled_) {
        lastVisibleHour_ = std::clamp(layout_.hourForY(scrollViewHeight_ * 0.5 - currentScrollOffset_), 0.0, 24.0);
        return;
    }
    const auto now = Calendar::current().components(runLoop_.now());
    lastVisibleHour_ = now.hour + now.minute / 60.0;
}

void DayTimelineChart::recentreSoon() {
    pendingScroll_ = runLoop_.after(0.15s, [weak = weak_.handle()] {
        auto* self = weak.get();
        if (self == nullptr) return;
        const double hour = self->lastVisibleHour_;
        self->scrollRequested.send(
            {static_cast<int>(hour), DayTimelineGeometry::centringFraction(self->layout_, hour), 0.3s});
    });
}

// --- Selection ----------------------------------------------------------------------------------------------------

void DayTimelineChart::click(ChartPoint point, double width) {
    const auto* hit = DayTimelineGeometry::hitTest(processedRecords_, point, width);
    choose(hit, hit ? nullptr : gapAt(point, width));
    changed.send();
}

const AwayGap* DayTimelineChart::gapAt(ChartPoint point, double width) const {
    const bool isBeside = point.x < DayTimelineGeometry::gutterWidth || point.x > width;
    const auto found = std::ranges::find_if(gaps_, [&](const AwayGap& gap) {
        return point.y >= layout_.yPosition(gap.hours.startHour) && point.y < layout_.yPosition(gap.hours.endHour);
    });
    return isBeside || found == gaps_.end() ? nullptr : &*found;
}

void DayTimelineChart::choose(const ProcessedActivityItem* block, const AwayGap* gap) {
    selectedActivity_ = block ? std::optional(*block) : std::nullopt;
    selectedGap_ = gap ? std::optional(*gap) : std::nullopt;
    selectedProjectAnnotation_.reset();
}

void DayTimelineChart::selectBlock(const Uuid& id) {
    const auto found = std::ranges::find(processedRecords_, id, &ProcessedActivityItem::id);
    if (found == processedRecords_.end()) return;
    choose(&*found, nullptr);
    changed.send();
}

void DayTimelineChart::selectGap(const Uuid& id) {
    const auto found = std::ranges::find(gaps_, id, &AwayGap::id);
    if (found == gaps_.end()) return;
    choose(nullptr, &*found);
    changed.send();
}

void DayTimelineChart::select(const std::shared_ptr<ProjectTimeAnnotation>& annotation) {
    selectedProjectAnnotation_ = annotation;
    selectedActivity_.reset();
    selectedGap_.reset();
    changed.send();
}

void DayTimelineChart::selectNeighbour(int direction) {
    struct Stop {
        double startHour;
        const ProcessedActivityItem* block;
        const AwayGap* gap;
    };
    std::vector<Stop> stops;
    for (const auto& item : processedRecords_)
        stops.push_back({item.startHour, &item, nullptr});
    for (const auto& gap : gaps_)
        stops.push_back({gap.hours.startHour, nullptr, &gap});
    if (stops.empty()) return;
    std::ranges::stable_sort(stops, {}, &Stop::startHour);
    const auto present = std::ranges::find_if(stops, [this](const Stop& stop) {
        return stop.block ? selectedActivity_ && stop.block->id == selectedActivity_->id
                          : selectedGap_ && stop.gap->id == selectedGap_->id;
    });
    const auto count = std::ssize(stops);
    const auto from = present == stops.end() ? (direction > 0 ? -1 : count) : present - stops.begin();
    const Stop& next = stops[static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(from + direction, 0, count - 1))];
    choose(next.block, next.gap);
    changed.send();
}

void DayTimelineChart::drag(ChartPoint from, ChartPoint to) {
    if (!selection_ && std::hypot(to.x - from.x, to.y - from.y) < DayTimelineGeometry::leastDrag) return;
    selection_ = SelectionRect{from, to};
    changed.send();
}

void DayTimelineChart::endDrag() {
    const auto drag = std::exchange(selection_, std::nullopt);
    if (!drag) return;
    if (const auto range = DayTimelineGeometry::selectedRange(*drag, layout_)) selectTimeRange(*range);
    changed.send();
}

// --- Giving time to projects --------------------------------------------------------------------------------------

void DayTimelineChart::selectTimeRange(const TimeRange& range) {
    openProjectSelector(chosenRange(range, selectedDate_));
}

/// The very instants of the block: hours alone may mean others where clocks change.
void DayTimelineChart::selectTimeRangeOfActivity() {
    if (!selectedActivity_) return;
    const auto& item = *selectedActivity_;
    openProjectSelector({{item.startHour, item.endHour}, item.stretch});
}

void DayTimelineChart::assignGap(DateInterval time) {
    openProjectSelector({clockHours(time, timelineCalendar()), time});
}

void DayTimelineChart::openProjectSelector(const ChosenRange& range) {
    try {
        const auto projects = context_.fetch<Project>(
            {.predicate = field(&Project::isArchived) == false, .sort = {ascending(&Project::name)}});
        projectSelector_.emplace(range.hours, projects, annotationsOverlapping(context_, range.instants));
        selectedTimeRange_ = range;
    } catch (const StoreError& error) {
        console_.line("DayTimelineChart: Failed to fetch projects: {}", error.what());
    }
    changed.send();
}

void DayTimelineChart::cancelProjectSelection() {
    closeProjectSelector();
}

void DayTimelineChart::closeProjectSelector() {
    projectSelector_.reset();
    selectedTimeRange_.reset();
    changed.send();
}

void DayTimelineChart::assignTo(const std::shared_ptr<Project>& project) {
    if (selectedTimeRange_) createAnnotation(context_, project, *selectedTimeRange_, console_);
    closeProjectSelector();
}

void DayTimelineChart::createProjectAndAssign() {
    if (!projectSelector_ || !projectSelector_->canCreate()) return;
    const auto project = std::make_shared<Project>();
    project->name = projectSelector_->newProjectName();
    project->color = projectSelector_->selectedColor;
    const bool isSaved = saved([&] { context_.insert(project); }, "Failed to save Project");
    if (isSaved) return assignTo(project);
    closeProjectSelector();
}

bool DayTimelineChart::leaveGapEmpty(DateInterval time) {
    return saved([&] { leaveEmpty(context_, time); }, "Failed to leave an absence empty");
}

// --- Taking away --------------------------------------------------------------------------------------------------

/// Makes a change and saves it; prints why it could not be saved.
template <class Change>
bool DayTimelineChart::saved(Change change, const char* failure) {
    try {
        change();
        context_.save();
        return true;
    } catch (const StoreError& error) {
        console_.line("{}: {}", failure, error.what());
        return false;
    }
}

void DayTimelineChart::deleteSelectedProjectAnnotation() {
    if (selectedProjectAnnotation_) deleteAnnotation(selectedProjectAnnotation_);
}

void DayTimelineChart::deleteAnnotation(const std::shared_ptr<ProjectTimeAnnotation>& annotation) {
    const auto kept = annotation;  // the selection, which goes, may be all that holds it
    const auto change = [&] {
        context_.remove(kept);
        selectedProjectAnnotation_.reset();
    };
    if (saved(change, "Failed to delete ProjectTimeAnnotation")) console_.line("ProjectTimeAnnotation deleted");
    changed.send();
}

void DayTimelineChart::deleteActivity(const ProcessedActivityItem& item) {
    std::string name;
    bool isFound = true;
    const auto change = [&, id = item.id] {
        const auto found = context_.fetch<ActivityRecord>({.predicate = field(&ActivityRecord::id) == id, .limit = 1});
        isFound = !found.empty();
        if (!isFound) return;
        name = found.front()->appName().value_or("Unknown");
        context_.remove(found.front());
    };
    if (!saved(change, "Failed to delete ActivityRecord")) return;
    if (!isFound) return console_.line("ActivityRecord not found for deletion");
    console_.line("ActivityRecord deleted: {}", name);
    selectedActivity_.reset();
    changed.send();
}

}  // namespace quorvane
