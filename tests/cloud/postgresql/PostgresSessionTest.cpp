#include "cloud/postgresql/PostgresSession.h"

#include "cloud/postgresql/support/PostgresScene.h"

#include <fmt/format.h>
#include <future>

namespace quorvane {
namespace {

using namespace platform;
using enum DatabaseScope;
using Kind = CloudFailure::Kind;

class PostgresSessionTest : public PostgresScene {
protected:
    /// Lets each row of the name fail with the code so often.
    void failOn(const std::string& name, const std::string& sqlState, int times) {
        server().sql("admin", fmt::format(R"(
            CREATE SEQUENCE quorvane.attempts;
            CREATE FUNCTION quorvane.fail() RETURNS trigger LANGUAGE plpgsql SECURITY DEFINER AS $$ BEGIN
              IF NEW.record_name = '{}' AND nextval('quorvane.attempts') <= {} THEN
                RAISE EXCEPTION USING ERRCODE = '{}', MESSAGE = NEW.fields::text;
              END IF;
              RETURN NEW;
            END $$;
            CREATE TRIGGER fail BEFORE INSERT ON quorvane.private_records
              FOR EACH ROW EXECUTE FUNCTION quorvane.fail();)",
                                          name, times, sqlState));
    }
};

TEST_F(PostgresSessionTest, SixBadRecordsAmongAHundredLeaveTheOthersSaved) {
    using namespace std::string_literals;
    start();
    const auto alice = session();
    (void)alice->modify(privateData, {{"Rule", "taken", {}}});
    const std::string tooLarge = "it is too large, or its name or type can't be taken (23514)";
    const std::string notStorable = "it holds what a database can't store (22021)";
    CloudRecord longType = activity("long type");
    longType.recordType = std::string(65, 'T');
    const std::vector<std::pair<CloudRecord, std::string>> bad{
        {activity(""), tooLarge},
        {activity(std::string(256, 'x')), tooLarge},
        {longType, tooLarge},
        {activity("large", std::string(1'048'577, 'x')), tooLarge},
        {activity("broken\xff"), notStorable},
        {activity("taken"), "the name belongs to a record of another type"},
    };
    std::vector<CloudRecord> records;
    std::vector<SaveResult> expected;
    for (std::size_t i = 0; i < 100; ++i) {
        const bool isBad = i % 19 == 0;
        records.push_back(isBad ? bad[i / 19].first : activity(fmt::format("R{:02}", i), "secret \0 \xff"s));
        expected.push_back({records.back().recordName, isBad ? std::optional(bad[i / 19].second) : std::nullopt});
    }
    EXPECT_EQ(alice->modify(privateData, records), expected);
    EXPECT_EQ(alice->count(privateData, "ActivityRecord"), 94U);
    EXPECT_EQ(alice->record(privateData, "R99"), activity("R99", "secret  \xef\xbf\xbd"));

    EXPECT_THAT(alice->modify(privateData, {activity("cut\0off"s), activity("good")}),
                ElementsAre(SaveResult{"cut\0off"s, notStorable}, SaveResult{"good"}));
    EXPECT_EQ(failureOf([&] { alice->deleteRecord(privateData, "R01\0"s); }).kind(), Kind::refused);
    EXPECT_EQ(alice->count(privateData, "ActivityRecord"), 95U);
}

TEST_F(PostgresSessionTest, ABatchThatOthersDisturbGoesAgainThreeTimesAndOneThatHasNoRoomNever) {
    const std::vector<CloudRecord> both{activity("A"), activity("B")};
    const std::tuple<const char*, int, std::optional<Kind>, std::vector<CloudRecord>> rows[] = {
        {"40001", 3, {}, both},
        {"40P01", 3, {}, both},
        {"40001", 3, {}, {activity("A"), activity(""), activity("B")}},  // one by one
        {"40001", 4, Kind::busy, both},
        {"53100", 1, Kind::full, both},
    };
    start();
    for (const auto& [sqlState, times, kind, records] : rows) {
        SCOPED_TRACE(fmt::format("{} {}", sqlState, times));
        failOn("B", sqlState, times);
        const auto alice = session();
        if (kind) {
            const CloudFailure failure = failureOf([&] { (void)alice->modify(privateData, both); });
            EXPECT_EQ(failure.kind(), *kind);
            EXPECT_EQ(std::string(failure.what()).find("title") == std::string::npos, *kind == Kind::busy);
        } else {
            EXPECT_EQ(alice->modify(privateData, records).back(), SaveResult{"B"});
        }
        EXPECT_EQ(alice->count(privateData, "ActivityRecord"), kind ? 0U : 2U);
        EXPECT_EQ(server().terminateBackends(), 1) << "the connection was kept";
        server().sql("admin", "DROP FUNCTION quorvane.fail CASCADE; DROP SEQUENCE quorvane.attempts; "
                              "DELETE FROM quorvane.private_records;");
    }
}

TEST_F(PostgresSessionTest, ACutConnectionFailsOneCallAndTheNextConnectsAnew) {
    start();
    const auto alice = session();
    EXPECT_EQ(alice->count(privateData, "ActivityRecord"), 0U);
    EXPECT_EQ(server().terminateBackends(), 1);
    EXPECT_EQ(failureOf([&] { (void)alice->count(privateData, "ActivityRecord"); }).kind(), Kind::lost);
    EXPECT_EQ(alice->modify(privateData, {activity("A")}), std::vector{SaveResult{"A"}});

    const postgresql::CancelToken token;
    postgresql::PostgresConnection other({}, token);
    (void)other.execute("BEGIN");
    (void)other.execute("UPDATE quorvane.private_records SET fields = '{}'");
    auto saved = std::async(std::launch::async, [&] {
        return failureOf([&] { (void)alice->modify(privateData, {activity("A"), activity("B")}); }).kind();
    });
    ASSERT_TRUE(answers("SELECT count(*) FROM pg_stat_activity WHERE wait_event_type = 'Lock'", "1"));
    EXPECT_EQ(server().terminateBackends(), 2);
    EXPECT_EQ(saved.get(), Kind::lost);
    EXPECT_EQ(alice->count(privateData, "ActivityRecord"), 1U);
}

TEST_F(PostgresSessionTest, RolesAndServersThatTakeNoWritesAreToldApart) {
    start();
    server().sql("admin", "ALTER ROLE bob SET default_transaction_read_only = on");
    const std::tuple<const char*, AccountStatus, Kind, const char*> rows[] = {
        {"rita", AccountStatus::restricted, Kind::restricted, "\"rita\""},
        {"stranger", AccountStatus::noAccount, Kind::noAccount, "quorvane-cli cloud init --user"},
        {"bob", AccountStatus::restricted, Kind::restricted, "read only"},
    };
    for (const auto& [role, status, kind, words] : rows) {
        SCOPED_TRACE(role);
        const auto asked = session(role);
        std::string reason;
        EXPECT_EQ(asked->accountStatus(&reason), status);
        EXPECT_THAT(reason, HasSubstr(words));
        EXPECT_EQ(failureOf([&] { (void)asked->modify(privateData, {activity("A"), activity("B")}); }).kind(), kind);
    }
    EXPECT_EQ(session("bob")->count(privateData, "ActivityRecord"), 0U);
    const auto rita = session("rita");
    EXPECT_EQ(failureOf([&] { (void)rita->query(privateData, {.recordType = "A"}); }).kind(), Kind::restricted);
    EXPECT_EQ(rita->query(publicData, {.recordType = "ActivityShare"}).rows.size(), 0U);
}

TEST_F(PostgresSessionTest, AShareOfSomebodyElseIsRefusedAmongOwnOnesAndRestrictedAlone) {
    start();
    EXPECT_EQ(session()->modify(publicData, {share("hers")}), std::vector{SaveResult{"hers"}});
    const auto bob = session("bob");
    EXPECT_THAT(bob->modify(publicData, {share("hers", "forged"), share("his")}),
                ElementsAre(SaveResult{"hers", "the name belongs to somebody else, or it may not be written (42501)"},
                            SaveResult{"his"}));
    EXPECT_EQ(failureOf([&] { (void)bob->modify(publicData, {share("hers", "forged")}); }).kind(), Kind::restricted);
    EXPECT_EQ(failureOf([&] { bob->deleteRecord(publicData, "hers"); }).kind(), Kind::recordNotFound);
    EXPECT_EQ(bob->record(publicData, "hers"), share("hers"));
}

TEST_F(PostgresSessionTest, ARoleThatNoPolicyHoldsSeesItsOwnRecordsOnly) {
    start();
    (void)session()->modify(privateData, {activity("A")});
    const auto admin = session("admin");
    EXPECT_EQ(admin->count(privateData, "ActivityRecord"), 0U);
    EXPECT_EQ(admin->record(privateData, "A"), std::nullopt);
    EXPECT_TRUE(admin->query(privateData, {.recordType = "ActivityRecord"}).rows.empty());
    EXPECT_EQ(failureOf([&] { admin->deleteRecord(privateData, "A"); }).kind(), Kind::recordNotFound);
    EXPECT_EQ(session()->count(privateData, "ActivityRecord"), 1U);
}

TEST_F(PostgresSessionTest, ARowThatCannotBeReadIsNamedAndTheOthersCome) {
    start();
    const auto alice = session();
    (void)alice->modify(privateData, {activity("A"), activity("B"), activity("C")});
    server().sql("admin", "UPDATE quorvane.private_records SET fields = ('{\"secret\":' || repeat('[', 101) || "
                          "repeat(']', 101) || '}')::jsonb WHERE record_name = 'B'");
    EXPECT_THAT(
        alice->query(privateData, {.recordType = "ActivityRecord"}).rows,
        ElementsAre(activity("C"), UnreadableRow{"B", "its fields can't be read as JSON at byte 112"}, activity("A")));
    EXPECT_STREQ(failureOf([&] { (void)alice->record(privateData, "B"); }).what(),
                 "Record B can't be read: its fields can't be read as JSON at byte 112");
}

TEST_F(PostgresSessionTest, ADatabaseOfAnotherVersionIsLeftAlone) {
    const std::tuple<PostgresSetUp::Schema, const char*, Kind, const char*> rows[] = {
        {PostgresSetUp::Schema::none, "", Kind::noAccount, "cloud init"},
        {PostgresSetUp::Schema::first, "", Kind::outdated, "older than this program"},
        {PostgresSetUp::Schema::newest,
         "CREATE OR REPLACE FUNCTION quorvane.version() RETURNS integer LANGUAGE sql STABLE AS 'SELECT 3'",
         Kind::outdated, "This program is older"},
    };
    for (const auto& [schema, statement, kind, words] : rows) {
        SCOPED_TRACE(words);
        start({.schema = schema});
        if (*statement) server().sql("owner", statement);
        const auto alice = session();
        std::string reason;
        EXPECT_EQ(alice->accountStatus(&reason), AccountStatus::noAccount);
        EXPECT_THAT(reason, HasSubstr(words));
        EXPECT_EQ(failureOf([&] { (void)alice->modify(privateData, {activity("A")}); }).kind(), kind);
    }
}

}  // namespace
}  // namespace quorvane
