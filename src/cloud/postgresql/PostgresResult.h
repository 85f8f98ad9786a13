#pragma once

#include <libpq-fe.h>
#include <memory>
#include <string_view>

namespace quorvane::postgresql {

struct ResultClear {
    void operator()(PGresult* result) const { PQclear(result); }
};

/// One row, valid as long as its result. Columns count from 0.
class PostgresRow {
public:
    PostgresRow(const PGresult* result, int row) : result_(result), row_(row) {}
    /// Empty for NULL.
    [[nodiscard]] std::string_view text(int column) const {
        return {PQgetvalue(result_, row_, column), static_cast<std::size_t>(PQgetlength(result_, row_, column))};
    }

private:
    const PGresult* result_;
    int row_;
};

/// What a statement answered.
class PostgresResult {
public:
    explicit PostgresResult(PGresult* result) : result_(result) {}
    [[nodiscard]] int rowCount() const { return PQntuples(result_.get()); }
    [[nodiscard]] PostgresRow row(int index) const { return {result_.get(), index}; }
    /// Of the first row, which must be there.
    [[nodiscard]] std::string_view text(int column) const { return row(0).text(column); }
    [[nodiscard]] PGresult* get() const { return result_.get(); }

private:
    std::unique_ptr<PGresult, ResultClear> result_;
};

}  // namespace quorvane::postgresql
