#include "cloud/postgresql/PostgresSession.h"

#include "cloud/postgresql/KeyringPassword.h"
#include "cloud/postgresql/RecordJson.h"
#include "cloud/postgresql/RecordStatements.h"
#include "cloud/postgresql/RecordUpload.h"
#include "cloud/postgresql/SchemaVersion.h"

#include <charconv>
#include <fmt/format.h>
#include <string_view>
#include <system_error>
#include <utility>

namespace quorvane::postgresql {

using platform::AccountStatus;
using platform::CloudFailure;
using platform::CloudRecord;
using platform::DatabaseScope;
using platform::QueryPage;
using platform::RecordQuery;
using platform::SaveResult;
using platform::UnreadableRow;
using PostgresFailure::Purpose;

namespace {

std::size_t number(std::string_view text) {
    std::size_t value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

}  // namespace

PostgresSession::PostgresSession(ConnectionSettings settings) : settings_(std::move(settings)) {}

/// Opens the connection with the first question, and asks for the schema's version then.
PostgresConnection& PostgresSession::connection() {
    if (connection_ && connection_->isOpen()) return *connection_;
    connection_.reset();
    auto opened = connectWithKeyring(settings_, cancelToken_);
    int version = 0;
    try {
        const PostgresResult result = opened->execute(RecordStatements::version);
        version = static_cast<int>(number(result.text(0)));
    } catch (const PostgresError& error) {
        throw PostgresFailure::cloudFailure(error, Purpose::opening, settings_.service);
    }
    if (version != schemaVersion) throw PostgresFailure::otherSchema(version);
    connection_ = std::move(opened);
    return *connection_;
}

template <class Work>
auto PostgresSession::ask(Purpose purpose, const Work& work) {
    try {
        return work(connection());
    } catch (const PostgresError& error) {
        if (error.facts().isConnectionLost) connection_.reset();
        throw PostgresFailure::cloudFailure(error, purpose, settings_.service);
    } catch (const std::system_error& error) {  // this process has no descriptors or threads left
        throw CloudFailure(CloudFailure::Kind::unreachable, fmt::format("No connection can be made: {}", error.what()));
    }
}

AccountStatus PostgresSession::accountStatus(std::string* reason) {
    try {
        findOutRights();
        return AccountStatus::available;
    } catch (const CloudFailure& failure) {
        if (reason) *reason = failure.what();
        return PostgresFailure::accountStatus(failure.kind());
    }
}

void PostgresSession::findOutRights() {
    ask(Purpose::opening, [](PostgresConnection& connection) {
        const PostgresResult rights = connection.execute(RecordStatements::rights);
        const std::string role = connection.user();
        const auto restricted = [](const std::string& message) {
            return CloudFailure(CloudFailure::Kind::restricted, message);
        };
        if (rights.text(0) != "t") throw restricted(fmt::format("Role \"{}\" may not read private records", role));
        if (rights.text(1) != "t") throw restricted(fmt::format("Role \"{}\" may read records and not write", role));
        if (rights.text(2) != "off")
            throw restricted("The server or the role takes no writes: it is set to read only, or it is a standby");
    });
}

std::vector<SaveResult> PostgresSession::modify(DatabaseScope scope, const std::vector<CloudRecord>& records) {
    if (records.empty()) return {};
    return ask(Purpose::writing, [&](PostgresConnection& connection) { return upload(connection, scope, records); });
}

QueryPage PostgresSession::query(DatabaseScope scope, const RecordQuery& query) {
    return ask(Purpose::reading, [&](PostgresConnection& connection) {
        const RecordStatements::Page question = RecordStatements::page(scope, query);
        QueryPage page;
        platform::RecordCursor last;
        connection.forEachRow(question.sql.c_str(), question.parameters, [&](const PostgresRow& row) {
            if (page.rows.size() == query.limit) {
                page.next = std::move(last);
                return;
            }
            last = {.createdAt = std::string(row.text(1)), .recordName = std::string(row.text(0))};
            std::string reason;
            if (auto values = RecordJson::read(row.text(2), &reason))
                page.rows.emplace_back(CloudRecord{query.recordType, last.recordName, std::move(*values)});
            else
                page.rows.emplace_back(UnreadableRow{oneLine(last.recordName), std::move(reason)});
        });
        return page;
    });
}

std::size_t PostgresSession::count(DatabaseScope scope, const std::string& recordType) {
    return ask(Purpose::reading, [&](PostgresConnection& connection) {
        return number(connection.execute(RecordStatements::count(scope).c_str(), {recordType}).text(0));
    });
}

std::optional<CloudRecord> PostgresSession::record(DatabaseScope scope, const std::string& recordName) {
    return ask(Purpose::reading, [&](PostgresConnection& connection) -> std::optional<CloudRecord> {
        const PostgresResult found = connection.execute(RecordStatements::record(scope).c_str(), {recordName});
        if (found.rowCount() == 0) return std::nullopt;
        std::string reason;
        auto values = RecordJson::read(found.text(1), &reason);
        if (!values)
            throw CloudFailure(CloudFailure::Kind::refused,
                               fmt::format("Record {} can't be read: {}", oneLine(recordName), reason));
        return CloudRecord{std::string(found.text(0)), recordName, std::move(*values)};
    });
}

void PostgresSession::deleteRecord(DatabaseScope scope, const std::string& recordName) {
    ask(Purpose::writing, [&](PostgresConnection& connection) {
        if (connection.execute(RecordStatements::remove(scope).c_str(), {recordName}).rowCount() == 0)
            throw CloudFailure(CloudFailure::Kind::recordNotFound,
                               fmt::format("There is no record {} of this user's", oneLine(recordName)));
    });
}

}  // namespace quorvane::postgresql
