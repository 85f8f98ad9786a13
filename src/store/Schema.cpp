#include "store/Schema.h"

#include "base/Text.h"
#include "store/Absence.h"
#include "store/Database.h"
#include "store/EntityDescription.h"
#include "store/TrashedRecord.h"

#include <algorithm>
#include <fmt/format.h>
#include <set>

namespace quorvane::Schema {
namespace {

std::string_view sqlType(AttributeKind kind) {
    switch (kind) {
    case AttributeKind::uuid: return "BLOB";
    case AttributeKind::text:
    case AttributeKind::uuidList: return "TEXT";
    case AttributeKind::real: return "REAL";
    case AttributeKind::date:
    case AttributeKind::integer:
    case AttributeKind::boolean:
    case AttributeKind::reference: return "INTEGER";
    }
    return "BLOB";
}

std::string columnDefinition(const AttributeDescription& attribute) {
    std::string out = fmt::format("{} {}", attribute.column(), sqlType(attribute.kind));
    if (attribute.kind == AttributeKind::reference)
        out += fmt::format(" REFERENCES {}(pk) ON DELETE SET NULL", attribute.target().table);
    else if (!attribute.isOptional)
        out += " NOT NULL";
    return out;
}

std::string createTable(const EntityDescription& entity) {
    // AUTOINCREMENT: a row that another program removed must never come back as somebody else's.
    std::vector<std::string> columns{"pk INTEGER PRIMARY KEY AUTOINCREMENT"};
    for (const auto& attribute : entity.attributes)
        columns.push_back(columnDefinition(attribute));
    return fmt::format("CREATE TABLE {} ({}) STRICT", entity.table, text::joined(columns, ", "));
}

std::string indexName(const EntityDescription& entity, const std::vector<std::string>& columns) {
    return fmt::format("{}_by_{}", entity.table, text::joined(columns, "_and_"));
}

/// An index of a relationship leaves out the rows that lead nowhere: nobody looks them up by it, and a new record,
/// which rarely has a project, then writes a page less.
std::string createIndex(const EntityDescription& entity, const std::vector<std::string>& columns) {
    const bool isOfReference =
        std::any_of(entity.attributes.begin(), entity.attributes.end(), [&](const auto& attribute) {
            return attribute.kind == AttributeKind::reference && attribute.column() == columns.front();
        });
    return fmt::format("CREATE INDEX IF NOT EXISTS {} ON {} ({}){}", indexName(entity, columns), entity.table,
                       text::joined(columns, ", "),
                       isOfReference ? fmt::format(" WHERE {} IS NOT NULL", columns.front()) : std::string());
}

std::set<std::string> names(Database& database, const std::string& sql) {
    std::set<std::string> found;
    database.query(sql, {}, [&](const Row& row) {
        found.emplace(row.text(0));
        return true;
    });
    return found;
}

std::int64_t number(Database& database, const std::string& sql) {
    std::int64_t found = 0;
    database.query(sql, {}, [&](const Row& row) {
        found = row.integer(0);
        return false;
    });
    return found;
}

std::set<std::string> columnsOf(Database& database, const EntityDescription& entity) {
    return names(database, fmt::format("SELECT name FROM pragma_table_info('{}')", entity.table));
}

/// A literal for a column's default. Identifiers are filled in afterwards, a fresh one for each row.
std::string literal(const SqlValue& value) {
    if (const auto* integer = std::get_if<std::int64_t>(&value)) return std::to_string(*integer);
    if (const auto* real = std::get_if<double>(&value)) return text::shortest(*real);
    if (const auto* held = std::get_if<std::string>(&value)) {
        std::string quoted = "'";
        for (const char c : *held)
            quoted += c == '\'' ? std::string("''") : std::string(1, c);
        return quoted + "'";
    }
    return "x''";
}

void addColumn(Database& database, const EntityDescription& entity, const AttributeDescription& attribute) {
    const SqlValue initial = attribute.get(*entity.make());
    std::string definition = columnDefinition(attribute);
    if (!isNull(initial)) definition += " DEFAULT " + literal(initial);
    database.execute(fmt::format("ALTER TABLE {} ADD COLUMN {}", entity.table, definition));
    if (attribute.kind == AttributeKind::uuid)
        database.execute(fmt::format("UPDATE {} SET {} = randomblob(16)", entity.table, attribute.column()));
}

/// The entities that dumps have, the trash and the absences.
std::vector<const EntityDescription*> tables() {
    auto all = allEntities();
    all.push_back(&TrashedRecord::description());
    all.push_back(&Absence::description());
    return all;
}

}  // namespace

std::string columnList(const EntityDescription& entity) {
    std::vector<std::string> columns;
    for (const auto& attribute : entity.attributes)
        columns.push_back(attribute.column());
    return text::joined(columns, ", ");
}

std::int64_t storedApplicationId(Database& database) {
    return number(database, "PRAGMA application_id");
}

std::int64_t storedUserVersion(Database& database) {
    return number(database, "PRAGMA user_version");
}

bool isComplete(Database& database) {
    const auto objects = names(database, "SELECT name FROM sqlite_schema");
    for (const auto* entity : tables()) {
        if (!objects.contains(entity->table)) return false;
        for (const auto& index : entity->indexes)
            if (!objects.contains(indexName(*entity, index))) return false;
        for (const auto& index : entity->partialIndexes)
            if (!objects.contains(index.name)) return false;
        const auto columns = columnsOf(database, *entity);
        for (const auto& attribute : entity->attributes)
            if (!columns.contains(attribute.column())) return false;
    }
    return objects.contains(noteTable);
}

bool hasTables(Database& database) {
    const auto objects = names(database, "SELECT name FROM sqlite_schema");
    const auto all = tables();
    return std::any_of(all.begin(), all.end(), [&](const auto* entity) { return objects.contains(entity->table); });
}

void ensure(Database& database) {
    database.inTransaction([&] {
        const auto objects = names(database, "SELECT name FROM sqlite_schema");
        for (const auto* entity : tables()) {
            if (!objects.contains(entity->table)) {
                database.execute(createTable(*entity));
            } else {
                const auto columns = columnsOf(database, *entity);
                for (const auto& attribute : entity->attributes)
                    if (!columns.contains(attribute.column())) addColumn(database, *entity, attribute);
            }
            for (const auto& index : entity->indexes)
                database.execute(createIndex(*entity, index));
            for (const auto& index : entity->partialIndexes)
                database.execute(fmt::format("CREATE INDEX IF NOT EXISTS {} ON {} ({}) WHERE {}", index.name,
                                             entity->table, text::joined(index.columns, ", "), index.condition));
        }
        database.execute(fmt::format(
            "CREATE TABLE IF NOT EXISTS {} (key TEXT PRIMARY KEY, value TEXT NOT NULL) STRICT, WITHOUT ROWID",
            noteTable));
        database.execute(fmt::format("PRAGMA user_version = {}", userVersion));
    });
}

}  // namespace quorvane::Schema
