#include "cloud/postgresql/RecordStatements.h"

#include "cloud/postgresql/RecordJson.h"

#include <fmt/format.h>
#include <string_view>

namespace quorvane::postgresql::RecordStatements {

namespace {

struct Statements {
    std::string save;
    std::string page;  ///< up to its conditions
    std::string count;
    std::string record;
    std::string remove;
};

/// `own` confines statements to the user's own rows, also for a role that no policy holds: a superuser or the owner of
/// the tables would otherwise get everybody's.
Statements statements(std::string_view table, std::string_view conflictTarget, std::string_view own) {
    const std::string ofType = fmt::format("WHERE record_type OPERATOR(pg_catalog.=) $1::pg_catalog.text{}", own);
    const std::string named = fmt::format("WHERE record_name OPERATOR(pg_catalog.=) $1::pg_catalog.text{}", own);
    return {
        // With several arguments `unnest` is part of the language and no function that could be shadowed.
        .save =
            fmt::format("INSERT INTO {} AS t (record_name, record_type, fields) SELECT r.n, r.y, r.f FROM "
                        "unnest($1::pg_catalog.text[], $2::pg_catalog.text[], $3::pg_catalog.jsonb[]) AS r(n, y, f) "
                        "ON CONFLICT ({}) DO UPDATE SET fields = t.fields OPERATOR(pg_catalog.||) excluded.fields "
                        "WHERE t.record_type OPERATOR(pg_catalog.=) excluded.record_type RETURNING record_name",
                        table, conflictTarget),
        .page = fmt::format("SELECT record_name, sort_key, fields FROM {} {}", table, ofType),
        .count = fmt::format("SELECT pg_catalog.count(*) FROM {} {}", table, ofType),
        .record = fmt::format("SELECT record_type, fields FROM {} {}", table, named),
        .remove = fmt::format("DELETE FROM {} {} RETURNING record_name", table, named),
    };
}

const Statements& of(platform::DatabaseScope scope) {
    static const Statements privateData =
        statements("quorvane.private_records", "owner, record_name", " AND owner OPERATOR(pg_catalog.=) CURRENT_USER");
    static const Statements publicData = statements("quorvane.public_records", "record_name", "");
    return scope == platform::DatabaseScope::privateData ? privateData : publicData;
}

}  // namespace

Page page(platform::DatabaseScope scope, const platform::RecordQuery& query) {
    Page page{.sql = of(scope).page, .parameters = {query.recordType}};
    if (!query.equals.empty()) {  // asked in vain it would keep the planner from the index
        page.parameters.emplace_back(RecordJson::text(query.equals));
        page.sql += fmt::format(" AND fields OPERATOR(pg_catalog.@>) ${}::pg_catalog.jsonb", page.parameters.size());
    }
    if (query.after) {
        page.parameters.emplace_back(query.after->createdAt);
        page.parameters.emplace_back(query.after->recordName);
        page.sql += fmt::format(
            " AND (sort_key, record_name) OPERATOR(pg_catalog.<) (${}::pg_catalog.text, ${}::pg_catalog.text)",
            page.parameters.size() - 1, page.parameters.size());
    }
    page.parameters.emplace_back(std::to_string(query.limit + 1));
    page.sql +=
        fmt::format(" ORDER BY sort_key DESC, record_name DESC LIMIT ${}::pg_catalog.int8", page.parameters.size());
    return page;
}

const std::string& save(platform::DatabaseScope scope) {
    return of(scope).save;
}

const std::string& count(platform::DatabaseScope scope) {
    return of(scope).count;
}

const std::string& record(platform::DatabaseScope scope) {
    return of(scope).record;
}

const std::string& remove(platform::DatabaseScope scope) {
    return of(scope).remove;
}

}  // namespace quorvane::postgresql::RecordStatements
