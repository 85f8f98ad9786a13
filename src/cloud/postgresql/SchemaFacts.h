#pragma once

#include "cloud/postgresql/PostgresConnection.h"

#include <map>
#include <string>
#include <vector>

/// What a server's catalogue says of the schema, compared with what our migrations leave behind: an administrator may
/// have loosened what keeps users apart, or taken away what they need.
namespace quorvane::postgresql::SchemaFacts {

/// Things by their name, such as "policy own of private_records", and how they are.
using Facts = std::map<std::string, std::string>;

/// Of the newest version.
[[nodiscard]] const Facts& expected();

/// Everybody may ask who may connect. The schema may be missing.
[[nodiscard]] Facts read(PostgresConnection& connection);

/// One line for each difference: what is missing, what has been changed, what is not meant to be there.
[[nodiscard]] std::vector<std::string> differences(const Facts& meant, const Facts& found);

}  // namespace quorvane::postgresql::SchemaFacts
