#include "store/Database.h"

#include "store/Schema.h"
#include "store/StoreBackup.h"
#include "store/StoreFile.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <algorithm>
#include <cerrno>
#include <fmt/format.h>
#include <optional>
#include <sqlite3.h>

namespace quorvane {
namespace {

using Code = StoreError::Code;

/// How long a connection waits for another program's write before it gives up.
constexpr int busyTimeoutMilliseconds = 2000;

/// Statements that stay compiled. A tick, a heartbeat and a screen together use fewer.
constexpr std::size_t maxStatements = 48;

struct Cause {
    Code code;
    std::string_view text;
};

Cause causeOf(int sqliteCode) {
    switch (sqliteCode & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED: return {Code::busy, "another program keeps the store locked"};
    case SQLITE_FULL: return {Code::diskFull, "the disk is full"};
    case SQLITE_CORRUPT: return {Code::damaged, "the file is damaged"};
    case SQLITE_NOTADB: return {Code::notAStore, "this is not a store"};
    case SQLITE_READONLY: return {Code::readOnly, "the file is read-only"};
    case SQLITE_CANTOPEN: return {Code::noPermission, "the file can't be opened"};
    case SQLITE_PERM:
    case SQLITE_AUTH: return {Code::noPermission, "no permission"};
    default: return {Code::failed, {}};
    }
}

/// `systemError` is the errno of the last call to the system that failed, 0 for none.
StoreError storeError(const std::filesystem::path& file, const SQLite::Exception& error, int systemError) {
    // SQLite knows the full disk; a quota or a limit of the process that is used up comes as a general failure.
    const bool isNoSpace =
        (error.getErrorCode() & 0xFF) == SQLITE_IOERR && (systemError == EDQUOT || systemError == EFBIG);
    const Cause cause = causeOf(isNoSpace ? SQLITE_FULL : error.getErrorCode());
    if (cause.text.empty()) return {cause.code, fmt::format("{}: {}", file.string(), error.what())};
    if (cause.code == Code::damaged || cause.code == Code::noPermission)
        return {cause.code, fmt::format("{}: {} ({})", file.string(), cause.text, error.what())};
    return {cause.code, fmt::format("{}: {}", file.string(), cause.text)};
}

void bind(SQLite::Statement& statement, const std::vector<SqlValue>& parameters) {
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        const int index = static_cast<int>(i) + 1;
        if (const auto* integer = std::get_if<std::int64_t>(&parameters[i]))
            statement.bind(index, *integer);
        else if (const auto* real = std::get_if<double>(&parameters[i]))
            statement.bind(index, *real);
        else if (const auto* text = std::get_if<std::string>(&parameters[i]))
            statement.bind(index, *text);
        else if (const auto* blob = std::get_if<Blob>(&parameters[i]))
            statement.bind(index, blob->bytes.data(), static_cast<int>(blob->bytes.size()));
        else
            statement.bind(index);
    }
}

/// Resets a statement when its use ends, so that it holds no lock; keeps it alive when the cache drops it meanwhile.
class InUse {
public:
    explicit InUse(std::shared_ptr<SQLite::Statement> statement) : statement_(std::move(statement)) {}
    InUse(const InUse&) = delete;
    InUse& operator=(const InUse&) = delete;
    ~InUse() {
        statement_->tryReset();
        try {
            statement_->clearBindings();
        } catch (const SQLite::Exception&) {
            // A statement that can't forget its values still gets new ones at its next use.
        }
    }
    SQLite::Statement& operator*() { return *statement_; }
    SQLite::Statement* operator->() { return statement_.get(); }

private:
    std::shared_ptr<SQLite::Statement> statement_;
};

std::string immutableUri(const std::filesystem::path& file) {
    std::string out = "file:";
    for (const char c : file.string())
        out += c == '?' || c == '#' || c == '%' ? fmt::format("%{:02X}", static_cast<unsigned char>(c))
                                                : std::string(1, c);
    return out + "?immutable=1";
}

}  // namespace

Row::Row(SQLite::Statement& statement) {
    const int count = statement.getColumnCount();
    columns_.reserve(static_cast<std::size_t>(count));
    for (int column = 0; column < count; ++column)
        columns_.push_back(statement.getColumn(column));
}

Row::~Row() = default;

bool Row::isNull(int column) const {
    return columns_[static_cast<std::size_t>(column)].isNull();
}
std::int64_t Row::integer(int column) const {
    return columns_[static_cast<std::size_t>(column)].getInt64();
}
double Row::real(int column) const {
    return columns_[static_cast<std::size_t>(column)].getDouble();
}
std::string_view Row::text(int column) const {
    const auto& held = columns_[static_cast<std::size_t>(column)];
    const char* bytes = held.getText();
    return {bytes, static_cast<std::size_t>(held.getBytes())};
}
std::string_view Row::blob(int column) const {
    const auto& held = columns_[static_cast<std::size_t>(column)];
    const auto* bytes = static_cast<const char*>(held.getBlob());
    return bytes == nullptr ? std::string_view() : std::string_view(bytes, static_cast<std::size_t>(held.getBytes()));
}

SqlValue Row::value(int column) const {
    const auto& held = columns_[static_cast<std::size_t>(column)];
    if (held.isInteger()) return std::int64_t{held.getInt64()};
    if (held.isFloat()) return held.getDouble();
    if (held.isText()) return std::string(text(column));
    if (held.isBlob()) return Blob{std::string(blob(column))};
    return {};
}

template <class Work>
auto Database::translated(Work work) const {
    try {
        errno = 0;  // sqlite3_system_errno() hears nothing of failed writes
        return work();
    } catch (const SQLite::Exception& error) {
        throw storeError(file_, error, errno);
    }
}

Database::Database(const ModelConfiguration& configuration) : file_(configuration.file) {
    translated([&] { open(configuration); });
}

Database::~Database() {
    statements_.clear();
}

void Database::open(const ModelConfiguration& configuration) {
    auto state = StoreFile::inspect(configuration);
    std::optional<StoreFile::OpeningLock> lock;
    if (configuration.allowsSave) {
        if (state == StoreFile::State::missing) StoreFile::makeFolder(file_);
        lock.emplace(file_);
        state = StoreFile::inspect(configuration);  // another program may have made it meanwhile
        // The log and the lock file that SQLite makes beside the file take over its permissions.
        if (state == StoreFile::State::missing) StoreFile::make(file_);
    }
    connect(configuration.allowsSave);
    // Before all else, so that a new file is known as ours wherever a kill interrupts its making. The file is asked
    // once more: opening it may have undone what was interrupted.
    if (configuration.allowsSave && Schema::storedApplicationId(*this) != Schema::applicationId)
        inTransaction([this] { execute(fmt::format("PRAGMA application_id = {}", Schema::applicationId)); });
    configure(configuration.allowsSave);
    if (Schema::storedUserVersion(*this) > Schema::userVersion)
        throw StoreError(Code::newer,
                         fmt::format("{}: a newer version of the program wrote this store", file_.string()));
    if (Schema::isComplete(*this)) return;
    if (!configuration.allowsSave)
        throw StoreError(Code::failed, fmt::format("{}: the store was written by an older version; any command that "
                                                   "writes brings it up to date",
                                                   file_.string()));
    bringUpToDate();
}

void Database::bringUpToDate() {
    const auto backup = Schema::hasTables(*this) ? StoreBackup::make(*this, file_) : std::filesystem::path();
    try {
        Schema::ensure(*this);
    } catch (...) {
        // The store is as it was; each attempt would leave one more copy.
        std::error_code ignored;
        if (!backup.empty()) std::filesystem::remove(backup, ignored);
        throw;
    }
}

void Database::connect(bool allowsSave) {
    // The whole path: a relative one may spell a name that SQLite reads in its own way, such as ":memory:".
    const auto path = std::filesystem::absolute(file_);
    std::string name = path.string();
    // A connection that only reads may be able to write, too: then the last one out takes the log away with it.
    const bool canWrite = allowsSave || StoreFile::isWritable(file_);
    int flags = SQLite::OPEN_NOMUTEX | (canWrite ? SQLite::OPEN_READWRITE : SQLite::OPEN_READONLY);
    if (!allowsSave && !StoreFile::isFolderWritable(file_) && !StoreFile::hasPendingLog(file_)) {
        // Where no lock file can be made nobody writes either: read the file as it stands.
        name = immutableUri(path);
        flags |= SQLite::OPEN_URI;
    }
    database_ = std::make_unique<SQLite::Database>(name, flags, busyTimeoutMilliseconds);
}

void Database::configure(bool allowsSave) {
    // The log lets the companion command read while the application writes; NORMAL is safe against every crash of the
    // program, and against a power cut it may lose the newest seconds but never the file.
    execute(allowsSave ? "PRAGMA journal_mode = WAL" : "PRAGMA query_only = ON");
    execute("PRAGMA synchronous = NORMAL");
    execute("PRAGMA foreign_keys = ON");
    execute("PRAGMA temp_store = MEMORY");
    execute("PRAGMA journal_size_limit = 4194304");
}

std::shared_ptr<SQLite::Statement> Database::prepared(const std::string& sql) {
    const auto found =
        std::find_if(statements_.begin(), statements_.end(), [&](const auto& one) { return one.first == sql; });
    if (found != statements_.end() && found->second.use_count() == 1) {
        std::rotate(found, found + 1, statements_.end());
        return statements_.back().second;
    }
    auto statement = std::make_shared<SQLite::Statement>(*database_, sql);
    if (found != statements_.end()) return statement;  // in use by an outer query
    if (statements_.size() == maxStatements) statements_.erase(statements_.begin());
    statements_.emplace_back(sql, statement);
    return statement;
}

int Database::execute(const std::string& sql, const std::vector<SqlValue>& parameters) {
    return translated([&] {
        InUse statement(prepared(sql));
        bind(*statement, parameters);
        while (statement->executeStep()) {
        }
        return statement->getChanges();
    });
}

void Database::query(const std::string& sql, const std::vector<SqlValue>& parameters,
                     const std::function<bool(const Row&)>& visit) {
    translated([&] {
        InUse statement(prepared(sql));
        bind(*statement, parameters);
        if (!statement->executeStep()) return;
        const Row row(*statement);
        while (visit(row) && statement->executeStep()) {
        }
    });
}

std::int64_t Database::lastInsertedRow() const {
    return database_->getLastInsertRowid();
}

void Database::inTransaction(const std::function<void()>& work) {
    execute("BEGIN IMMEDIATE");
    try {
        work();
        execute("COMMIT");
    } catch (...) {
        // A full disk may have ended the transaction already.
        if (sqlite3_get_autocommit(database_->getHandle()) == 0) execute("ROLLBACK");
        throw;
    }
}

void Database::inSnapshot(const std::function<void()>& work) {
    execute("BEGIN");
    try {
        work();
    } catch (...) {
        execute("ROLLBACK");
        throw;
    }
    execute("COMMIT");
}

std::int64_t Database::dataVersion() {
    std::int64_t version = 0;
    query("PRAGMA data_version", {}, [&](const Row& row) {
        version = row.integer(0);
        return false;
    });
    return version;
}

}  // namespace quorvane
