#include "base/Json.h"
#include "cli/CliFixture.h"
#include "cloud/postgresql/support/PostgresServer.h"
#include "support/Matching.h"

#include <fmt/format.h>

namespace quorvane {
namespace {

class SharesOnServerTest : public CliTest {
protected:
    void SetUp() override {
        if (!PostgresServer::isInstalled()) GTEST_SKIP() << "there is no PostgreSQL server on this machine";
        server.emplace();
        setting_.environment["PGSERVICEFILE"] = server->serviceFile().string();
        load("");
    }

    /// The shares of the store.
    [[nodiscard]] std::vector<Json> shares() {
        const auto result = run({"shares", "list", "--json"});
        return parseJson(result.out).value_or(Json::array());
    }
    /// What the role sees of a share.
    [[nodiscard]] std::string seen(const std::string& role, const std::string& token) const {
        return server->sql(role, fmt::format("SELECT fields ->> 'title', fields -> 'isActive' FROM "
                                             "quorvane.public_records WHERE record_name = '{}'",
                                             token));
    }

    std::optional<PostgresServer> server;
};

TEST_F(SharesOnServerTest, OthersReadAShareUntilItIsStopped) {
    std::string token = outputOf({"shares", "create", "--title", "March 漢字"});
    EXPECT_THAT(token, MatchesRegex("[0-9a-f]{16}\n"));
    token.pop_back();
    const Json row = parseJson(outputOf({"shares", "create", "--title", "Kept", "--json"})).value_or(Json());
    EXPECT_EQ(row["cloud_kit_record_id"], row["share_token"]);
    for (const char* role : {"alice", "bob", "rita"})
        EXPECT_EQ(seen(role, token), "March 漢字|true") << role;
    const auto before = shares();
    ASSERT_EQ(before.size(), 2U);
    EXPECT_EQ(before[0], row);

    EXPECT_EQ(outputOf({"shares", "stop", before[1]["id"].get<std::string>()}), "");
    for (const char* role : {"alice", "bob", "rita", "admin"})
        EXPECT_EQ(seen(role, token), "") << role;
    EXPECT_EQ(seen("rita", row["share_token"].get<std::string>()), "Kept|true");
    Json stopped = before[1];
    stopped["is_active"] = false;
    EXPECT_THAT(shares(), ElementsAre(row, stopped));
}

}  // namespace
}  // namespace quorvane
