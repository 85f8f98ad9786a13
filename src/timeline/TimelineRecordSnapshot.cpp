#include "timeline/TimelineRecordSnapshot.h"

#include "base/Text.h"
#include "store/ActivityRecord.h"
#include "store/LongRecords.h"
#include "store/ModelContext.h"
#include "store/StoredNames.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <tuple>

namespace quorvane {
namespace {

const std::vector<std::string>& columnsOf(RecordDetail detail) {
    static const std::vector<std::string> overview{"id", "start_time", "end_time", "app_bundle_id", "app_name"};
    static const std::vector<std::string> whole{"id",       "start_time",   "end_time",      "app_bundle_id",
                                                "app_name", "window_title", "document_path", "url",
                                                "category", "tags"};
    return detail == RecordDetail::whole ? whole : overview;
}

/// Without a copy on the heap for each of many rows.
Uuid uuidOf(std::string_view bytes) {
    std::array<std::uint8_t, 16> copy{};
    if (bytes.size() == copy.size()) std::ranges::copy(bytes, copy.begin());
    return Uuid(copy);
}

TimelineRecordSnapshot read(const Row& row, RecordDetail detail) {
    const auto text = [&](int column) {
        return row.isNull(column) ? std::nullopt : std::optional<std::string>(row.text(column));
    };
    TimelineRecordSnapshot record{.id = uuidOf(row.blob(0)),
                                  .startTime = dateFromMicroseconds(row.integer(1)),
                                  .endTime = row.isNull(2) ? std::nullopt
                                                           : std::optional(dateFromMicroseconds(row.integer(2))),
                                  .bundleId = text(3),
                                  .appName = text(4)};
    if (detail == RecordDetail::overview) return record;
    record.windowTitle = text(5);
    record.documentPath = text(6);
    record.url = text(7);
    record.category = text(8);
    record.tags = row.text(9);
    return record;
}

/// Records that come in the order of an index, as values.
class Reading {
public:
    Reading(ModelContext& context, RecordDetail detail, const std::stop_token& stop)
        : context_(context), detail_(detail), stop_(stop) {}

    void append(const FetchDescriptor<ActivityRecord>& descriptor, const std::optional<DateInterval>& touched = {}) {
        const auto keep = [&](TimelineRecordSnapshot&& record) {
            if (!touched || touches(record, *touched)) records_.push_back(std::move(record));
        };
        if (context_.hasChanges()) {  // then rows don't tell all
            for (const auto& record : context_.fetch(descriptor))
                keep(snapshotOf(*record, detail_));
            return;
        }
        // Counting asks the index alone and costs less than moving what has been read to a larger place.
        records_.reserve(records_.size() + context_.count<ActivityRecord>(descriptor.predicate));
        context_.scan(descriptor, columnsOf(detail_), [&](const Row& row) {
            keep(read(row, detail_));
            return !stop_.stop_requested();
        });
    }

    /// By start, among equals by id. They mostly come so, and moving them costs more than looking.
    std::vector<TimelineRecordSnapshot> sorted() && {
        const auto isEarlier = [](const auto& a, const auto& b) {
            return std::tie(a.startTime, a.id) < std::tie(b.startTime, b.id);
        };
        if (!std::ranges::is_sorted(records_, isEarlier)) std::ranges::sort(records_, isEarlier);
        return std::move(records_);
    }

private:
    ModelContext& context_;
    RecordDetail detail_;
    std::stop_token stop_;
    std::vector<TimelineRecordSnapshot> records_;
};

}  // namespace

std::string TimelineRecordSnapshot::displayName() const {
    return appName.value_or(std::string(StoredNames::unknownApp));
}

bool TimelineRecordSnapshot::isLoginWindow() const {
    constexpr std::string_view name = "loginwindow";
    // Lower case is asked for where the length allows it alone: a month has tens of thousands of names.
    return (appName && appName->size() == name.size() && text::lowercased(*appName) == name) ||
           bundleId == "com.apple.loginwindow";
}

TimelineRecordSnapshot snapshotOf(const ActivityRecord& record, RecordDetail detail) {
    TimelineRecordSnapshot copy{.id = record.id(),
                                .startTime = record.startTime(),
                                .endTime = record.endTime(),
                                .bundleId = record.appBundleId(),
                                .appName = record.appName()};
    if (detail == RecordDetail::overview) return copy;
    copy.windowTitle = record.windowTitle();
    copy.documentPath = record.documentPath();
    copy.url = record.url();
    copy.category = record.category();
    copy.tags = record.tags();
    return copy;
}

bool touches(const TimelineRecordSnapshot& record, DateInterval range) {
    return record.startTime < range.end &&
           (record.startTime >= range.start || !record.endTime || *record.endTime > range.start);
}

std::vector<TimelineRecordSnapshot> recordsStartingIn(ModelContext& context, DateInterval range) {
    const auto start = field(&ActivityRecord::startTime);
    Reading reading(context, RecordDetail::whole, {});
    reading.append(
        {.predicate = start >= range.start && start < range.end, .sort = {ascending(&ActivityRecord::startTime)}});
    return std::move(reading).sorted();
}

std::vector<TimelineRecordSnapshot> recordsTouching(ModelContext& context, DateInterval range, RecordDetail detail,
                                                    const std::stop_token& stop) {
    const auto start = field(&ActivityRecord::startTime);
    const auto end = field(&ActivityRecord::endTime);
    // What reaches in has begun in the day before, or is one of the few that last longer, or is open.
    const Date dayBefore = range.start - LongRecords::day;
    const auto beganEarlier = start.unindexed() < dayBefore;
    Reading reading(context, detail, stop);
    reading.append({.predicate = LongRecords::all() && end > range.start && beganEarlier,
                    .sort = {ascending(&ActivityRecord::endTime)}});
    reading.append({.predicate = end.isNone() && beganEarlier});
    reading.append(
        {.predicate = start >= dayBefore && start < range.end, .sort = {ascending(&ActivityRecord::startTime)}}, range);
    return std::move(reading).sorted();
}

}  // namespace quorvane
