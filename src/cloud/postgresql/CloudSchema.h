#pragma once

#include "cloud/postgresql/Migrations.h"
#include "cloud/postgresql/PostgresConnection.h"

#include <optional>
#include <string>
#include <vector>

/// Installs the schema of the cloud database. Works as the database's owner; users never do it. All of it throws
/// `PostgresError`, and `platform::CloudFailure` in clear words where the role or the database is the wrong one.
namespace quorvane::postgresql::CloudSchema {

/// Version of the schema; 0: there is none. Throws if the role may not use the schema.
[[nodiscard]] int version(PostgresConnection& connection);

/// Takes all steps that are missing, each in one transaction, and gives the version that was there before. Of two who
/// do it at once each finds it done in the end. Refuses a newer schema than this program knows.
int migrate(PostgresConnection& connection);

/// May these roles be made users? None: yes; else why not, for the first that may not: there is no such role, or one
/// that the policies don't bind.
[[nodiscard]] std::optional<std::string> objection(PostgresConnection& connection,
                                                   const std::vector<std::string>& roles);

/// Makes existing roles members of quorvane_user; that they are already is fine.
void addUsers(PostgresConnection& connection, const std::vector<std::string>& roles);

/// The same as `migrate` and `addUsers` for those who would rather read it first: input for psql, on any version.
[[nodiscard]] std::string script(const std::vector<std::string>& roles);

}  // namespace quorvane::postgresql::CloudSchema
