#include "cli/RowChanges.h"

#include "cli/CommandContext.h"
#include "store/Schema.h"

#include <fmt/format.h>
#include <optional>

namespace quorvane::cli {
namespace {

using Values = std::vector<SqlValue>;

/// All columns of one row; none if there is no such row.
std::optional<Values> valuesOf(Database& database, const EntityDescription& entity, const std::string& sql,
                               std::int64_t rowId) {
    std::optional<Values> values;
    database.query(sql, {rowId}, [&](const Row& row) {
        values.emplace();
        for (std::size_t i = 0; i < entity.attributes.size(); ++i)
            values->push_back(row.value(static_cast<int>(i)));
        return false;
    });
    return values;
}

RowChanges compared(Database& before, Database& after, const EntityDescription& entity,
                    const std::set<std::int64_t>& rows) {
    const std::string sql = fmt::format("SELECT {} FROM {} WHERE pk = ?", Schema::columnList(entity), entity.table);
    RowChanges changes;
    for (const std::int64_t row : rows) {
        const auto old = valuesOf(before, entity, sql, row);
        if (!old) continue;
        const auto now = valuesOf(after, entity, sql, row);
        if (!now)
            ++changes.deleted;
        else if (*now != *old)
            ++changes.changed;
    }
    return changes;
}

}  // namespace

RowChanges rowChanges(const std::filesystem::path& file, ModelContext& context, const EntityDescription& entity,
                      const std::function<void()>& work) {
    std::set<std::int64_t> touched;
    const auto noting = context.didChange.subscribe([&](const EntityChange& change) {
        if (&change.entity->entityDescription() == &entity && change.entity->objectId() > 0)
            touched.insert(change.entity->objectId());
    });
    RowChanges changes;
    const auto before = openStore(file, StoreAccess::read);
    before->inSnapshot([&] {
        // A snapshot begins with its first reading; from there on, this connection sees the store as it is now.
        static_cast<void>(Schema::storedUserVersion(*before));
        work();
        changes = compared(*before, *openStore(file, StoreAccess::read), entity, touched);
    });
    return changes;
}

}  // namespace quorvane::cli
