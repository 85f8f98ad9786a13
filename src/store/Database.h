#pragma once

#include "store/ModelConfiguration.h"
#include "store/SqlValue.h"
#include "store/StoreError.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace SQLite {
class Column;
class Database;
class Statement;
}  // namespace SQLite

namespace quorvane {

/// The values of one result row. Valid until the next row is read.
class Row {
public:
    explicit Row(SQLite::Statement& statement);
    ~Row();
    Row(const Row&) = delete;
    Row& operator=(const Row&) = delete;

    [[nodiscard]] bool isNull(int column) const;
    [[nodiscard]] std::int64_t integer(int column) const;
    [[nodiscard]] double real(int column) const;
    [[nodiscard]] std::string_view text(int column) const;
    [[nodiscard]] std::string_view blob(int column) const;
    [[nodiscard]] SqlValue value(int column) const;

private:
    std::vector<SQLite::Column> columns_;  ///< made once for all rows: each holds on to its statement
};

/// One connection to a store file, with the schema in place, for one thread. Every operation throws `StoreError`.
class Database {
public:
    /// Opens the file; where saving is allowed, makes it if it is missing, and adds what an older one lacks, after
    /// a backup of it. A file that is no store, not ours, newer, damaged or read-only is refused and stays as it is.
    explicit Database(const ModelConfiguration& configuration);
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;
    ~Database();

    /// Runs one statement to its end and returns how many rows it changed.
    int execute(const std::string& sql, const std::vector<SqlValue>& parameters = {});

    /// Calls `visit` for each result row until it returns false.
    void query(const std::string& sql, const std::vector<SqlValue>& parameters,
               const std::function<bool(const Row&)>& visit);

    [[nodiscard]] std::int64_t lastInsertedRow() const;

    /// Runs `work` in a transaction that is taken for writing at once; what it throws undoes all of it.
    void inTransaction(const std::function<void()>& work);

    /// Runs `work` with one unchanging view of the file.
    void inSnapshot(const std::function<void()>& work);

    /// A number that differs once another connection has changed the file.
    [[nodiscard]] std::int64_t dataVersion();

private:
    template <class Work>
    auto translated(Work work) const;
    void open(const ModelConfiguration& configuration);
    void bringUpToDate();
    void connect(bool allowsSave);
    void configure(bool allowsSave);
    std::shared_ptr<SQLite::Statement> prepared(const std::string& sql);

    std::filesystem::path file_;
    std::unique_ptr<SQLite::Database> database_;
    std::vector<std::pair<std::string, std::shared_ptr<SQLite::Statement>>> statements_;  ///< most recent last
};

}  // namespace quorvane
