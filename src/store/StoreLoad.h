#pragma once

#include "store/Database.h"

#include <functional>
#include <istream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

/// Reads what `StoreDump` writes, or any part of it, into a store.
namespace quorvane::StoreLoad {

/// A line that can't be loaded; `what()` is one line that begins with its number.
class Error : public std::runtime_error {
public:
    Error(std::size_t line, const std::string& cause);
    [[nodiscard]] std::size_t line() const { return line_; }

private:
    std::size_t line_;
};

/// How many rows of each entity came in: those that occurred, in the order of the schema.
using Counts = std::vector<std::pair<std::string, std::size_t>>;

/// Loads all lines in one transaction, or nothing and throws: `Error` for a bad line, `StoreError` when the store can't
/// be written. A row whose id is already there is replaced as a whole. What a line leaves out takes its default; of
/// these, all dates are one instant. References may lead to projects that follow later. Main thread only; `progress`
/// hears the number of each line.
[[nodiscard]] Counts read(Database& database, std::istream& input,
                          const std::function<void(std::size_t line)>& progress = {});

}  // namespace quorvane::StoreLoad
