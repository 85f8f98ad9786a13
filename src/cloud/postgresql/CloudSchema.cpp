#include "cloud/postgresql/CloudSchema.h"

#include "platform/CloudFailure.h"

#include <charconv>
#include <fmt/format.h>

namespace quorvane::postgresql::CloudSchema {
namespace {

using platform::CloudFailure;

constexpr const char* insufficientPrivilege = "42501";

int numberIn(std::string_view text) {
    int number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

/// What the failure of a step or a grant means to whoever runs it.
CloudFailure failure(const PostgresConnection& connection, const std::string& what, const PostgresError& error) {
    const std::string& cause = error.facts().message;
    if (error.sqlState() != insufficientPrivilege)
        return {CloudFailure::Kind::refused, fmt::format("{} failed: {}", what, cause)};
    return {CloudFailure::Kind::restricted,
            fmt::format("{} failed: the role {} may not ({}); it has to be done as the owner of the database, who may "
                        "have to be allowed to create roles",
                        what, connection.user(), cause)};
}

void take(PostgresConnection& connection, const Migration& step) {
    try {
        connection.executeScript(std::string(step.sql));
    } catch (const PostgresError& error) {
        if (error.facts().isConnectionLost) throw;
        if (connection.inTransaction()) connection.executeScript("ROLLBACK");
        if (version(connection) >= step.number) return;  // somebody else took the step meanwhile
        throw failure(connection, fmt::format("step {} of the schema", step.number), error);
    }
}

std::string quoted(const std::string& role) {
    std::string text = "\"";
    for (const char c : role)
        text += c == '"' ? std::string("\"\"") : std::string(1, c);
    return text + '"';
}

}  // namespace

int version(PostgresConnection& connection) {
    const auto found = connection.execute("SELECT pg_catalog.has_schema_privilege(oid, 'USAGE') "
                                          "FROM pg_catalog.pg_namespace "
                                          "WHERE nspname OPERATOR(pg_catalog.=) 'quorvane'::pg_catalog.name");
    if (found.rowCount() == 0) return 0;
    if (found.text(0) != "t")
        throw CloudFailure(CloudFailure::Kind::noAccount,
                           fmt::format("the role {} is no user of the schema quorvane", connection.user()));
    try {
        return numberIn(connection.execute("SELECT quorvane.version()").text(0));
    } catch (const PostgresError& error) {
        if (error.sqlState() != "42883") throw;
        throw CloudFailure(CloudFailure::Kind::refused,
                           "the schema quorvane is not ours: it has no function version()");
    }
}

int migrate(PostgresConnection& connection) {
    const int before = version(connection);
    if (before > schemaVersion)
        throw CloudFailure(CloudFailure::Kind::outdated,
                           fmt::format("the schema has version {}, and this program knows none after {}: it is older "
                                       "than the database",
                                       before, schemaVersion));
    for (const Migration& step : migrations)
        if (step.number > before) take(connection, step);
    return before;
}

std::optional<std::string> objection(PostgresConnection& connection, const std::vector<std::string>& roles) {
    for (const std::string& role : roles) {
        const auto found =
            connection.execute("SELECT rolsuper OR rolbypassrls OR "
                               "pg_catalog.pg_has_role(oid, CURRENT_USER, 'MEMBER') OR pg_catalog.pg_has_role(oid, "
                               "  (SELECT datdba FROM pg_catalog.pg_database "
                               "   WHERE datname OPERATOR(pg_catalog.=) pg_catalog.current_database()), 'MEMBER') "
                               "FROM pg_catalog.pg_roles WHERE rolname OPERATOR(pg_catalog.=) $1::pg_catalog.name",
                               {role});
        if (found.rowCount() == 0)
            return fmt::format("there is no role {}: make it with CREATE ROLE {} LOGIN PASSWORD '...'", role,
                               quoted(role));
        if (found.text(0) == "t")
            return fmt::format("the role {} would see the records of everybody: it is a superuser, bypasses row-level "
                               "security or owns the database or its tables",
                               role);
    }
    return std::nullopt;
}

void addUsers(PostgresConnection& connection, const std::vector<std::string>& roles) {
    for (const std::string& role : roles) {
        try {
            connection.executeScript("GRANT quorvane_user TO " + quoted(role));
        } catch (const PostgresError& error) {
            if (error.facts().isConnectionLost) throw;
            throw failure(connection, fmt::format("making {} a member of quorvane_user", role), error);
        }
    }
}

std::string script(const std::vector<std::string>& roles) {
    std::string text = "-- For psql, as the owner of the database. It takes the steps that are missing.\n"
                       "\\set ON_ERROR_STOP on\n"
                       "\\set version 0\n"
                       "SELECT pg_catalog.to_regprocedure('quorvane.version()') IS NOT NULL AS installed \\gset\n"
                       "\\if :installed\n"
                       "SELECT quorvane.version() AS version \\gset\n"
                       "\\endif\n";
    for (const Migration& step : migrations)
        text +=
            fmt::format("\nSELECT :version OPERATOR(pg_catalog.<) {} AS missing \\gset\n\\if :missing\n\n{}\n\\endif\n",
                        step.number, step.sql);
    if (!roles.empty()) text += '\n';
    for (const std::string& role : roles)
        text += fmt::format("GRANT quorvane_user TO {};\n", quoted(role));
    return text;
}

}  // namespace quorvane::postgresql::CloudSchema
