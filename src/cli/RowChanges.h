#pragma once

#include "store/ModelContext.h"

#include <cstddef>
#include <functional>
#include <set>

namespace quorvane::cli {

/// How many rows of an entity a piece of work took away or left with another value in any column.
struct RowChanges {
    std::size_t deleted = 0;
    std::size_t changed = 0;
};

/// Runs the work on the context and compares the rows that it touched, as they are stored afterwards, with how they
/// were stored before. `file` is the context's own. What is inserted meanwhile does not count. Throws `StoreError`, and
/// what the work throws.
[[nodiscard]] RowChanges rowChanges(const std::filesystem::path& file, ModelContext& context,
                                    const EntityDescription& entity, const std::function<void()>& work);

}  // namespace quorvane::cli
