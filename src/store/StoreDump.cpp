#include "store/StoreDump.h"

#include "store/ActivityRecord.h"
#include "store/ActivityShare.h"
#include "store/AppPreference.h"
#include "store/AppSettings.h"
#include "store/Project.h"
#include "store/ProjectTimeAnnotation.h"
#include "store/Rule.h"
#include "store/Schema.h"

#include <array>
#include <fmt/format.h>

namespace quorvane::StoreDump {
namespace {

constexpr std::size_t pieceSize = 1 << 16;

struct Section {
    const EntityDescription& entity;
    std::string_view order;
};

/// Projects stand first, so that whoever reads line by line knows what the others refer to.
std::array<Section, 7> sections() {
    return {{{Project::description(), "pk"},
             {AppSettings::description(), "pk"},
             {AppPreference::description(), "pk"},
             {Rule::description(), "pk"},
             {ProjectTimeAnnotation::description(), "pk"},
             {ActivityShare::description(), "pk"},
             {ActivityRecord::description(), "start_time, id, pk"}}};
}

}  // namespace

JsonForm::RowIds projectIds(Database& database) {
    JsonForm::RowIds ids;
    database.query("SELECT pk, id FROM project", {}, [&](const Row& row) {
        ids.emplace(row.integer(0), ValueTraits<Uuid>::fromSql(row.value(1)));
        return true;
    });
    return ids;
}

void write(Database& database, const Write& write) {
    std::string piece = fmt::format("{{\"entity\":\"Schema\",\"version\":\"{}\"}}\n", Schema::version);
    std::size_t rows = 0;
    database.inSnapshot([&] {
        const auto targets = projectIds(database);
        for (const auto& [entity, order] : sections()) {
            const std::string sql =
                fmt::format("SELECT {} FROM {} ORDER BY {}", Schema::columnList(entity), entity.table, order);
            database.query(sql, {}, [&, &described = entity](const Row& row) {
                JsonForm::appendObject(piece, described, row, targets);
                piece += '\n';
                ++rows;
                if (piece.size() < pieceSize) return true;
                write(piece, rows);
                piece.clear();
                return true;
            });
        }
    });
    write(piece, rows);
}

}  // namespace quorvane::StoreDump
