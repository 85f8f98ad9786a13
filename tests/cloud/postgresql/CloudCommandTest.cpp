#include "base/Json.h"
#include "cli/CliFixture.h"
#include "cloud/postgresql/support/PostgresServer.h"

#include <fmt/format.h>
#include <optional>

namespace quorvane {
namespace {

/// The command in a home where libpq finds no settings but those of a server that the test brings.
class CloudCommandTest : public CliTest {
protected:
    CloudCommandTest() { setting_.environment["PGSYSCONFDIR"] = folder_.path().string(); }
    ~CloudCommandTest() override { EXPECT_THAT(names(), IsEmpty()); }  // no store is made, and none is wanted

    PostgresServer& start(const PostgresSetUp& setUp, const std::vector<std::string>& more = {}) {
        server_.emplace(setUp);
        connectAs("alice", more);
        return *server_;
    }

    void connectAs(const std::string& user, const std::vector<std::string>& more = {}) {
        setting_.environment["PGSERVICEFILE"] = server_->serviceFile(user, more).string();
    }

    /// No line says a password, whatever happens.
    ProgramResult runCloud(const Arguments& arguments) {
        ProgramResult result = runBare(arguments);
        EXPECT_THAT(result.out + result.err, Not(HasSubstr("-pw")));
        return result;
    }

    [[nodiscard]] Json jsonOf(const ProgramResult& result) const { return parseJson(result.out).value_or(Json()); }

    std::optional<PostgresServer> server_;
};

TEST_F(CloudCommandTest, WithoutASettingItSaysSoAndWhatIsMissing) {
    const ProgramResult status = runCloud({"cloud", "status"});
    EXPECT_EQ(status.status, 0);
    EXPECT_EQ(status.out, "service   quorvane is not set up in libpq's service files\n");
    EXPECT_EQ(jsonOf(runCloud({"cloud", "status", "--json"})), Json({{"configured", false},
                                                                     {"account", "couldNotDetermine"},
                                                                     {"reason", nullptr},
                                                                     {"server", nullptr},
                                                                     {"records", nullptr}}));
    for (const auto& [command, service] : {std::pair("check", "quorvane"), std::pair("init", "quorvane-owner")})
        EXPECT_THAT(runCloud({"cloud", command}),
                    isRefused(1, HasSubstr(fmt::format("there is no libpq service {} with settings:", service))));
    EXPECT_THAT(runCloud({"cloud", "init", "--print", "--user", "alice"}).out, HasSubstr("CREATE SCHEMA quorvane"));
    EXPECT_THAT(runCloud({"cloud", "init", "--print", "--user", ""}), isRefused(2, testing::_));
    EXPECT_THAT(runCloud({"cloud"}).err, isRefusal(HasSubstr("cloud needs a command")));
}

TEST_F(CloudCommandTest, TheOwnerInstallsAndTheUserIsAtHome) {
    PostgresServer& server = start({.schema = PostgresSetUp::Schema::none});
    EXPECT_THAT(runCloud({"cloud", "check"}).out, HasSubstr("finding   the schema quorvane is not installed"));

    EXPECT_THAT(runCloud({"cloud", "init", "--user", "carol"}), isRefused(1, HasSubstr("there is no role carol")));
    EXPECT_EQ(server.sql("admin", "SELECT count(*) FROM pg_namespace WHERE nspname = 'quorvane'"), "0");

    const ProgramResult installed = runCloud({"cloud", "init", "--user", "alice", "--user", "bob"});
    EXPECT_EQ(installed.err, "");
    EXPECT_EQ(installed.out,
              "The schema is installed, in version 2.\nThe role alice may sync.\nThe role bob may sync.\n");
    EXPECT_EQ(runCloud({"cloud", "init"}).out, "The schema has version 2 already.\n");
    server.sql("alice", "INSERT INTO quorvane.private_records (record_name, record_type, fields) VALUES "
                        "('a', 'ActivityRecord', '{}'), ('b', 'ActivityRecord', '{}'), ('c', 'Other', '{}')");

    const ProgramResult check = runCloud({"cloud", "check"});
    EXPECT_EQ(check.status, 0);
    EXPECT_EQ(check.err, "");
    EXPECT_THAT(check.out, EndsWith("TLS       TLSv1.3\ncheck     all is well\n"));
    EXPECT_EQ(jsonOf(runCloud({"cloud", "check", "--json"}))["findings"], Json::array());

    Json status = jsonOf(runCloud({"--json", "cloud", "status"}));
    const std::string version = status["server"]["version"];
    EXPECT_THAT(server.sql("admin", "SHOW server_version"), StartsWith(version));
    EXPECT_EQ(status, Json({{"configured", true},
                            {"account", "available"},
                            {"reason", nullptr},
                            {"server",
                             {{"host", "localhost"},
                              {"database", "quorvane"},
                              {"version", version},
                              {"tls", "TLSv1.3"},
                              {"role", "alice"},
                              {"bound", true},
                              {"schema", 2}}},
                            {"records", 2}}));
    EXPECT_EQ(runCloud({"cloud", "status"}).out, "service   quorvane is set up\n"
                                                 "account   available\n"
                                                 "server    PostgreSQL " +
                                                     version +
                                                     " at localhost, database quorvane\n"
                                                     "schema    version 2\n"
                                                     "role      alice\n"
                                                     "TLS       TLSv1.3\n"
                                                     "records   2\n");
}

TEST_F(CloudCommandTest, NamesWhatIsWrongInOneLineEach) {
    PostgresServer& server = start({});
    server.sql("owner", "CREATE POLICY everybody ON quorvane.private_records USING (true);"
                        "GRANT SELECT (owner) ON quorvane.public_records TO quorvane_user");
    const ProgramResult check = runCloud({"--json", "cloud", "check"});
    EXPECT_EQ(check.status, 1);
    EXPECT_THAT(check.err, isRefusal(HasSubstr("the cloud is not as it should be: 2 findings")));
    EXPECT_EQ(jsonOf(check)["findings"],
              Json({"not meant to be there: GRANT SELECT ON public_records (owner) TO quorvane_user",
                    "not meant to be there: policy everybody of private_records"}));

    connectAs("owner");
    EXPECT_THAT(runCloud({"cloud", "check"}).out,
                HasSubstr("finding   the role owner sees everybody's records, because it owns the tables"));
    EXPECT_THAT(runCloud({"cloud", "status"}).out, HasSubstr("role      owner, which sees everybody's records"));

    connectAs("alice", {"password=wrong"});
    const Json status = jsonOf(runCloud({"cloud", "status", "--json"}));
    EXPECT_EQ(status["account"], "noAccount");
    EXPECT_THAT(status["reason"].get<std::string>(), HasSubstr("password"));
    EXPECT_TRUE(status["records"].is_null());
    EXPECT_EQ(runCloud({"cloud", "check"}).status, 1);
    connectAs("alice");
    EXPECT_THAT(runCloud({"cloud", "init", "--service", "quorvane", "--user", "stranger"}).err,
                isRefusal(HasSubstr("has to be done as the owner of the database")));
}

}  // namespace
}  // namespace quorvane
