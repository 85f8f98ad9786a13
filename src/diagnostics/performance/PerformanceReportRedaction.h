#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Keeps the user out of call stacks.
namespace quorvane::PerformanceReportRedaction {

/// The stacks (UTF-8) with the home directory as "~", and with "_" for the name in any other home: "/Users/_",
/// "/home/_", which also stands for "/root". `homeDirectory` may be empty, may be "/", and may end in a slash. What is
/// redacted stays as it is when it is redacted again.
[[nodiscard]] std::string redact(std::string_view stacks, std::string_view homeDirectory);

/// At most `limit` bytes: the text itself or its beginning, cut between two characters, and a line that says so. A
/// limit that is shorter than that line leaves the line alone.
[[nodiscard]] std::string truncate(std::string_view text, std::size_t limit);

}  // namespace quorvane::PerformanceReportRedaction
