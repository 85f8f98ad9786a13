#pragma once

#include "cloud/postgresql/PostgresConnection.h"
#include "platform/RecordContainer.h"

#include <vector>

namespace quorvane::postgresql {

/// Saves records as `RecordSession::modify` promises: in one statement, and one by one only if the server blames some
/// of them. Throws `PostgresError` for what concerns them all.
[[nodiscard]] std::vector<platform::SaveResult> upload(PostgresConnection& connection, platform::DatabaseScope scope,
                                                       const std::vector<platform::CloudRecord>& records);

}  // namespace quorvane::postgresql
