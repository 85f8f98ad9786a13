#pragma once

#include "cloud/postgresql/PostgresConnection.h"

#include <optional>
#include <string>
#include <vector>

/// Looks whether a cloud database is as it should be, with the eyes of one user. Throws `PostgresError` where a
/// connection fails.
namespace quorvane::postgresql::CloudInspection {

/// Who talks to whom.
struct Description {
    std::string host;  ///< name, address or folder of the socket
    std::string database;
    std::string serverVersion;  ///< "15.18"
    std::string tls;            ///< "TLSv1.3"; empty: not encrypted
    std::string role;
    std::optional<std::string> unboundBecause;  ///< why row-level security does not bind the role; none: it does
    std::optional<int> schemaVersion;           ///< none: not installed, or not for this role
};

[[nodiscard]] Description describe(PostgresConnection& connection);

/// One line for each thing that is not as it should be; empty if all is well. Looks at the role, the encryption, the
/// schema's version, tables, policies and grants, and takes a record of each database there and back, of which nothing
/// stays behind.
[[nodiscard]] std::vector<std::string> findings(PostgresConnection& connection, const Description& description);

}  // namespace quorvane::postgresql::CloudInspection
