#include "base/Json.h"
#include "cli/CliFixture.h"
#include "cloud/postgresql/support/PostgresServer.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quorvane {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::MatchesRegex;

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

TEST_F(SharesOnServerTest, WithoutTheServerItSaysWhyAndKeepsWhatIsHere) {
    ASSERT_NE(outputOf({"shares", "create", "--title", "March"}), "");
    const std::string id = shares().at(0)["id"].get<std::string>();
    server->stop();
    for (const Arguments& arguments :
         {Arguments{"shares", "create", "--title", "April"}, {"shares", "stop", id}, {"shares", "list"}}) {
        SCOPED_TRACE(arguments[1]);
        const auto result = run(arguments);
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.err, isRefusal(HasSubstr("同步失败: ")));
    }
    EXPECT_EQ(shares().size(), 2U);
    server->restart();
    EXPECT_EQ(outputOf({"shares", "stop", id}), "");
    EXPECT_EQ(server->sql("admin", "SELECT count(*) FROM quorvane.public_records"), "0");
}

}  // namespace
}  // namespace quorvane
