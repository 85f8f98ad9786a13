#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace quorvane {

/// A table of texts in a file, a row a line: "what goes in  =>  what comes out", with as many arrows as the table has
/// columns. The pictures of control characters stand for them: "␊" ends a line. Blank lines and those that begin with
/// "-- " are for the reader. Throws where there is no row.
[[nodiscard]] std::vector<std::vector<std::string>> textTable(const std::filesystem::path& file);

}  // namespace quorvane
