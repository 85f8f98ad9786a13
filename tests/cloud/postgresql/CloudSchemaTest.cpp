#include "cloud/postgresql/CloudSchema.h"
#include "cloud/postgresql/CloudInspection.h"
#include "cloud/postgresql/SchemaFacts.h"
#include "cloud/postgresql/support/PostgresServer.h"
#include "desktop/support/Environment.h"
#include "platform/CloudFailure.h"

#include <fmt/format.h>
#include <future>
#include <gmock/gmock.h>

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace quorvane::postgresql {
namespace {

using Schema = PostgresSetUp::Schema;

/// A server, and who talks to it.
class Guest {
public:
    Guest(const PostgresServer& server, const std::string& role)
        : connection_({.service = "",
                       .overrides = {{"host", server.folder().string()},
                                     {"port", std::to_string(server.port())},
                                     {"dbname", "quorvane"},
                                     {"user", role},
                                     {"password", role + "-pw"}}},
                      token_) {}
    operator PostgresConnection&() { return connection_; }

    std::vector<std::string> findings() {
        return CloudInspection::findings(connection_, CloudInspection::describe(connection_));
    }

private:
    CancelToken token_;
    PostgresConnection connection_;
};

template <class Work>
std::string failureOf(const Work& work) {
    try {
        work();
        return "none";
    } catch (const platform::CloudFailure& failure) {
        return failure.what();
    }
}

TEST(CloudSchemaTest, InstallsIntoAnEmptyDatabaseAndDoesNoHarmAgain) {
    const PostgresServer server({.schema = Schema::none});
    Guest owner(server, "owner");
    EXPECT_EQ(CloudSchema::version(owner), 0);
    EXPECT_EQ(CloudSchema::migrate(owner), 0);
    CloudSchema::addUsers(owner, {"alice", "bob"});
    Guest alice(server, "alice");
    EXPECT_THAT(alice.findings(), IsEmpty());

    server.sql("alice", "INSERT INTO quorvane.private_records (record_name, record_type, fields) VALUES "
                        "('a', 'A', '{}')");
    EXPECT_EQ(CloudSchema::migrate(owner), 2);
    CloudSchema::addUsers(owner, {"alice"});
    EXPECT_EQ(server.sql("alice", "SELECT record_name FROM quorvane.private_records"), "a");
    EXPECT_THAT(alice.findings(), IsEmpty());
    // What the connection was used for has left nothing behind, no record of a probe either.
    EXPECT_EQ(server.sql("admin", "SELECT count(*) FROM quorvane.private_records"), "1");
    EXPECT_EQ(server.sql("admin", "SELECT count(*) FROM quorvane.public_records"), "0");
}

TEST(CloudSchemaTest, GoesOnFromTheFirstStepAndKeepsWhatIsThere) {
    const PostgresServer server({.schema = Schema::first});
    server.sql("alice", "INSERT INTO quorvane.private_records (record_name, record_type, fields) VALUES "
                        "('a', 'A', '{}')");
    Guest alice(server, "alice");
    EXPECT_THAT(alice.findings(), ElementsAre(HasSubstr("quorvane-cli cloud init")));
    Guest owner(server, "owner");
    EXPECT_EQ(CloudSchema::migrate(owner), 1);
    EXPECT_THAT(alice.findings(), IsEmpty());
    EXPECT_EQ(server.sql("alice", "SELECT record_name FROM quorvane.private_records"), "a");
}

TEST(CloudSchemaTest, TwoAtOnceBothEndWithTheWholeSchema) {
    const PostgresServer server({.schema = Schema::none});
    for (int round = 0; round < 5; ++round) {
        const auto install = [&] {
            Guest owner(server, "owner");
            CloudSchema::migrate(owner);
        };
        std::future<void> all[] = {std::async(std::launch::async, install), std::async(std::launch::async, install),
                                   std::async(std::launch::async, install)};
        for (auto& one : all)
            EXPECT_NO_THROW(one.get());
        Guest owner(server, "owner");
        EXPECT_EQ(CloudSchema::version(owner), schemaVersion);
        EXPECT_EQ(SchemaFacts::differences(SchemaFacts::expected(), SchemaFacts::read(owner)),
                  std::vector<std::string>{});
        server.sql("owner", "DROP SCHEMA quorvane CASCADE; DROP ROLE quorvane_user, quorvane_reader");
    }
}

TEST(CloudSchemaTest, RefusesWhatItIsNotMadeFor) {
    const PostgresServer server;
    Guest owner(server, "owner");
    Guest stranger(server, "stranger");
    EXPECT_THAT(failureOf([&] { CloudSchema::migrate(stranger); }), HasSubstr("stranger is no user of the schema"));
    Guest alice(server, "alice");
    EXPECT_THAT(failureOf([&] { CloudSchema::addUsers(alice, {"stranger"}); }),
                AllOf(HasSubstr("making stranger a member of quorvane_user failed: the role alice may not"),
                      HasSubstr("as the owner of the database")));
    EXPECT_THAT(CloudSchema::objection(owner, {"alice", "carol"}).value_or(""), HasSubstr("there is no role carol"));
    EXPECT_THAT(CloudSchema::objection(owner, {"owner"}).value_or(""), HasSubstr("the role owner would see"));
    EXPECT_THAT(CloudSchema::objection(owner, {"admin"}).value_or(""), HasSubstr("the role admin would see"));
    EXPECT_EQ(CloudSchema::objection(owner, {"alice", "stranger"}), std::nullopt);

    server.sql("owner", "CREATE OR REPLACE FUNCTION quorvane.version() RETURNS int LANGUAGE sql AS 'SELECT 3'");
    EXPECT_THAT(failureOf([&] { CloudSchema::migrate(owner); }),
                AllOf(HasSubstr("version 3"), HasSubstr("older than the database")));
    server.sql("owner", "DROP SCHEMA quorvane CASCADE; CREATE SCHEMA quorvane");
    EXPECT_THAT(failureOf([&] { CloudSchema::migrate(owner); }), HasSubstr("is not ours"));
    server.sql("owner", "DROP SCHEMA quorvane CASCADE");
    EXPECT_THAT(failureOf([&] { CloudSchema::migrate(alice); }),
                HasSubstr("step 1 of the schema failed: the role alice may not"));
    EXPECT_EQ(server.sql("admin", "SELECT count(*) FROM pg_namespace WHERE nspname = 'quorvane'"), "0");

    server.sql("admin", "DROP ROLE quorvane_user, quorvane_reader; ALTER ROLE owner NOCREATEROLE");
    EXPECT_THAT(failureOf([&] { CloudSchema::migrate(owner); }),
                AllOf(HasSubstr("permission denied to create role"), HasSubstr("allowed to create roles")));
    server.sql("admin", "CREATE ROLE quorvane_user; CREATE ROLE quorvane_reader");
    EXPECT_EQ(CloudSchema::migrate(owner), 0);
}

TEST(CloudSchemaTest, AStepThatFailsLeavesTheOneBeforeIt) {
    const PostgresServer server({.schema = Schema::first});
    server.sql("owner", "CREATE TABLE quorvane.public_records (mine int)");
    Guest owner(server, "owner");
    EXPECT_THAT(failureOf([&] { CloudSchema::migrate(owner); }),
                HasSubstr("step 2 of the schema failed: relation \"public_records\" already exists"));
    EXPECT_EQ(CloudSchema::version(owner), 1);
}

TEST(CloudSchemaTest, ThePrintedScriptInstallsFromEveryVersionWithPsql) {
    const PostgresServer server({.schema = Schema::none});
    server.sql("admin", R"(CREATE ROLE "o""dd; role" LOGIN PASSWORD 'x')");
    for (const std::string& before : {std::string(), migrationText(1), migrationText(1) + migrationText(2)}) {
        server.sql("owner", before);
        server.sql("owner", CloudSchema::script({"alice", R"(o"dd; role)"}));
        server.sql("owner", CloudSchema::script({"alice"}));
        EXPECT_THAT(Guest(server, "alice").findings(), IsEmpty());
        EXPECT_EQ(server.sql("admin", R"(SELECT pg_has_role('o"dd; role', 'quorvane_user', 'MEMBER'))"), "t");
        server.sql("owner", "DROP SCHEMA quorvane CASCADE");
    }
}

TEST(CloudSchemaTest, FindsWhatAnAdministratorLoosened) {
    const PostgresServer server;
    server.sql("admin", "CREATE ROLE backup LOGIN BYPASSRLS PASSWORD 'backup-pw' IN ROLE quorvane_user");
    struct Row {
        const char* change;
        const char* back;
        std::vector<std::string> findings;
    };
    const Row rows[] = {
        {"ALTER TABLE quorvane.private_records DISABLE ROW LEVEL SECURITY",
         "ALTER TABLE quorvane.private_records ENABLE ROW LEVEL SECURITY",
         {"missing: row-level security of private_records"}},
        {"CREATE POLICY everybody ON quorvane.private_records USING (true)",
         "DROP POLICY everybody ON quorvane.private_records",
         {"not meant to be there: policy everybody of private_records"}},
        {"ALTER POLICY own ON quorvane.private_records USING (true)",
         "ALTER POLICY own ON quorvane.private_records USING (owner = current_user)",
         {"changed: policy own of private_records (now: permissive, all, for quorvane_user, using true, check "
          "(owner=CURRENT_USER))"}},
        {"GRANT SELECT ON quorvane.private_records TO PUBLIC",
         "REVOKE SELECT ON quorvane.private_records FROM PUBLIC",
         {"not meant to be there: GRANT SELECT ON private_records TO PUBLIC"}},
        {"GRANT SELECT (owner) ON quorvane.public_records TO quorvane_reader",
         "REVOKE SELECT (owner) ON quorvane.public_records FROM quorvane_reader",
         {"not meant to be there: GRANT SELECT ON public_records (owner) TO quorvane_reader"}},
        {"GRANT DELETE ON quorvane.private_records TO quorvane_user WITH GRANT OPTION",
         "REVOKE GRANT OPTION FOR DELETE ON quorvane.private_records FROM quorvane_user",
         {"changed: GRANT DELETE ON private_records TO quorvane_user (now: to hand on, too)"}},
        {"CREATE VIEW quorvane.everything AS SELECT * FROM quorvane.private_records",
         "DROP VIEW quorvane.everything",
         {"not meant to be there: view everything"}},
        {"CREATE FUNCTION quorvane.all_fields() RETURNS SETOF jsonb LANGUAGE sql SECURITY DEFINER "
         "AS 'SELECT fields FROM quorvane.private_records'",
         "DROP FUNCTION quorvane.all_fields()",
         {"not meant to be there: GRANT EXECUTE ON FUNCTION all_fields() TO PUBLIC",
          "not meant to be there: function all_fields()"}},
        {"CREATE TRIGGER copy AFTER INSERT ON quorvane.private_records FOR EACH ROW EXECUTE FUNCTION quorvane.touch()",
         "DROP TRIGGER copy ON quorvane.private_records",
         {"not meant to be there: trigger copy of private_records"}},
        {"GRANT owner TO quorvane_user",
         "REVOKE owner FROM quorvane_user",
         {"the role alice sees everybody's records, because it owns the tables: sync as another one",
          "changed: role quorvane_user (now: owns the tables)"}},
        {"DROP INDEX quorvane.private_records_newest",
         "CREATE INDEX private_records_newest ON quorvane.private_records (owner)",
         {"missing: index private_records_newest"}},
        {"REVOKE UPDATE (fields) ON quorvane.private_records FROM quorvane_user",
         "GRANT UPDATE (fields) ON quorvane.private_records TO quorvane_user",
         {"missing: GRANT UPDATE ON private_records (fields) TO quorvane_user", "private records can't be written"}},
        {"ALTER ROLE alice SET default_transaction_read_only = on",
         "ALTER ROLE alice RESET default_transaction_read_only",
         {"private records can't be written", "shares can't be written"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.change);
        server.sql("admin", row.change);
        std::vector<testing::Matcher<std::string>> meant;
        for (const auto& line : row.findings)
            meant.emplace_back(testing::StartsWith(line));
        EXPECT_THAT(Guest(server, "alice").findings(), testing::ElementsAreArray(meant));
        server.sql("admin", row.back);
    }
    EXPECT_THAT(Guest(server, "alice").findings(), IsEmpty());
    EXPECT_THAT(Guest(server, "owner").findings(), Contains(HasSubstr("because it owns the tables")));
    EXPECT_THAT(Guest(server, "backup").findings(), Contains(HasSubstr("because it bypasses row-level security")));
    EXPECT_THAT(Guest(server, "admin").findings(), Contains(HasSubstr("because it is a superuser")));
    EXPECT_THAT(Guest(server, "stranger").findings(), ElementsAre(HasSubstr("no member of quorvane_user")));
}

TEST(CloudSchemaTest, TellsWhoTalksToWhomAndHow) {
    const PostgresServer server;
    Environment environment;
    environment.set("PGSERVICEFILE", server.serviceFile("alice").string());
    const CancelToken token;
    PostgresConnection connection({.service = "quorvane"}, token);
    const auto found = CloudInspection::describe(connection);
    EXPECT_EQ(found.host, "localhost");
    EXPECT_EQ(found.database, "quorvane");
    EXPECT_EQ(found.tls, "TLSv1.3");
    EXPECT_EQ(found.role, "alice");
    EXPECT_EQ(found.schemaVersion, schemaVersion);
    EXPECT_EQ(found.unboundBecause, std::nullopt);
    EXPECT_EQ(found.serverVersion, server.sql("admin", "SHOW server_version").substr(0, found.serverVersion.size()));
    EXPECT_THAT(CloudInspection::findings(connection, found), IsEmpty());
}

}  // namespace
}  // namespace quorvane::postgresql
