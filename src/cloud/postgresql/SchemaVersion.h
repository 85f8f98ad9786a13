#pragma once

namespace quorvane::postgresql {

/// Number of the newest migration: what `quorvane.version()` must answer.
inline constexpr int schemaVersion = 2;

}  // namespace quorvane::postgresql
