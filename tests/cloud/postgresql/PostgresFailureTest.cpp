#include "cloud/postgresql/PostgresFailure.h"

#include "cloud/postgresql/Connecting.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quorvane::postgresql {
namespace {

using platform::AccountStatus;
using platform::CloudFailure;
using Kind = CloudFailure::Kind;
using Facts = PostgresError::Facts;
using PostgresFailure::Blame;
using PostgresFailure::Purpose;
using Cause = PostgresError::Cause;
using Certificate = PostgresError::Certificate;

constexpr auto connecting = PostgresError::Stage::connecting;

TEST(PostgresFailureTest, SaysWhatIsWrongWithAConnectionInWordsOfItsOwn) {
    struct Row {
        Facts facts;
        Kind kind;
        std::string text;
    };
    const Row rows[] = {
        {{.sqlState = "28P01", .message = "no", .user = "al"},
         Kind::noAccount,
         "The server refuses the password of role \"al\", or knows no such role: no (28P01)"},
        {{.message = "fe_sendauth: no password supplied", .needsPassword = true, .user = "al"},
         Kind::noAccount,
         "The server wants a password for role \"al\", and there is none in the password file (which counts with mode "
         "0600 only) or the keyring"},
        {{.needsPassword = true, .isKeyringLocked = true, .user = "al"},
         Kind::noAccount,
         "The server wants a password for role \"al\", and the keyring that holds it is locked"},
        {{.sqlState = "28000", .message = "no", .user = "al"},
         Kind::noAccount,
         "Role \"al\" may not log in there: no (28000)"},
        {{.sqlState = "3D000", .message = "no"}, Kind::noAccount, "The server has no such database: no (3D000)"},
        {{.sqlState = "42501", .message = "no"},
         Kind::noAccount,
         "Role of this connection has no right to the database: no (42501)"},
        {{.sqlState = "53300", .message = "no"}, Kind::busy, "The server has too many connections already: no (53300)"},
        {{.sqlState = "57P03", .message = "no"}, Kind::busy, "The server is starting or shutting down: no (57P03)"},
        {{.message = "SSL error: certificate verify failed", .certificate = Certificate::untrusted},
         Kind::insecure,
         "The server's certificate comes from nobody whom the settings trust: SSL error: certificate verify failed"},
        {{.message = "certificate verify failed", .certificate = Certificate::expired},
         Kind::insecure,
         "The server's certificate has expired: certificate verify failed"},
        {{.message = "certificate verify failed", .certificate = Certificate::notYetValid},
         Kind::insecure,
         "The server's certificate is not valid yet: certificate verify failed"},
        {{.message = "m", .certificate = Certificate::untrusted},
         Kind::unreachable,
         "The server of service \"mine\" can't be reached: m"},
        {{.message = "could not read certificate file \"/x\""},
         Kind::unreachable,
         "The settings name a certificate of ours that can't be used: could not read certificate file \"/x\""},
        {{.message = "SSL error: tlsv1 alert unknown ca"},
         Kind::insecure,
         "The server refuses our side of the encryption: SSL error: tlsv1 alert unknown ca"},
        {{.message = "SSL SYSCALL error: Connection reset by peer"},
         Kind::unreachable,
         "The connection broke before it was encrypted: SSL SYSCALL error: Connection reset by peer"},
        {{.message = "server certificate for \"a\" does not match host name \"b\""},
         Kind::insecure,
         "The server's certificate is of another host: server certificate for \"a\" does not match host name \"b\""},
        {{.message = "root certificate file \"/x\" does not exist"},
         Kind::insecure,
         "The authority that vouches for the server can't be read: root certificate file \"/x\" does not exist"},
        {{.message = "server does not support SSL, but SSL was required"},
         Kind::insecure,
         "The server offers no encryption, and the settings ask for it: server does not support SSL, but SSL was "
         "required"},
        {{.message = "syntax error in service file \"/x\", line 3"},
         Kind::unreachable,
         "The settings of service \"mine\" can't be read: syntax error in service file \"/x\", line 3"},
        {{.message = "definition of service \"mine\" not found"},
         Kind::unreachable,
         "There are no settings for service \"mine\": definition of service \"mine\" not found"},
        {{.message = "could not translate host name \"h\" to address"},
         Kind::unreachable,
         "Nobody knows the server's name: could not translate host name \"h\" to address"},
        {{.message = "Connection refused"},
         Kind::unreachable,
         "Nobody takes connections where the server should be: Connection refused"},
        {{.message = "No such file or directory"},
         Kind::unreachable,
         "No server runs where its socket should be: No such file or directory"},
        {{.message = "m"}, Kind::unreachable, "The server of service \"mine\" can't be reached: m"},
        {{.cause = Cause::timedOut, .message = "m"}, Kind::timedOut, "The server did not let us in in time"},
        {{.cause = Cause::cancelled, .message = "m"}, Kind::cancelled, "Called off"},
    };
    for (Row row : rows) {
        SCOPED_TRACE(row.text);
        row.facts.stage = connecting;
        row.facts.isConnectionLost = true;
        const CloudFailure failure = PostgresFailure::cloudFailure(PostgresError(row.facts), Purpose::opening, "mine");
        EXPECT_EQ(failure.kind(), row.kind);
        EXPECT_EQ(failure.what(), row.text);
    }
}

TEST(PostgresFailureTest, SaysWhyAStatementFailedAndQuotesNothingOfARecord) {
    struct Row {
        const char* sqlState;
        Purpose purpose;
        bool isLost;
        Kind kind;
        const char* beginning;
        bool mayQuote;
    };
    const Row rows[] = {
        {"57014", Purpose::writing, false, Kind::timedOut, "The server called the statement off", true},
        {"57P01", Purpose::writing, true, Kind::lost, "The server ended the connection", true},
        {"", Purpose::writing, true, Kind::lost, "The connection to the server broke", false},
        {"25006", Purpose::writing, false, Kind::restricted, "The server or the role takes no writes", true},
        {"42P01", Purpose::opening, false, Kind::noAccount, "The database has no tables for records", true},
        {"3F000", Purpose::opening, false, Kind::noAccount, "The database has no tables for records", true},
        {"42883", Purpose::opening, false, Kind::noAccount, "The database has no tables for records", true},
        {"42501", Purpose::opening, false, Kind::noAccount, "Role \"al\" has no right to the tables", true},
        {"42501", Purpose::reading, false, Kind::restricted, "Role \"al\" may not read", true},
        {"42501", Purpose::writing, false, Kind::restricted, "Role \"al\" may not write", true},
        {"53100", Purpose::writing, false, Kind::full, "The server has no room left", true},
        {"53200", Purpose::writing, false, Kind::busy, "The server is short of resources", true},
        {"40001", Purpose::writing, false, Kind::busy, "Others kept changing", false},
        {"22P02", Purpose::reading, false, Kind::refused, "The server refuses the question", false},
        {"XX000", Purpose::reading, false, Kind::refused, "The server could not do", false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.sqlState);
        const CloudFailure failure = PostgresFailure::cloudFailure(
            PostgresError({.sqlState = row.sqlState, .message = "title", .isConnectionLost = row.isLost, .user = "al"}),
            row.purpose);
        EXPECT_EQ(failure.kind(), row.kind);
        EXPECT_THAT(failure.what(), testing::StartsWith(row.beginning));
        EXPECT_THAT(failure.what(), testing::HasSubstr(row.sqlState));
        EXPECT_EQ(std::string_view(failure.what()).find("title") != std::string_view::npos, row.mayQuote);
    }
}

TEST(PostgresFailureTest, TellsWhomAFailedBatchBlames) {
    struct Row {
        Facts facts;
        Blame expected;
    };
    const Row rows[] = {
        {{.sqlState = "22P05"}, Blame::records},
        {{.sqlState = "22021"}, Blame::records},
        {{.sqlState = "23514"}, Blame::records},
        {{.sqlState = "54000"}, Blame::records},
        {{.sqlState = "42501"}, Blame::records},
        {{.sqlState = "21000"}, Blame::records},
        {{.sqlState = "40001"}, Blame::nobody},
        {{.sqlState = "40P01"}, Blame::nobody},
        {{.sqlState = "25006"}, Blame::batch},
        {{.sqlState = "53100"}, Blame::batch},
        {{.sqlState = "57014"}, Blame::batch},
        {{.sqlState = ""}, Blame::batch},
        {{.sqlState = "22P05", .isConnectionLost = true}, Blame::batch},
        {{.cause = Cause::timedOut, .sqlState = "22P05"}, Blame::batch},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.facts.sqlState);
        EXPECT_EQ(PostgresFailure::blame(PostgresError(row.facts)), row.expected);
    }
}

TEST(PostgresFailureTest, TellsTheStatusOfTheAccountAndWhichSideIsOld) {
    EXPECT_EQ(PostgresFailure::accountStatus(Kind::noAccount), AccountStatus::noAccount);
    EXPECT_EQ(PostgresFailure::accountStatus(Kind::outdated), AccountStatus::noAccount);
    EXPECT_EQ(PostgresFailure::accountStatus(Kind::restricted), AccountStatus::restricted);
    for (const Kind kind : {Kind::insecure, Kind::unreachable, Kind::busy, Kind::lost, Kind::full, Kind::timedOut,
                            Kind::cancelled, Kind::recordNotFound, Kind::refused})
        EXPECT_EQ(PostgresFailure::accountStatus(kind), AccountStatus::couldNotDetermine);
    EXPECT_THAT(PostgresFailure::otherSchema(1).what(), testing::HasSubstr("older than this program"));
    EXPECT_THAT(PostgresFailure::otherSchema(3).what(), testing::HasSubstr("This program is older"));
}

TEST(PostgresFailureTest, FindsCodeAndMessageInWhatLibpqSaysOfAConnection) {
    struct Row {
        const char* text;
        const char* sqlState;
        const char* message;
    };
    const Row rows[] = {
        {"connection to server at \"h\", port 1 failed: FATAL:  28P01: password authentication failed for user \"al\"\n"
         "LOCATION:  auth_failed, auth.c:330\n",
         "28P01", "password authentication failed for user \"al\""},
        {"Verbindung fehlgeschlagen: FATAL:  3D000: Datenbank »x« existiert nicht\nORT:  InitPostgres\n", "3D000",
         "Datenbank »x« existiert nicht"},
        {"connection to server at \"::1\" failed: Connection refused\n\tIs the server running?\n"
         "connection to server at \"127.0.0.1\" failed: FATAL:  57P03: the database system is starting up\n",
         "57P03", "the database system is starting up"},
        {"a\n\tb \x1b[31mred\x7f \xc2\x9b"
         "2J \xff\n",
         "", "a b [31mred 2J \xef\xbf\xbd"},
        {"FATAL:  sorry, too many clients", "", "FATAL: sorry, too many clients"},
        {"", "", ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(sqlStateIn(row.text), row.sqlState);
        EXPECT_EQ(primaryMessageIn(row.text), row.message);
    }
}

}  // namespace
}  // namespace quorvane::postgresql
