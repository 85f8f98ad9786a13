#pragma once

#include "base/Date.h"
#include "base/Uuid.h"
#include "store/ActivityRecord.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace quorvane {
class ModelContext;
}

/// Records as comma-separated text: a header and 23 columns a record, lines joined by one line feed with none after the
/// last. It holds every record, billable or not, with all that is known of it; its column names are never translated.
namespace quorvane::CSVExporter {

/// Whole seconds between start and end, the rest cut off; 0 for an open record and one that ends before it starts.
[[nodiscard]] std::int64_t durationSeconds(const ActivityRecord& record);

/// The text of the records in the given order.
[[nodiscard]] std::string makeCSV(const std::vector<std::shared_ptr<ActivityRecord>>& records);

/// Which records an export holds.
struct Selection {
    Date start;                         ///< of the earliest `startTime`, inclusive
    Date end;                           ///< of the latest `startTime`, inclusive
    std::unordered_set<Uuid> projects;  ///< empty: all records; else those that have one of these projects
};

/// Takes the text piece by piece, and the number of records that are in it so far.
using Write = std::function<void(std::string_view piece, std::size_t records)>;

/// Writes what `makeCSV` would make of the selected records as they are stored, newest first and among equals the
/// smaller id first. Makes no objects of them, and memory does not follow their number. Throws `StoreError` and what
/// `write` throws.
void writeCSV(ModelContext& context, const Selection& selection, const Write& write);

/// The name that a save panel proposes: "Quorvane_Activities_2026-03-04_15-00-00.csv".
[[nodiscard]] std::string defaultFileName(Date now);

}  // namespace quorvane::CSVExporter
