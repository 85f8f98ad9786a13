#include "shell/state/MyActivityView.h"

#include "store/Project.h"
#include "store/ProjectTimeAnnotation.h"
#include "store/StoreError.h"
#include "timeline/TimelineCalendar.h"

#include <utility>

namespace quorvane {

namespace {

constexpr std::size_t many = 5000;  // some megabytes

DateInterval rangeOf(TimelineViewMode mode, Date date) {
    switch (mode) {
    case TimelineViewMode::day: break;
    case TimelineViewMode::week: return timelineCalendar().week(date);
    case TimelineViewMode::month: return Calendar::current().month(date);
    }
    return Calendar::current().day(date);
}

}  // namespace

MyActivityView::MyActivityView(ModelContainer& store, platform::RunLoop& runLoop, CategoryTagManager& categories,
                               ConsoleSink& console)
    : context_(store.mainContext()), runLoop_(runLoop), categories_(categories), console_(console),
      chart_(context_, runLoop, console), records_(store, runLoop, console) {
    recordsChanged_ = records_.changed.subscribe([this] { take(); });
    chartChanged_ = chart_.changed.subscribe([this] {
        if (hasBegun_) goWhereTheChartIs();
        changed.send();
    });
    projectsChanged_ = context_.didChange.subscribe([this](const EntityChange& change) {
        const auto* const entity = &change.entity->entityDescription();
        if (entity == &ProjectTimeAnnotation::description() || entity == &Project::description()) changeSoon();
    });
}

void MyActivityView::load() {
    if (!std::exchange(hasBegun_, true)) goWhereTheChartIs();
}

void MyActivityView::refresh() {
    records_.refresh();
}

void MyActivityView::goWhereTheChartIs() {
    const auto mode = chart_.currentViewMode();
    const auto range = rangeOf(mode, chart_.selectedDate());
    const auto detail = mode == TimelineViewMode::day ? RecordDetail::whole : RecordDetail::overview;
    if (records_.range() == range) return;
    hasLeftMany_ = hasLeftMany_ || records().size() > many;
    isLate_ = false;
    late_ = runLoop_.after(patience, [this] {
        isLate_ = true;
        changed.send();
    });
    records_.show(range, detail);
}

/// What has been read, and what changes from then on.
void MyActivityView::take() {
    late_.reset();
    isLate_ = false;
    if (state() == LiveRecords::State::read && chart_.currentViewMode() == TimelineViewMode::day)
        chart_.setRecords(records(), *records_.range());
    if (!std::exchange(isDataLoaded_, true)) chart_.appear();
    changed.send();
    if (std::exchange(hasLeftMany_, false)) leftMany.send();
}

std::vector<TimelineAnnotation> MyActivityView::annotations(DateInterval range) {
    try {
        return annotationsTouching(context_, range);
    } catch (const StoreError& error) {
        console_.line("MyActivityView: Failed to fetch ProjectTimeAnnotations: {}", error.what());
        return {};
    }
}

std::unique_ptr<CategoryPickerState> MyActivityView::categoryPicker(const ProcessedActivityItem& item) {
    try {
        const auto found =
            context_.fetch<ActivityRecord>({.predicate = field(&ActivityRecord::id) == item.id, .limit = 1});
        if (!found.empty()) return std::make_unique<CategoryPickerState>(found.front(), categories_, console_);
    } catch (const StoreError& error) {
        console_.line("Failed to fetch ActivityRecord: {}", error.what());
    }
    return nullptr;
}

/// A save changes one attribute after the other: they are told of together, in the loop's next turn.
void MyActivityView::changeSoon() {
    if (std::exchange(isChangePosted_, true)) return;
    runLoop_.post([weak = weak_.handle()] {
        auto* self = weak.get();
        if (self == nullptr) return;
        self->isChangePosted_ = false;
        self->changed.send();
    });
}

}  // namespace quorvane
