#include "cloud/postgresql/PostgresFailure.h"

#include "cloud/postgresql/Connecting.h"
#include "support/Matching.h"
#include "support/TextTable.h"

#include <map>

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

const std::map<std::string, Kind> kinds{{"noAccount", Kind::noAccount}, {"busy", Kind::busy},
                                        {"insecure", Kind::insecure},   {"unreachable", Kind::unreachable},
                                        {"timedOut", Kind::timedOut},   {"restricted", Kind::restricted},
                                        {"full", Kind::full},           {"refused", Kind::refused}};

TEST(PostgresFailureTest, SaysWhatIsWrongWithAConnectionInWordsOfItsOwn) {
    using enum platform::CloudFailure::Kind;
    const auto failureOf = [](Facts facts) {
        facts.stage = PostgresError::Stage::connecting;
        facts.isConnectionLost = true;
        return PostgresFailure::cloudFailure(PostgresError(facts), Purpose::opening, "mine");
    };
    for (const auto& row : textTable(QUORVANE_POSTGRES_DATA "/connection-failures.txt")) {
        const bool isCode = row[0].size() == 5;
        const CloudFailure failure =
            isCode ? failureOf({.sqlState = row[0], .message = "no", .user = "al"}) : failureOf({.message = row[0]});
        EXPECT_EQ(failure.kind(), kinds.at(row[1])) << row[0];
        EXPECT_EQ(failure.what(), row[2] + ": " + (isCode ? "no (" + row[0] + ")" : row[0]));
    }
    const auto expectWords = [&](const Facts& facts, Kind kind, const char* words) {
        EXPECT_EQ(failureOf(facts).kind(), kind);
        EXPECT_STREQ(failureOf(facts).what(), words);
    };
    expectWords({.message = "certificate verify failed", .certificate = Certificate::notYetValid}, insecure,
                "The server's certificate is not valid yet: certificate verify failed");

    expectWords({.message = "m", .certificate = Certificate::untrusted}, unreachable,
                "The server of service \"mine\" can't be reached: m");
    expectWords(
        {.message = "fe_sendauth: no password supplied", .needsPassword = true, .user = "al"}, noAccount,
        "The server wants a password for role \"al\", and there is none in the password file (which counts with "
        "mode 0600 only) or the keyring");
    expectWords({.needsPassword = true, .isKeyringLocked = true, .user = "al"}, noAccount,
                "The server wants a password for role \"al\", and the keyring that holds it is locked");
    expectWords({.sqlState = "42501", .message = "no"}, noAccount,
                "Role of this connection has no right to the database: no (42501)");
    expectWords({.cause = Cause::timedOut, .message = "m"}, timedOut, "The server did not let us in in time");
    expectWords({.cause = Cause::cancelled, .message = "m"}, cancelled, "Called off");
}

TEST(PostgresFailureTest, SaysWhyAStatementFailedAndQuotesNothingOfARecord) {
    const auto expectFailure = [](Facts facts, Purpose purpose, Kind kind, const std::string& words, bool mayQuote) {
        SCOPED_TRACE(words);
        facts.message = "title";
        facts.user = "al";
        const CloudFailure failure = PostgresFailure::cloudFailure(PostgresError(facts), purpose);
        EXPECT_EQ(failure.kind(), kind);
        EXPECT_THAT(failure.what(), AllOf(StartsWith(words), HasSubstr(facts.sqlState)));
        EXPECT_EQ(std::string_view(failure.what()).find("title") != std::string_view::npos, mayQuote);
    };
    const std::map<std::string, Purpose> purposes{
        {"opening", Purpose::opening}, {"reading", Purpose::reading}, {"writing", Purpose::writing}};
    for (const auto& row : textTable(QUORVANE_POSTGRES_DATA "/statement-failures.txt"))
        expectFailure({.sqlState = row[0]}, purposes.at(row[1]), kinds.at(row[2]), row[3], row.size() == 4);
    expectFailure({.sqlState = "57P01", .isConnectionLost = true}, Purpose::writing, Kind::lost,
                  "The server ended the connection", true);
    expectFailure({.isConnectionLost = true}, Purpose::writing, Kind::lost, "The connection to the server broke",
                  false);
}

TEST(PostgresFailureTest, TellsWhomAFailedBatchBlames) {
    const auto blame = [](const Facts& facts) { return PostgresFailure::blame(PostgresError(facts)); };
    for (const char* state : {"22P05", "22021", "23514", "54000", "42501", "21000"})
        EXPECT_EQ(blame({.sqlState = state}), Blame::records) << state;
    for (const char* state : {"40001", "40P01"})
        EXPECT_EQ(blame({.sqlState = state}), Blame::nobody) << state;
    for (const char* state : {"25006", "53100", "57014", ""})
        EXPECT_EQ(blame({.sqlState = state}), Blame::batch) << state;
    EXPECT_EQ(blame({.sqlState = "22P05", .isConnectionLost = true}), Blame::batch);
    EXPECT_EQ(blame({.cause = Cause::timedOut, .sqlState = "22P05"}), Blame::batch);
}

TEST(PostgresFailureTest, TellsTheStatusOfTheAccount) {
    EXPECT_EQ(PostgresFailure::accountStatus(Kind::noAccount), AccountStatus::noAccount);
    EXPECT_EQ(PostgresFailure::accountStatus(Kind::outdated), AccountStatus::noAccount);
    EXPECT_EQ(PostgresFailure::accountStatus(Kind::restricted), AccountStatus::restricted);
    for (const Kind kind : {Kind::insecure, Kind::unreachable, Kind::busy, Kind::lost, Kind::full, Kind::timedOut,
                            Kind::cancelled, Kind::recordNotFound, Kind::refused})
        EXPECT_EQ(PostgresFailure::accountStatus(kind), AccountStatus::couldNotDetermine);
}

TEST(PostgresFailureTest, FindsCodeAndMessageInWhatLibpqSaysOfAConnection) {
    auto rows = textTable(QUORVANE_POSTGRES_DATA "/libpq-messages.txt");
    rows.push_back({"a\n\tb \x1b[31mred\x7f \xc2\x9b"
                    "2J \xff\n",
                    "", "a b [31mred 2J \xef\xbf\xbd"});
    rows.push_back({"", "", ""});
    for (const auto& row : rows) {
        EXPECT_EQ(sqlStateIn(row[0]), row[1]) << row[0];
        EXPECT_EQ(primaryMessageIn(row[0]), row[2]) << row[0];
    }
}

}  // namespace
}  // namespace quorvane::postgresql
