#pragma once

#include <string>

namespace quorvane {

/// What python3 finds in the bytes of a single gzip member, and `gzip -t` finds nothing wrong with; "?" if they are
/// none.
[[nodiscard]] std::string unpacked(const std::string& member);

}  // namespace quorvane
