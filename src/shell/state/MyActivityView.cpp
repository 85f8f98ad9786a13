#include "shell/state/MyActivityView.h"

#include "store/Project.h"
#include "store/ProjectTimeAnnotation.h"
#include "store/StoreError.h"

#include <utility>

namespace quorvane {

MyActivityView::MyActivityView(ModelContext& context, platform::RunLoop& runLoop, CategoryTagManager& categories,
                               ConsoleSink& console)
    : context_(context), runLoop_(runLoop), categories_(categories), console_(console), cutOff_(runLoop.now() - reach),
      chart_(context, runLoop, console) {
    chartChanged_ = chart_.changed.subscribe([this] { changed.send(); });
    projectsChanged_ = context_.didChange.subscribe([this](const EntityChange& change) {
        const auto* const entity = &change.entity->entityDescription();
        if (entity == &ProjectTimeAnnotation::description() || entity == &Project::description()) changeSoon();
    });
}

void MyActivityView::load() {
    if (std::exchange(isDataLoaded_, true)) return;
    try {
        const auto start = field(&ActivityRecord::startTime);
        allRecords_.emplace(context_, FetchDescriptor<ActivityRecord>{.predicate = start >= cutOff_,
                                                                      .sort = {descending(&ActivityRecord::startTime),
                                                                               ascending(&ActivityRecord::id)}});
        recordsChanged_ = allRecords_->didChange.subscribe([this](const QueryChange<ActivityRecord>&) { takeSoon(); });
    } catch (const StoreError& error) {
        console_.line("MyActivityView: Failed to fetch ActivityRecords: {}", error.what());
    }
    take();
    chart_.appear();
    changed.send();
}

void MyActivityView::refresh() {
    refreshTrigger_ = Uuid::random();
    try {
        if (allRecords_) allRecords_->refresh();
    } catch (const StoreError& error) {
        console_.line("MyActivityView: Failed to fetch ActivityRecords: {}", error.what());
    }
    take();
    changed.send();
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

void MyActivityView::take() {
    if (!allRecords_) return;
    records_.clear();
    for (const auto& record : allRecords_->results())
        records_.push_back(snapshotOf(*record));
    chart_.setRecords(allRecords_->results(), refreshTrigger_);
}

// Changes come one by one, a whole clean-up's at once: they are taken together in the loop's next turn.

void MyActivityView::takeSoon() {
    mustTake_ = true;
    changeSoon();
}

void MyActivityView::changeSoon() {
    if (std::exchange(isChangePosted_, true)) return;
    runLoop_.post([weak = weak_.handle()] {
        auto* self = weak.get();
        if (self == nullptr) return;
        self->isChangePosted_ = false;
        if (std::exchange(self->mustTake_, false)) self->take();
        self->changed.send();
    });
}

}  // namespace quorvane
