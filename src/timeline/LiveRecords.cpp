#include "timeline/LiveRecords.h"

#include "platform/InBackground.h"
#include "store/ActivityRecord.h"

#include <algorithm>
#include <tuple>
#include <unordered_map>
#include <utility>

namespace quorvane {
namespace {

/// With one unchanging view of the file, so that a record that is being moved is read once.
std::vector<TimelineRecordSnapshot> recordsOfFile(const ModelConfiguration& reading, DateInterval range,
                                                  RecordDetail detail, const std::stop_token& stop) {
    std::vector<TimelineRecordSnapshot> records;
    if (stop.stop_requested()) return records;
    auto database = std::make_unique<Database>(reading);
    auto& file = *database;
    ModelContext context(std::move(database));
    file.inSnapshot([&] { records = recordsTouching(context, range, detail, stop); });
    return records;
}

bool isEarlier(const TimelineRecordSnapshot& a, const TimelineRecordSnapshot& b) {
    return std::tie(a.startTime, a.id) < std::tie(b.startTime, b.id);
}

}  // namespace

LiveRecords::LiveRecords(ModelContainer& store, platform::RunLoop& runLoop, ConsoleSink& console)
    : context_(store.mainContext()), runLoop_(runLoop), console_(console), reading_(store.configuration()) {
    reading_.allowsSave = false;
    contextChanged_ = context_.didChange.subscribe([this](const EntityChange& change) { follow(change); });
}

LiveRecords::~LiveRecords() {
    running_.request_stop();
}

void LiveRecords::show(DateInterval range, RecordDetail detail) {
    if (range_ == range && detail_ == detail) return;
    range_ = range;
    detail_ = detail;
    records_ = {};  // before the next ones come: there are never two ranges
    state_ = State::reading;
    read();
}

void LiveRecords::refresh() {
    if (range_) read();
}

void LiveRecords::read() {
    running_.request_stop();
    running_ = std::stop_source();
    isReading_ = true;
    changed_.clear();
    // Asked here and not on the worker: whoever calls it off does so on this thread.
    const auto waiting = [weak = weak_.handle(), stop = running_.get_token()] {
        return stop.stop_requested() ? nullptr : weak.get();
    };
    try {
        context_.save();  // the worker reads what is stored
    } catch (const StoreError&) {
        return runLoop_.post([waiting] {  // this thread sees what could not be saved
            if (auto* self = waiting())
                self->take([self] { return recordsTouching(self->context_, *self->range_, self->detail_); });
        });
    }
    platform::inBackground(
        runLoop_,
        [reading = reading_, range = *range_, detail = detail_, stop = running_.get_token()] {
            return recordsOfFile(reading, range, detail, stop);
        },
        [waiting](std::future<Records> records) {
            if (auto* self = waiting()) self->take([&] { return records.get(); });
        });
}

void LiveRecords::take(const std::function<Records()>& records) {
    isReading_ = false;
    try {
        records_ = records();
        failure_.clear();
        state_ = State::read;
    } catch (const StoreError& error) {
        failure_ = error.what();
        if (state_ == State::reading) state_ = State::failed;
        console_.line("MyActivityView: Failed to fetch ActivityRecords: {}", failure_);
    }
    merge();
    changed.send();
}

// Changes come one by one, a whole clean-up's at once: they are merged together in the loop's next turn, or into what
// is being read.

void LiveRecords::follow(const EntityChange& change) {
    if (!range_ || &change.entity->entityDescription() != &ActivityRecord::description()) return;
    changed_.insert(change.entity);
    if (std::exchange(isMergePosted_, true)) return;
    runLoop_.post([weak = weak_.handle()] {
        auto* self = weak.get();
        if (self == nullptr) return;
        self->isMergePosted_ = false;
        if (!self->isReading_ && self->merge()) self->changed.send();
    });
}

/// Says whether anything is other than before.
bool LiveRecords::merge() {
    std::unordered_map<Uuid, std::optional<TimelineRecordSnapshot>> present;  // none for what is not in the range
    for (const auto& entity : std::exchange(changed_, {})) {
        auto record = snapshotOf(static_cast<const ActivityRecord&>(*entity), detail_);
        const Uuid id = record.id;
        const bool isIn = !entity->isDeleted() && touches(record, *range_);
        present[id] = isIn ? std::optional(std::move(record)) : std::nullopt;
    }
    if (present.empty()) return false;
    bool differs = std::erase_if(records_, [&](const TimelineRecordSnapshot& old) {
                       const auto found = present.find(old.id);
                       if (found == present.end()) return false;
                       if (found->second != old) return true;
                       present.erase(found);
                       return false;
                   }) > 0;
    const auto kept = std::ssize(records_);
    for (auto& [id, record] : present)
        if (record) records_.push_back(*std::move(record));
    std::sort(records_.begin() + kept, records_.end(), isEarlier);
    std::inplace_merge(records_.begin(), records_.begin() + kept, records_.end(), isEarlier);
    return differs || std::ssize(records_) > kept;
}

}  // namespace quorvane
