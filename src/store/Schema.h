#pragma once

#include <cstdint>
#include <string>

namespace quorvane {

class Database;
struct EntityDescription;

namespace Schema {

/// The version that dumps name.
inline constexpr const char* version = "1.0.0";

/// Marks the file as ours (SQLite's application_id): the letters "Quor".
inline constexpr std::int32_t applicationId = 0x51756F72;

/// SQLite's user_version. A higher one in a file means a newer program wrote it.
inline constexpr std::int32_t userVersion = 1;

/// Beside the entities, the trash and the absences: what the program notes of the file itself, texts by their key.
/// Dumps leave out all three.
inline constexpr const char* noteTable = "store_note";

/// Makes what is missing: tables, columns of an older file with their defaults, indexes. In one transaction.
void ensure(Database& database);

/// The two numbers as the file has them.
[[nodiscard]] std::int64_t storedApplicationId(Database& database);
[[nodiscard]] std::int64_t storedUserVersion(Database& database);

/// Does the file already hold all of it?
[[nodiscard]] bool isComplete(Database& database);

/// Does the file hold a table of ours? A new one doesn't yet.
[[nodiscard]] bool hasTables(Database& database);

/// "id, start_time, ..." with a reference's column as the row of its target.
[[nodiscard]] std::string columnList(const EntityDescription& entity);

}  // namespace Schema
}  // namespace quorvane
