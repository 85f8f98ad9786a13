#include "cloud/postgresql/CloudInspection.h"

#include "base/Uuid.h"
#include "cloud/postgresql/CloudSchema.h"
#include "cloud/postgresql/PostgresFailure.h"
#include "cloud/postgresql/RecordStatements.h"
#include "cloud/postgresql/SchemaFacts.h"
#include "platform/CloudFailure.h"

#include <fmt/format.h>

namespace quorvane::postgresql::CloudInspection {
namespace {

using platform::DatabaseScope;

/// Its names are those of pg_catalog alone: the transaction sees to that.
constexpr const char* whoAmI = R"sql(
SELECT rolname, current_setting('server_version'), rolsuper, rolbypassrls,
       EXISTS (SELECT FROM pg_class c JOIN pg_namespace n ON relnamespace = n.oid
               WHERE nspname = 'quorvane' AND relkind = 'r' AND pg_has_role(relowner, 'USAGE'))
FROM pg_roles WHERE rolname = current_user
)sql";

/// Ends the transaction that a failed statement left behind.
void rollBack(PostgresConnection& connection) {
    if (connection.isOpen() && connection.inTransaction()) connection.executeScript("ROLLBACK");
}

std::optional<int> schemaVersionOf(PostgresConnection& connection) {
    try {
        const int version = CloudSchema::version(connection);
        return version == 0 ? std::nullopt : std::optional(version);
    } catch (const platform::CloudFailure&) {
        return std::nullopt;
    }
}

std::optional<std::string> unboundBecause(const PostgresRow& role) {
    if (role.text(2) == "t") return "it is a superuser";
    if (role.text(3) == "t") return "it bypasses row-level security";
    if (role.text(4) == "t") return "it owns the tables";
    return std::nullopt;
}

bool staysOnThisMachine(const std::string& host) {
    return host.starts_with('/') || host.starts_with('@') || host == "localhost" || host == "127.0.0.1" ||
           host == "::1";
}

/// Writes a record, replaces one of its keys, reads it and deletes it; what went another way than it should.
std::optional<std::string> strayed(PostgresConnection& connection, DatabaseScope scope) {
    const std::string name = "quorvane-probe-" + Uuid::random().string();
    const std::string type = scope == DatabaseScope::privateData ? "Probe" : "ActivityShare";
    const auto save = [&](const char* fields) {
        return connection.execute(RecordStatements::save(scope).c_str(),
                                  {fmt::format("{{{}}}", name), fmt::format("{{{}}}", type), fields});
    };
    const auto find = [&] { return connection.execute(RecordStatements::record(scope).c_str(), {name}); };
    if (save(R"({"{\"kept\": true, \"taken\": 1}"})").rowCount() != 1 || save(R"({"{\"taken\": 2}"})").rowCount() != 1)
        return "a record is not saved";
    const PostgresResult found = find();
    if (found.rowCount() != 1 || found.text(0) != type || found.text(1) != R"({"kept": true, "taken": 2})")
        return "a record does not come back as it was saved";
    if (connection.execute(RecordStatements::remove(scope).c_str(), {name}).rowCount() != 1 || find().rowCount() != 0)
        return "a record is not deleted";
    return std::nullopt;
}

/// In one transaction, so that nobody sees the record and nothing of it stays, whatever happens.
std::optional<std::string> roundTripFinding(PostgresConnection& connection, DatabaseScope scope) {
    const char* what = scope == DatabaseScope::privateData ? "private records" : "shares";
    std::optional<std::string> cause;
    try {
        connection.executeScript("BEGIN");
        cause = strayed(connection, scope);
        connection.executeScript(cause ? "ROLLBACK" : "COMMIT");
    } catch (const PostgresError& error) {
        if (error.facts().isConnectionLost) throw;
        rollBack(connection);
        cause = PostgresFailure::cloudFailure(error, PostgresFailure::Purpose::writing).what();
    }
    if (!cause) return std::nullopt;
    return fmt::format("{} can't be written and read: {}", what, *cause);
}

std::optional<std::string> versionFinding(std::optional<int> version) {
    if (!version) return "the schema quorvane is not installed, or this role is no member of quorvane_user";
    if (*version == schemaVersion) return std::nullopt;
    return PostgresFailure::otherSchema(*version).what();
}

}  // namespace

CloudDescription describe(PostgresConnection& connection) {
    connection.executeScript("BEGIN READ ONLY; SET LOCAL search_path = pg_catalog, pg_temp");
    const PostgresResult answer = connection.execute(whoAmI);
    connection.executeScript("COMMIT");
    const PostgresRow role = answer.row(0);
    const std::string_view version = role.text(1);
    return {.host = connection.host(),
            .database = connection.database(),
            .serverVersion = std::string(version.substr(0, version.find(' '))),
            .tls = connection.tlsProtocol(),
            .role = std::string(role.text(0)),
            .unboundBecause = unboundBecause(role),
            .schemaVersion = schemaVersionOf(connection)};
}

std::vector<std::string> findings(PostgresConnection& connection, const CloudDescription& description) {
    std::vector<std::string> lines;
    if (description.unboundBecause)
        lines.push_back(fmt::format("the role {} sees everybody's records, because {}: sync as another one",
                                    description.role, *description.unboundBecause));
    if (description.tls.empty() && !staysOnThisMachine(description.host))
        lines.push_back(fmt::format("the connection to {} is not encrypted", description.host));
    if (auto line = versionFinding(description.schemaVersion)) {
        lines.push_back(std::move(*line));
        return lines;  // all the rest depends on it
    }
    for (std::string& line : SchemaFacts::differences(SchemaFacts::expected(), SchemaFacts::read(connection)))
        lines.push_back(std::move(line));
    for (const auto scope : {DatabaseScope::privateData, DatabaseScope::publicData})
        if (auto line = roundTripFinding(connection, scope)) lines.push_back(std::move(*line));
    return lines;
}

}  // namespace quorvane::postgresql::CloudInspection
