#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quorvane {

/// What a page of HTML says: without its tags, one line for each paragraph and list item, no blank line, at most
/// `maximumBytes` (an ellipsis at the end stands for the rest). Text without tags keeps its lines.
[[nodiscard]] std::string plainText(std::string_view html, std::size_t maximumBytes);

}  // namespace quorvane
