#include "timeline/TimelineRecordSnapshot.h"

#include "base/Text.h"
#include "store/ActivityRecord.h"
#include "store/ModelContext.h"

#include <algorithm>
#include <tuple>

namespace quorvane {
namespace {

constexpr std::string_view unknownApp = "未知应用";

void append(std::vector<TimelineRecordSnapshot>& records, ModelContext& context,
            const Predicate<ActivityRecord>& predicate, const std::vector<SortOrder>& sort = {}) {
    const std::vector<std::string> columns{"id",           "start_time",    "end_time", "app_bundle_id", "app_name",
                                           "window_title", "document_path", "url",      "category",      "tags"};
    context.scan<ActivityRecord>({.predicate = predicate, .sort = sort}, columns, [&](const Row& row) {
        const auto text = [&](int column) {
            return row.isNull(column) ? std::nullopt : std::optional<std::string>(row.text(column));
        };
        records.push_back(
            {.id = ValueTraits<Uuid>::fromSql(row.value(0)),
             .startTime = dateFromMicroseconds(row.integer(1)),
             .endTime = row.isNull(2) ? std::nullopt : std::optional(dateFromMicroseconds(row.integer(2))),
             .bundleId = text(3),
             .appName = text(4),
             .windowTitle = text(5),
             .documentPath = text(6),
             .url = text(7),
             .category = text(8),
             .tags = std::string(row.text(9))});
        return true;
    });
}

void sortByStart(std::vector<TimelineRecordSnapshot>& records) {
    std::sort(records.begin(), records.end(),
              [](const auto& a, const auto& b) { return std::tie(a.startTime, a.id) < std::tie(b.startTime, b.id); });
}

}  // namespace

std::string TimelineRecordSnapshot::displayName() const {
    return appName.value_or(std::string(unknownApp));
}

bool TimelineRecordSnapshot::isLoginWindow() const {
    return text::lowercased(appName.value_or("")) == "loginwindow" || bundleId == "com.apple.loginwindow";
}

TimelineRecordSnapshot snapshotOf(const ActivityRecord& record) {
    return {.id = record.id(),
            .startTime = record.startTime(),
            .endTime = record.endTime(),
            .bundleId = record.appBundleId(),
            .appName = record.appName(),
            .windowTitle = record.windowTitle(),
            .documentPath = record.documentPath(),
            .url = record.url(),
            .category = record.category(),
            .tags = record.tags()};
}

std::vector<TimelineRecordSnapshot> recordsStartingIn(ModelContext& context, DateInterval range) {
    const auto start = field(&ActivityRecord::startTime);
    std::vector<TimelineRecordSnapshot> records;
    append(records, context, start >= range.start && start < range.end);
    sortByStart(records);
    return records;
}

std::vector<TimelineRecordSnapshot> recordsTouching(ModelContext& context, DateInterval range) {
    const auto start = field(&ActivityRecord::startTime);
    const auto end = field(&ActivityRecord::endTime);
    std::vector<TimelineRecordSnapshot> records;
    append(records, context, start >= range.start && start < range.end);
    // What began earlier and reaches in is found by its end: a short way for days that people look at, some tenths of a
    // second for one of ten years ago.
    append(records, context, end > range.start && start.unindexed() < range.start,
           {ascending(&ActivityRecord::endTime)});
    append(records, context, end.isNone() && start.unindexed() < range.start);
    sortByStart(records);
    return records;
}

}  // namespace quorvane
