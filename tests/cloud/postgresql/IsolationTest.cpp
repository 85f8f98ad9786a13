#include "base/Iso8601.h"
#include "base/Text.h"
#include "cloud/postgresql/CloudInspection.h"
#include "cloud/postgresql/CloudSchema.h"
#include "cloud/postgresql/PostgresSession.h"
#include "cloud/postgresql/support/PostgresServer.h"
#include "support/Matching.h"

#include <fmt/format.h>

namespace quorvane::postgresql {
namespace {

/// What an attempt came to: the SQLSTATE of its error, else what it printed, in one line.
std::string outcomeOf(const ProgramResult& result) {
    const auto at = result.err.find("ERROR:  ");
    if (at != std::string::npos) return result.err.substr(at + 8, 5);
    return text::trimmed(text::joined(text::split(result.out, '\n'), " "));
}

std::string scriptOf(const std::string& name) {
    return contentOf(QUORVANE_ISOLATION + ("/" + name) + ".sql");
}

/// Alice has private records and shares. Bob is a user as she is, and besides may make things of his own in this
/// database; rita only looks up shares; the stranger may nothing but connect.
class IsolationTest : public testing::Test {
protected:
    IsolationTest() {
        server_.sql("admin", "CREATE SCHEMA bobs AUTHORIZATION bob; GRANT CREATE ON SCHEMA public TO PUBLIC;"
                             "GRANT CREATE ON DATABASE quorvane TO bob");
        server_.sql("alice", scriptOf("records"));
        server_.sql("owner", R"(INSERT INTO quorvane.public_records (record_name, record_type, fields)
                                VALUES ('config', 'AppConfig', '{"note": "for all"}'); ANALYZE)");
    }

    /// All that alice and the owner have, as it is.
    [[nodiscard]] std::string everything() const {
        std::string all;
        for (const char* table : {"private_records", "public_records"})
            all += server_.sql("admin", fmt::format("SELECT * FROM quorvane.{} WHERE owner IN ('alice', 'owner') "
                                                    "ORDER BY record_name",
                                                    table)) +
                   "\n";
        return all;
    }

    /// Tries what stands in the file, of which none shows a secret or changes what is not his who makes it. A heading
    /// such as "-- bob: 42501" says who tries the following lines and what comes of each; an indented one goes on.
    void tryAll(const std::string& name) {
        const std::string before = everything();
        std::string role, outcome, statements;
        const auto tryOne = [&] {
            if (statements.empty()) return;
            SCOPED_TRACE(role + ": " + statements);
            const ProgramResult result = server_.psql(role, std::exchange(statements, ""));
            EXPECT_EQ(outcomeOf(result), outcome) << result.err;
            EXPECT_THAT(result.out + result.err, Not(HasSubstr("secret")));
        };
        for (const std::string& line : text::split(scriptOf(name), '\n')) {
            if (!line.starts_with(' ')) tryOne();
            const auto colon = line.find(':');
            if (!line.starts_with("--"))
                statements += line;
            else if (colon != std::string::npos)
                std::tie(role, outcome) = std::pair(line.substr(3, colon - 3), text::trimmed(line.substr(colon + 1)));
        }
        EXPECT_EQ(everything(), before);
    }

    ConnectionSettings settingsOf(const std::string& role) const {
        return {.service = "", .overrides = server_.access(role)};
    }

    PostgresServer server_;
};

TEST_F(IsolationTest, AUserNeitherSeesNorTouchesThePrivateRecordsOfAnother) {
    tryAll("private-records");
}

TEST_F(IsolationTest, FunctionsViewsAndPlansOfAUserMeetHisOwnRowsAlone) {
    server_.sql("bob", scriptOf("spies"));
    tryAll("functions");
    // Who looks into somebody else's view sees his own rows, and may not call what is not granted.
    EXPECT_EQ(server_.sql("alice", "SELECT record_name FROM bobs.view ORDER BY 1"), "diary\nletter");
}

TEST_F(IsolationTest, NobodyWidensHisRights) {
    tryAll("rights");
}

TEST_F(IsolationTest, AShareIsReadWhileItIsActiveAndOnlyItsOwnerChangesIt) {
    tryAll("shares");
    const std::string all = "SELECT record_name FROM quorvane.public_records ORDER BY 1";
    EXPECT_EQ(server_.sql("alice", "SELECT count(*) FROM quorvane.public_records"), "10");
    server_.sql("alice", "UPDATE quorvane.public_records SET fields = fields || '{\"isActive\": false}' WHERE "
                         "record_name = 'active'; DELETE FROM quorvane.public_records WHERE record_name = 'soon'");
    for (const char* role : {"bob", "rita"})
        EXPECT_EQ(server_.sql(role, all), "config\nlasting") << role;
    // A grant that an administrator hands out in a hurry opens no rows.
    server_.sql("owner",
                "GRANT USAGE ON SCHEMA quorvane TO PUBLIC; GRANT ALL ON ALL TABLES IN SCHEMA quorvane TO PUBLIC");
    EXPECT_EQ(server_.sql("stranger", all), "");
    EXPECT_EQ(server_.sql("rita", "TABLE quorvane.private_records"), "");
}

TEST_F(IsolationTest, WhatOthersPutIntoTheSearchPathIsNeverCalled) {
    server_.sql("bob", scriptOf("traps"));
    server_.sql("admin", "ALTER DATABASE quorvane SET search_path = public, pg_catalog");
    ASSERT_THAT(server_.psql("alice", "SELECT 'a'::pg_catalog.text = 'a'::pg_catalog.text").err, HasSubstr("caught"));

    using platform::CloudRecord;
    using platform::DatabaseScope;
    PostgresSession session(settingsOf("alice"));
    std::string reason;
    EXPECT_EQ(session.accountStatus(&reason), platform::AccountStatus::available) << reason;
    for (const auto scope : {DatabaseScope::privateData, DatabaseScope::publicData}) {
        const CloudRecord record{
            "ActivityShare", "new", {{"createdAt", *parseIso8601("2026-03-04T15:00:00Z")}, {"isActive", true}}};
        for (int time = 0; time < 2; ++time)
            EXPECT_EQ(session.modify(scope, {record}), (std::vector<platform::SaveResult>{{.recordName = "new"}}));
        EXPECT_EQ(session.record(scope, "new"), record);
        EXPECT_GE(session.count(scope, "ActivityShare"), 1U);
        const auto page =
            session.query(scope, {.recordType = "ActivityShare", .equals = {{"isActive", true}}, .limit = 1});
        ASSERT_EQ(page.rows.size(), 1U);
        EXPECT_EQ(std::get<CloudRecord>(page.rows[0]), record);
        const platform::RecordCursor first{.createdAt = "9999", .recordName = "z"};
        EXPECT_EQ(session.query(scope, {.recordType = "ActivityShare", .limit = 1, .after = first}).rows, page.rows);
        EXPECT_NO_THROW(session.deleteRecord(scope, "new"));
    }
    const CancelToken token;
    PostgresConnection alice(settingsOf("alice"), token);
    EXPECT_THAT(CloudInspection::findings(alice, CloudInspection::describe(alice)), IsEmpty());

    // The owner, too, installs what is meant.
    server_.sql("owner", "DROP SCHEMA quorvane CASCADE");
    PostgresConnection owner(settingsOf("owner"), token);
    EXPECT_EQ(CloudSchema::objection(owner, {"alice"}), std::nullopt);
    EXPECT_EQ(CloudSchema::migrate(owner), 0);
    CloudSchema::addUsers(owner, {"alice"});
    EXPECT_THAT(CloudInspection::findings(alice, CloudInspection::describe(alice)), IsEmpty());
    server_.sql("owner", "DROP SCHEMA quorvane CASCADE");
    server_.sql("owner", CloudSchema::script({"alice"}));
    EXPECT_THAT(CloudInspection::findings(alice, CloudInspection::describe(alice)), IsEmpty());
}

}  // namespace
}  // namespace quorvane::postgresql
