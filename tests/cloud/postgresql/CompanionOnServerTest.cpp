#include "base/Json.h"
#include "base/Text.h"
#include "cli/CliFixture.h"
#include "cloud/postgresql/support/PostgresServer.h"
#include "support/Matching.h"

#include <algorithm>
#include <fmt/format.h>

namespace quorvane {
namespace {

/// What nobody but its owner may read.
constexpr const char* secret = "Offer for Lighthouse Ltd";

std::string idOf(int number) {
    return fmt::format("{:08X}-0000-4000-8000-0000000000AA", number);
}

std::string line(int number, const std::string& start, const std::string& more) {
    return fmt::format(
        R"({{"entity":"ActivityRecord","id":"{}","start_time":"{}","created_at":"{}","updated_at":"{}"{}}})"
        "\n",
        idOf(number), start, start, start, more);
}

/// A record with a value for every attribute, and another one with the least, by turns.
std::string lineOf(int number) {
    const std::string start =
        fmt::format("2026-{:02}-{:02}T{:02}:{:02}:{:02}.{:06}Z", number / 8000 + 1, number / 300 % 28 + 1,
                    number / 60 % 24, number % 60, number * 7 % 60, number * 37 % 1'000'000);
    if (number % 2 == 0) return line(number, start, R"(,"app_name":"Terminal")");
    return line(
        number, start,
        fmt::format(
            R"(,"end_time":"2026-12-31T23:59:59.999999Z","activity_type":"url","app_bundle_id":"org.example.app")"
            R"(,"app_name":"App {}","window_title":"{} \\ \"{}\" 漢字 \u0001","document_path":"/home/a/{}.txt",)"
            R"("url":"https://example.org/?n={}","category":"工作","tags":"a,b","source":"rule",)"
            R"("confidence":0.1,"billing_status":"billable","device_id":"d","user_local_id":"u")",
            number, secret, number, number, number));
}

std::string linesOf(int count) {
    std::string lines;
    for (int i = 0; i < count; ++i)
        lines += lineOf(i);
    return lines;
}

/// The companion and a server of its own; what it prints never holds what a record says.
class CompanionOnServerTest : public CliTest {
protected:
    void SetUp() override {
        if (!PostgresServer::isInstalled()) GTEST_SKIP() << "there is no PostgreSQL server on this machine";
    }

    void use(const std::filesystem::path& serviceFile) { setting_.environment["PGSERVICEFILE"] = serviceFile.string(); }

    ProgramResult sync(const std::string& store = "store.sqlite") {
        auto result = runBare({"--store", store, "sync", "--json"});
        EXPECT_THAT(result.err, Not(HasSubstr(secret)));
        return result;
    }
    void syncWell(const std::string& out, const std::string& store = "store.sqlite") {
        const auto result = sync(store);
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(result.out, out + "\n");
    }

    /// The records of a store as `dump` writes them, sorted.
    std::vector<std::string> records(const std::string& store = "store.sqlite") {
        auto lines = text::split(runBare({"--store", store, "dump"}).out, '\n');
        std::erase_if(lines,
                      [](const std::string& line) { return !line.starts_with(R"({"entity":"ActivityRecord")"); });
        std::ranges::sort(lines);
        return lines;
    }
};

std::string counts(int toUpload, int uploaded, int refused, int downloaded) {
    return fmt::format(R"({{"to_upload":{},"uploaded":{},"refused":{},"downloaded":{},"unreadable":0}})", toUpload,
                       uploaded, refused, downloaded);
}

TEST_F(CompanionOnServerTest, TwentyThousandRecordsGoUpAndComeDownElsewhereFieldByField) {
    const PostgresServer server;
    use(server.serviceFile());
    load(linesOf(20'000));
    syncWell(counts(20'000, 20'000, 0, 20'000));
    syncWell(counts(0, 0, 0, 10'000));
    syncWell(counts(0, 0, 0, 20'000), "other.sqlite");
    const auto here = records();
    EXPECT_EQ(here.size(), 20'000U);
    EXPECT_TRUE(records("other.sqlite") == here);
    syncWell(counts(0, 0, 0, 10'000), "other.sqlite");
    EXPECT_TRUE(records("other.sqlite") == here);
    EXPECT_EQ(server.sql("admin", "SELECT count(*), count(DISTINCT record_name) FROM quorvane.private_records"),
              "20000|20000");
}

TEST_F(CompanionOnServerTest, AfterABrokenConnectionTheNextSyncFinishesTheRestWithoutDoubles) {
    const PostgresServer server;
    use(server.serviceFile());
    constexpr int count = 6000;
    load(linesOf(count));
    // The connection ends in the middle of the way up, with a batch that is undone.
    server.sql("admin", "CREATE FUNCTION cut() RETURNS trigger LANGUAGE plpgsql AS $$BEGIN "
                        "IF (SELECT count(*) FROM quorvane.private_records) > 3000 THEN "
                        "PERFORM pg_terminate_backend(pg_backend_pid()); END IF; RETURN NULL; END$$; "
                        "CREATE TRIGGER cut AFTER INSERT ON quorvane.private_records EXECUTE FUNCTION cut()");
    const auto cutOff = sync();
    EXPECT_EQ(cutOff.status, 1);
    EXPECT_THAT(cutOff.err, HasSubstr("quorvane-cli: Cloud error: The server ended the connection"));
    EXPECT_EQ(server.sql("alice", "SELECT count(*) FROM quorvane.private_records"), "3000");
    server.sql("admin", "DROP TRIGGER cut ON quorvane.private_records");
    EXPECT_EQ(sync().status, 0);
    EXPECT_EQ(server.sql("alice", "SELECT count(*) FROM quorvane.private_records"), std::to_string(count));
    EXPECT_EQ(sync("other.sqlite").status, 0);
    EXPECT_TRUE(records("other.sqlite") == records());
}

TEST_F(CompanionOnServerTest, OthersReadAShareUntilItIsStopped) {
    const PostgresServer server;
    use(server.serviceFile());
    load("");
    const auto shares = [&] { return parseJson(outputOf({"shares", "list", "--json"})).value_or(Json::array()); };
    const auto seen = [&](const std::string& role, const std::string& token) {
        return server.sql(role, fmt::format("SELECT fields ->> 'title', fields -> 'isActive' FROM "
                                            "quorvane.public_records WHERE record_name = '{}'",
                                            token));
    };
    std::string token = outputOf({"shares", "create", "--title", "March 漢字"});
    EXPECT_THAT(token, MatchesRegex("[0-9a-f]{16}\n"));
    token.pop_back();
    const Json row = parseJson(outputOf({"shares", "create", "--title", "Kept", "--json"})).value_or(Json());
    EXPECT_EQ(row["cloud_kit_record_id"], row["share_token"]);
    for (const char* role : {"alice", "bob", "rita"})
        EXPECT_EQ(seen(role, token), "March 漢字|true") << role;
    const Json before = shares();
    ASSERT_EQ(before.size(), 2U);
    EXPECT_EQ(before[0], row);

    EXPECT_EQ(outputOf({"shares", "stop", before[1]["id"].get<std::string>()}), "");
    for (const char* role : {"alice", "bob", "rita", "admin"})
        EXPECT_EQ(seen(role, token), "") << role;
    EXPECT_EQ(seen("rita", row["share_token"].get<std::string>()), "Kept|true");
    Json stopped = before[1];
    stopped["is_active"] = false;
    EXPECT_EQ(shares(), Json::array({row, stopped}));
}

// What else can fail is tried where the client and its words are tested.
TEST_F(CompanionOnServerTest, WithoutAServiceNothingIsWrittenAndItSaysHow) {
    use(folder_ / "missing.conf");
    const auto result = sync("new.sqlite");
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(
        result.err,
        HasSubstr(
            "quorvane-cli: The cloud is not available. Check how this computer signs in. (there is no libpq service"));
    EXPECT_FALSE(std::filesystem::exists(folder_ / "new.sqlite"));
}

}  // namespace
}  // namespace quorvane
