#pragma once

#include "cloud/module/CloudAdministration.h"
#include "cloud/postgresql/PostgresConnection.h"

#include <string>
#include <vector>

/// Looks whether a cloud database is as it should be, with the eyes of one user. Throws `PostgresError` where a
/// connection fails.
namespace quorvane::postgresql::CloudInspection {

[[nodiscard]] CloudDescription describe(PostgresConnection& connection);

/// One line for each thing that is not as it should be; empty if all is well. Looks at the role, the encryption, the
/// schema's version, tables, policies and grants, and takes a record of each database there and back, of which nothing
/// stays behind.
[[nodiscard]] std::vector<std::string> findings(PostgresConnection& connection, const CloudDescription& description);

}  // namespace quorvane::postgresql::CloudInspection
