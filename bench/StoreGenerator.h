#pragma once

#include "base/Date.h"

#include <cstdint>
#include <filesystem>

namespace quorvane::bench {

/// What a generated store is like. The same values give the same rows.
struct StorePlan {
    std::int64_t records = 10'000;
    std::uint64_t seed = 1;
    Date end = dateFromSecondsSince1970(1'793'000'000);  ///< when the newest record ends
    int projects = 50;
    int recordsPerDay = 1000;
};

/// Writes a store of realistic days: bursts of short records between long stretches, nights and weekends left out,
/// titles, documents and pages in several scripts, a quarter of the time on projects, half of it reviewed. The file
/// must not exist. Throws `StoreError`.
void generateStore(const std::filesystem::path& file, const StorePlan& plan);

}  // namespace quorvane::bench
