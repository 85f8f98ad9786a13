#include "cloud/postgresql/CloudSchema.h"
#include "cloud/postgresql/CloudInspection.h"
#include "cloud/postgresql/SchemaFacts.h"
#include "cloud/postgresql/support/PostgresServer.h"
#include "platform/CloudFailure.h"
#include "support/Matching.h"

#include <fstream>
#include <future>

namespace quorvane::postgresql {
namespace {

using Schema = PostgresSetUp::Schema;

/// A server, and who talks to it.
class Guest {
public:
    Guest(const PostgresServer& server, const std::string& role)
        : connection_({.service = "", .overrides = server.access(role)}, token_) {}
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
    server.sql("owner", "CREATE TABLE quorvane.public_records (mine int)");  // a step that fails leaves nothing
    EXPECT_THAT(failureOf([&] { CloudSchema::migrate(owner); }),
                HasSubstr("step 2 of the schema failed: relation \"public_records\" already exists"));
    EXPECT_EQ(CloudSchema::version(owner), 1);
    server.sql("owner", "DROP TABLE quorvane.public_records");
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
        auto first = std::async(std::launch::async, install);
        auto second = std::async(std::launch::async, install);
        EXPECT_NO_THROW(first.get());
        EXPECT_NO_THROW(second.get());
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

/// A change that somebody may make, how it is taken back, and what the check says meanwhile.
struct Loosening {
    std::string change;
    std::string back;
    std::vector<testing::Matcher<std::string>> findings;
};
std::vector<Loosening> loosenings() {
    std::vector<Loosening> all;
    std::ifstream lines(QUORVANE_ISOLATION "/loosened.sql");
    for (std::string line; std::getline(lines, line);)
        if (line.empty())
            all.emplace_back();
        else if (line.starts_with("-- back: "))
            all.back().back = line.substr(9);
        else if (line.starts_with("-- finding: "))
            all.back().findings.emplace_back(StartsWith(line.substr(12)));
        else if (!all.empty())  // else the file tells of itself
            all.back().change += line;
    return all;
}

TEST(CloudSchemaTest, FindsWhatAnAdministratorLoosened) {
    const PostgresServer server;
    server.sql("admin", "CREATE ROLE backup LOGIN BYPASSRLS PASSWORD 'backup-pw' IN ROLE quorvane_user");
    for (const auto& [change, back, findings] : loosenings()) {
        SCOPED_TRACE(change);
        server.sql("admin", change);
        EXPECT_THAT(Guest(server, "alice").findings(), ElementsAreArray(findings));
        server.sql("admin", back);
    }
    EXPECT_THAT(Guest(server, "alice").findings(), IsEmpty());
    EXPECT_THAT(Guest(server, "owner").findings(), Contains(HasSubstr("because it owns the tables")));
    EXPECT_THAT(Guest(server, "backup").findings(), Contains(HasSubstr("because it bypasses row-level security")));
    EXPECT_THAT(Guest(server, "admin").findings(), Contains(HasSubstr("because it is a superuser")));
    EXPECT_THAT(Guest(server, "stranger").findings(), ElementsAre(HasSubstr("no member of quorvane_user")));
}

}  // namespace
}  // namespace quorvane::postgresql
