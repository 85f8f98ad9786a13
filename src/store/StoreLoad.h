#pragma once

#include "store/Database.h"
#include "store/JsonLines.h"

#include <functional>
#include <istream>
#include <string>
#include <utility>
#include <vector>

/// Reads what `StoreDump` writes, or any part of it, into a store.
namespace quorvane::StoreLoad {

/// A line that can't be loaded.
using Error = JsonLines::Error;

/// How many rows of each entity came in: those that occurred, in the order of the schema.
using Counts = std::vector<std::pair<std::string, std::size_t>>;

/// Loads all lines in one transaction, or nothing and throws: `Error` for a bad line, `StoreError` when the store can't
/// be written. A row whose id is already there is replaced as a whole. What a line leaves out takes its default; of
/// these, all dates are one instant. References may lead to projects that follow later. Main thread only; `progress`
/// hears the number of each line.
[[nodiscard]] Counts read(Database& database, std::istream& input,
                          const std::function<void(std::size_t line)>& progress = {});

}  // namespace quorvane::StoreLoad
