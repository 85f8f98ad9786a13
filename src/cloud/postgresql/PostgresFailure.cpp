#include "cloud/postgresql/PostgresFailure.h"

#include "cloud/postgresql/SchemaVersion.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <optional>

namespace quorvane::postgresql::PostgresFailure {

namespace {

using platform::AccountStatus;
using platform::CloudFailure;
using Kind = CloudFailure::Kind;
using Certificate = PostgresError::Certificate;

struct Words {
    Kind kind;
    std::string_view text;        ///< {service} and {user} stand for names
    bool withServerWords = true;  ///< the primary message follows: it can quote nothing of a record
};

struct Row {
    std::string_view codes;  ///< a SQLSTATE or the beginning of several
    Words words;
};

/// First match counts.
constexpr Row onConnecting[] = {
    {"28P01", {Kind::noAccount, "The server refuses the password of role {user}, or knows no such role"}},
    {"28", {Kind::noAccount, "Role {user} may not log in there"}},
    {"3D000", {Kind::noAccount, "The server has no such database"}},
    {"42501", {Kind::noAccount, "Role {user} has no right to the database"}},
    {"53300", {Kind::busy, "The server has too many connections already"}},
    {"57P03", {Kind::busy, "The server is starting or shutting down"}},
    {"57P", {Kind::busy, "The server is shutting down"}},
    {"53", {Kind::busy, "The server is short of resources"}},
};

constexpr Words noTables{Kind::noAccount,
                         "The database has no tables for records; its owner makes them with `quorvane-cli cloud init`"};

constexpr Row onStatements[] = {
    {"57014",
     {Kind::timedOut, "The server called the statement off, because it took too long or somebody asked it to"}},
    {"57P", {Kind::lost, "The server ended the connection"}},
    {"08", {Kind::lost, "The connection to the server broke"}},
    {"25006", {Kind::restricted, "The server or the role takes no writes: it is set to read only, or it is a standby"}},
    {"42P01", noTables},
    {"3F000", noTables},
    {"42883", noTables},
    {"53100", {Kind::full, "The server has no room left"}},
    {"53", {Kind::busy, "The server is short of resources"}},
    {"40", {Kind::busy, "Others kept changing the same records", false}},
    {"55P03", {Kind::busy, "Somebody else holds the records", false}},
};

/// What libpq says without a code, in English whatever the language of the user is.
struct Sign {
    std::string_view part;
    Words words;
};
constexpr Sign signs[] = {
    {"root certificate file", {Kind::insecure, "The authority that vouches for the server can't be read"}},
    {"does not match host name", {Kind::insecure, "The server's certificate is of another host"}},
    {"server does not support SSL", {Kind::insecure, "The server offers no encryption, and the settings ask for it"}},
    {"private key file", {Kind::unreachable, "The settings name a certificate of ours that can't be used"}},
    {"certificate file", {Kind::unreachable, "The settings name a certificate of ours that can't be used"}},
    {"alert", {Kind::insecure, "The server refuses our side of the encryption"}},
    {"SSL SYSCALL", {Kind::unreachable, "The connection broke before it was encrypted"}},
    {"certificate", {Kind::insecure, "The server's certificate can't be trusted"}},
    {"SSL", {Kind::insecure, "The encryption could not be agreed on with the server"}},
    {"service file", {Kind::unreachable, "The settings of service {service} can't be read"}},
    {"definition of service", {Kind::unreachable, "There are no settings for service {service}"}},
    {"could not translate host name", {Kind::unreachable, "Nobody knows the server's name"}},
    {"Connection refused", {Kind::unreachable, "Nobody takes connections where the server should be"}},
    {"No such file or directory", {Kind::unreachable, "No server runs where its socket should be"}},
    {"timeout expired", {Kind::timedOut, "The server did not answer in time"}},
    {"closed the connection", {Kind::unreachable, "The server closed the connection"}},
};

std::string filledIn(std::string_view text, const PostgresError::Facts& facts, const std::string& service) {
    const std::string user = facts.user.empty() ? std::string("of this connection") : fmt::format("\"{}\"", facts.user);
    return fmt::format(fmt::runtime(text), fmt::arg("user", user), fmt::arg("service", fmt::format("\"{}\"", service)));
}

CloudFailure failure(const Words& words, const PostgresError::Facts& facts, const std::string& service) {
    std::string text = filledIn(words.text, facts, service);
    if (words.withServerWords && !facts.message.empty()) text += ": " + facts.message;
    if (!facts.sqlState.empty()) text += fmt::format(" ({})", facts.sqlState);
    return {words.kind, text};
}

template <std::size_t count>
const Words* find(const Row (&rows)[count], const std::string& sqlState) {
    const auto row = std::find_if(std::begin(rows), std::end(rows),
                                  [&](const Row& candidate) { return sqlState.starts_with(candidate.codes); });
    return row == std::end(rows) ? nullptr : &row->words;
}

Words objection(Certificate certificate) {
    switch (certificate) {
    case Certificate::expired: return {Kind::insecure, "The server's certificate has expired"};
    case Certificate::notYetValid: return {Kind::insecure, "The server's certificate is not valid yet"};
    case Certificate::noObjection:
    case Certificate::untrusted: break;
    }
    return {Kind::insecure, "The server's certificate comes from nobody whom the settings trust"};
}

CloudFailure ofConnecting(const PostgresError::Facts& facts, const std::string& service) {
    if (const Words* words = find(onConnecting, facts.sqlState); words && !facts.sqlState.empty())
        return failure(*words, facts, service);
    if (facts.needsPassword) {
        return failure({Kind::noAccount,
                        facts.isKeyringLocked
                            ? "The server wants a password for role {user}, and the keyring that holds it is locked"
                            : "The server wants a password for role {user}, and there is none in the password file "
                              "(which counts with mode 0600 only) or the keyring",
                        false},
                       facts, service);
    }
    // An objection does not count where the settings ask for no certificate.
    const bool hasFailed = facts.message.find("certificate verify failed") != std::string::npos;
    if (facts.sqlState.empty() && hasFailed && facts.certificate != Certificate::noObjection)
        return failure(objection(facts.certificate), facts, service);
    for (const Sign& sign : signs) {
        if (facts.sqlState.empty() && facts.message.find(sign.part) != std::string::npos)
            return failure(sign.words, facts, service);
    }
    return failure({Kind::unreachable, "The server of service {service} can't be reached"}, facts, service);
}

CloudFailure ofStatement(const PostgresError& error, Purpose purpose, const std::string& service) {
    const PostgresError::Facts& facts = error.facts();
    if (facts.sqlState == "42501") {
        switch (purpose) {
        case Purpose::opening:
            return failure({Kind::noAccount, "Role {user} has no right to the tables for records; the database's owner "
                                             "gives it with `quorvane-cli cloud init --user`"},
                           facts, service);
        case Purpose::reading:
            return failure({Kind::restricted, "Role {user} may not read these records"}, facts, service);
        case Purpose::writing:
            return failure({Kind::restricted, "Role {user} may not write these records"}, facts, service);
        }
    }
    if (const Words* words = find(onStatements, facts.sqlState); words && !facts.sqlState.empty())
        return failure(*words, facts, service);
    if (facts.isConnectionLost)
        return failure({Kind::lost, "The connection to the server broke", false}, facts, service);
    if (blame(error) == Blame::records)
        return {Kind::refused, "The server refuses the question: " + refusal(facts.sqlState)};
    return failure({Kind::refused, "The server could not do what it was asked for", false}, facts, service);
}

}  // namespace

CloudFailure cloudFailure(const PostgresError& error, Purpose purpose, const std::string& service) {
    const PostgresError::Facts& facts = error.facts();
    const bool isConnecting = facts.stage == PostgresError::Stage::connecting;
    switch (facts.cause) {
    case PostgresError::Cause::cancelled: return {Kind::cancelled, "Called off"};
    case PostgresError::Cause::timedOut:
        return {Kind::timedOut, isConnecting ? "The server did not let us in in time"
                                             : "The server did not answer in time; the statement was called off"};
    case PostgresError::Cause::told: break;
    }
    return isConnecting ? ofConnecting(facts, service) : ofStatement(error, purpose, service);
}

CloudFailure otherSchema(int version) {
    if (version > schemaVersion)
        return {Kind::outdated,
                fmt::format("This program is older than the tables of the database: they are of version {}, "
                            "and it knows version {}. Update Quorvane",
                            version, schemaVersion)};
    return {Kind::outdated,
            fmt::format("The tables of the database are older than this program: they are of version {} and it "
                        "needs version {}. The database's owner updates them with `quorvane-cli cloud init`",
                        version, schemaVersion)};
}

AccountStatus accountStatus(Kind kind) {
    switch (kind) {
    case Kind::noAccount:
    case Kind::outdated: return AccountStatus::noAccount;
    case Kind::restricted: return AccountStatus::restricted;
    case Kind::insecure:
    case Kind::unreachable:
    case Kind::busy:
    case Kind::lost:
    case Kind::full:
    case Kind::timedOut:
    case Kind::cancelled:
    case Kind::recordNotFound:
    case Kind::refused: break;
    }
    return AccountStatus::couldNotDetermine;
}

Blame blame(const PostgresError& error) {
    const std::string& code = error.sqlState();
    if (error.facts().isConnectionLost || error.facts().cause != PostgresError::Cause::told) return Blame::batch;
    if (code == "40001" || code == "40P01") return Blame::nobody;
    const auto isOf = [&](std::string_view beginning) { return code.starts_with(beginning); };
    constexpr std::array<std::string_view, 5> blaming{"22", "23", "54", "42501", "21000"};
    return std::any_of(blaming.begin(), blaming.end(), isOf) ? Blame::records : Blame::batch;
}

std::string refusal(std::string_view sqlState) {
    const std::string_view reason = sqlState == "23514" ? "it is too large, or its name or type can't be taken"
                                    : sqlState == "42501"
                                        ? "the name belongs to somebody else, or it may not be written"
                                    : sqlState.starts_with("22") ? "it holds what a database can't store"
                                    : sqlState.starts_with("54") ? "it is too large"
                                                                 : "the server does not take it";
    return fmt::format("{} ({})", reason, sqlState);
}

}  // namespace quorvane::postgresql::PostgresFailure
