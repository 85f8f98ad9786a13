#pragma once

#include "cloud/postgresql/PostgresConnection.h"
#include "platform/RecordContainer.h"

#include <string>

/// The statements about records. Each operator, function and type in them bears its schema, so that nothing that
/// somebody put into another one is taken for it.
namespace quorvane::postgresql::RecordStatements {

/// Version of the schema.
inline constexpr const char* version = "SELECT quorvane.version()";

/// Columns: may read (t or f), may write (the same), and whether the server takes no writes at all (on or off).
inline constexpr const char* rights =
    "SELECT pg_catalog.has_table_privilege('quorvane.private_records', 'SELECT'),"
    " pg_catalog.has_column_privilege('quorvane.private_records', 'fields', 'INSERT')"
    " AND pg_catalog.has_column_privilege('quorvane.private_records', 'fields', 'UPDATE'),"
    " pg_catalog.current_setting('transaction_read_only')";

/// $1 names, $2 types, $3 fields, each an array. Rows: the names that were saved. Keys that come replace, others stay;
/// a name that belongs to a record of another type is left alone and does not come back.
[[nodiscard]] const std::string& save(platform::DatabaseScope scope);

/// A page of a query, with its parameters. Rows: name, sort key, fields; newest first, and one more than the limit if
/// there is anything behind the page.
struct Page {
    std::string sql;
    Parameters parameters;
};
[[nodiscard]] Page page(platform::DatabaseScope scope, const platform::RecordQuery& query);

/// $1 type. One row.
[[nodiscard]] const std::string& count(platform::DatabaseScope scope);

/// $1 name. A row with type and fields, or none.
[[nodiscard]] const std::string& record(platform::DatabaseScope scope);

/// $1 name. A row, if there was such a record.
[[nodiscard]] const std::string& remove(platform::DatabaseScope scope);

}  // namespace quorvane::postgresql::RecordStatements
