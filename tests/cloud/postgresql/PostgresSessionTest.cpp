#include "cloud/postgresql/PostgresSession.h"

#include "cloud/postgresql/support/PostgresScene.h"

#include <algorithm>
#include <fmt/format.h>
#include <future>
#include <gmock/gmock.h>

namespace quorvane {
namespace {

using namespace platform;
using Kind = CloudFailure::Kind;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

constexpr auto privateData = DatabaseScope::privateData;
constexpr auto publicData = DatabaseScope::publicData;

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
    std::vector<CloudRecord> records;
    records.reserve(100);
    for (int i = 0; i < 94; ++i)
        records.push_back(activity(fmt::format("R{:02}", i), "secret \0 \xff"s));
    CloudRecord longType = activity("long type");
    longType.recordType = std::string(65, 'T');
    const std::vector<std::pair<CloudRecord, std::string>> bad{
        {activity(""), "it is too large, or its name or type can't be taken (23514)"},
        {activity(std::string(256, 'x')), "it is too large, or its name or type can't be taken (23514)"},
        {longType, "it is too large, or its name or type can't be taken (23514)"},
        {activity("large", std::string(1'048'577, 'x')), "it is too large, or its name or type can't be taken (23514)"},
        {activity("broken\xff"), "it holds what a database can't store (22021)"},
        {activity("taken"), "the name belongs to a record of another type"},
    };
    std::vector<SaveResult> expected;
    for (std::size_t i = 0; i < bad.size(); ++i)
        records.insert(records.begin() + static_cast<std::ptrdiff_t>(i * 19), bad[i].first);
    for (const CloudRecord& record : records) {
        const auto found = std::find_if(bad.begin(), bad.end(), [&](const auto& one) { return one.first == record; });
        expected.push_back({record.recordName, found == bad.end() ? std::nullopt : std::optional(found->second)});
    }
    EXPECT_EQ(alice->modify(privateData, records), expected);
    EXPECT_EQ(alice->count(privateData, "ActivityRecord"), 94U);
    EXPECT_EQ(alice->record(privateData, "R93"), activity("R93", "secret  \xef\xbf\xbd"));

    EXPECT_THAT(
        alice->modify(privateData, {activity("cut\0off"s), activity("good")}),
        ElementsAre(SaveResult{"cut\0off"s, "it holds what a database can't store (22021)"}, SaveResult{"good"}));
    EXPECT_EQ(failureOf([&] { alice->deleteRecord(privateData, "R00\0"s); }).kind(), Kind::refused);
    EXPECT_EQ(alice->count(privateData, "ActivityRecord"), 95U);
}

TEST_F(PostgresSessionTest, ABatchThatOthersDisturbGoesAgainThreeTimes) {
    struct Row {
        const char* sqlState;
        int times;
        bool isSaved;
        std::vector<CloudRecord> records;
    };
    const CloudRecord bad = activity("");
    const Row rows[] = {
        {"40001", 3, true, {activity("A"), activity("B")}},
        {"40P01", 3, true, {activity("A"), activity("B")}},
        {"40001", 4, false, {activity("A"), activity("B")}},
        {"40001", 3, true, {activity("A"), bad, activity("B")}},  // one by one
    };
    start();
    for (const Row& row : rows) {
        SCOPED_TRACE(fmt::format("{} {}", row.sqlState, row.times));
        failOn("B", row.sqlState, row.times);
        const auto alice = session();
        if (row.isSaved) {
            const auto results = alice->modify(privateData, row.records);
            EXPECT_EQ(results.size(), row.records.size());
            EXPECT_EQ(results.back(), SaveResult{"B"});
        } else {
            const CloudFailure failure = failureOf([&] { (void)alice->modify(privateData, row.records); });
            EXPECT_EQ(failure.kind(), Kind::busy);
            EXPECT_THAT(failure.what(), Not(HasSubstr("title")));
        }
        EXPECT_EQ(alice->count(privateData, "ActivityRecord"), row.isSaved ? 2U : 0U);
        server().sql("admin", "DROP FUNCTION quorvane.fail CASCADE; DROP SEQUENCE quorvane.attempts; "
                              "DELETE FROM quorvane.private_records;");
    }
}

TEST_F(PostgresSessionTest, AFullServerRefusesTheBatchAndKeepsTheConnection) {
    start();
    failOn("B", "53100", 1);
    const auto alice = session();
    EXPECT_EQ(failureOf([&] { (void)alice->modify(privateData, {activity("A"), activity("B")}); }).kind(), Kind::full);
    EXPECT_EQ(server().terminateBackends(), 1);
    EXPECT_EQ(session()->count(privateData, "ActivityRecord"), 0U);
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
    const auto modify = [](RecordSession& session) {
        return failureOf([&] { (void)session.modify(privateData, {activity("A"), activity("B")}); });
    };
    std::string reason;
    const auto rita = session("rita");
    EXPECT_EQ(rita->accountStatus(&reason), AccountStatus::restricted);
    EXPECT_THAT(reason, HasSubstr("\"rita\""));
    EXPECT_EQ(modify(*rita).kind(), Kind::restricted);
    EXPECT_EQ(failureOf([&] { (void)rita->query(privateData, {.recordType = "A"}); }).kind(), Kind::restricted);
    EXPECT_EQ(rita->query(publicData, {.recordType = "ActivityShare"}).rows.size(), 0U);

    const auto stranger = session("stranger");
    EXPECT_EQ(stranger->accountStatus(&reason), AccountStatus::noAccount);
    EXPECT_THAT(reason, HasSubstr("quorvane-cli cloud init --user"));
    EXPECT_EQ(modify(*stranger).kind(), Kind::noAccount);

    server().sql("admin", "ALTER ROLE bob SET default_transaction_read_only = on");
    const auto bob = session("bob");
    EXPECT_EQ(bob->accountStatus(&reason), AccountStatus::restricted);
    EXPECT_THAT(reason, HasSubstr("read only"));
    EXPECT_EQ(modify(*bob).kind(), Kind::restricted);
    EXPECT_EQ(bob->count(privateData, "ActivityRecord"), 0U);
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

TEST_F(PostgresSessionTest, NothingThatLiesInTheSearchPathIsTakenForThePartsOfAStatement) {
    start();
    server().sql("admin", R"(
        CREATE SCHEMA alice AUTHORIZATION bob;
        CREATE TABLE public.called (by name);
        GRANT INSERT ON public.called TO PUBLIC;
        CREATE FUNCTION alice.note(jsonb, text) RETURNS jsonb LANGUAGE plpgsql AS
          'BEGIN INSERT INTO public.called VALUES (current_user); RETURN NULL; END';
        CREATE FUNCTION alice.note(text, text) RETURNS boolean LANGUAGE plpgsql AS
          'BEGIN INSERT INTO public.called VALUES (current_user); RETURN true; END';
        CREATE FUNCTION alice.note(jsonb, jsonb) RETURNS jsonb LANGUAGE plpgsql AS
          'BEGIN INSERT INTO public.called VALUES (current_user); RETURN ''{}''; END';
        CREATE OPERATOR alice.-> (FUNCTION = alice.note, LEFTARG = jsonb, RIGHTARG = text);
        CREATE OPERATOR alice.|| (FUNCTION = alice.note, LEFTARG = jsonb, RIGHTARG = jsonb);
        CREATE OPERATOR alice.= (FUNCTION = alice.note, LEFTARG = text, RIGHTARG = text);
        CREATE OPERATOR alice.< (FUNCTION = alice.note, LEFTARG = text, RIGHTARG = text);
        CREATE DOMAIN alice.text AS pg_catalog.int4;
        CREATE DOMAIN alice.jsonb AS pg_catalog.int4;
        CREATE FUNCTION alice.unnest(pg_catalog.text[]) RETURNS SETOF pg_catalog.text LANGUAGE sql AS 'SELECT NULL';
        CREATE FUNCTION alice.count(pg_catalog.text) RETURNS int LANGUAGE sql AS 'SELECT 7';
        GRANT ALL ON SCHEMA alice TO PUBLIC;
        ALTER ROLE alice SET search_path = "$user", pg_catalog;)");
    const auto alice = session();
    for (int i = 0; i < 2; ++i)
        EXPECT_THAT(alice->modify(privateData, {activity("A"), activity("B")}),
                    ElementsAre(SaveResult{"A"}, SaveResult{"B"}));
    RecordQuery query{.recordType = "ActivityRecord", .equals = {{"windowTitle", "title"}}, .limit = 1};
    query.after = alice->query(privateData, query).next;
    EXPECT_THAT(alice->query(privateData, query).rows, ElementsAre(activity("A")));
    EXPECT_EQ(alice->count(privateData, "ActivityRecord"), 2U);
    alice->deleteRecord(privateData, "A");
    EXPECT_EQ(server().sql("admin", "SELECT count(*) FROM public.called"), "0");
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
    struct Row {
        PostgresSetUp::Schema schema;
        const char* statement;
        Kind kind;
        const char* words;
    };
    const Row rows[] = {
        {PostgresSetUp::Schema::none, "", Kind::noAccount, "cloud init"},
        {PostgresSetUp::Schema::first, "", Kind::outdated, "older than this program"},
        {PostgresSetUp::Schema::newest,
         "CREATE OR REPLACE FUNCTION quorvane.version() RETURNS integer LANGUAGE sql STABLE AS 'SELECT 3'",
         Kind::outdated, "This program is older"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.words);
        start({.schema = row.schema});
        if (*row.statement) server().sql("owner", row.statement);
        const auto alice = session();
        std::string reason;
        EXPECT_EQ(alice->accountStatus(&reason), AccountStatus::noAccount);
        EXPECT_THAT(reason, HasSubstr(row.words));
        EXPECT_EQ(failureOf([&] { (void)alice->modify(privateData, {activity("A")}); }).kind(), row.kind);
    }
}

}  // namespace
}  // namespace quorvane
