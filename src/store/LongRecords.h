#pragma once

#include "store/ActivityRecord.h"
#include "store/Predicate.h"

#include <string_view>

/// Records that last longer than a day: there are hardly any, and an index of their own finds them. So whoever asks
/// what reaches into a range looks for all others in the day before it alone.
namespace quorvane::LongRecords {

inline constexpr Seconds day{86400};
inline constexpr std::string_view sql = "end_time - start_time > 86400000000";

/// Those of them. What they are sorted by should be none or the end, which their index is in the order of.
[[nodiscard]] Predicate<ActivityRecord> all();

}  // namespace quorvane::LongRecords
