#pragma once

#include "store/Database.h"
#include "store/JsonForm.h"

#include <functional>
#include <string_view>

/// The whole store as JSON Lines: "entity" and every attribute of one row a line, after a first line that names the
/// version of the schema.
namespace quorvane::StoreDump {

/// Takes the text piece by piece, and the number of rows that are in it so far.
using Write = std::function<void(std::string_view piece, std::size_t rows)>;

/// Writes projects, settings, preferences, rules, annotations and shares in the order of their insertion, then the
/// records by start time and id: one moment of the store, whoever writes to it meanwhile. Memory does not follow the
/// number of rows. Throws `StoreError` and what `write` throws.
void write(Database& database, const Write& write);

/// The identifiers of all projects, to which references lead. Throws `StoreError`.
[[nodiscard]] JsonForm::RowIds projectIds(Database& database);

}  // namespace quorvane::StoreDump
