#include "cloud/postgresql/support/PostgresScene.h"
#include "desktop/support/Waiting.h"

#include <fstream>
#include <future>
#include <unistd.h>

namespace quorvane {
namespace {

using namespace platform;
using enum DatabaseScope;
using Kind = CloudFailure::Kind;
using postgresql::CancelToken;
using postgresql::PostgresConnection;
using postgresql::PostgresError;

constexpr const char* activeStatements =
    "SELECT count(*) FROM pg_stat_activity WHERE usename = 'alice' AND state = 'active'";
constexpr const char* waitingStatements = "SELECT count(*) FROM pg_stat_activity WHERE wait_event_type = 'Lock'";

class CallingOffTest : public PostgresScene {
protected:
    /// How a call failed and how long after `act` it did, while it runs on a thread of its own.
    struct Outcome {
        Kind kind;
        Seconds delay;
    };
    static Outcome outcome(const std::function<void()>& call, const std::function<void()>& act) {
        auto ended = std::async(std::launch::async, [&] {
            const Kind kind = failureOf(call).kind();
            return std::pair(kind, uptime());
        });
        act();
        const Seconds begin = uptime();
        const auto [kind, end] = ended.get();
        return {kind, end - begin};
    }
};

TEST_F(CallingOffTest, AServerThatStopsAnsweringIsGivenUpInTime) {
    start();
    const auto alice = session("alice", {}, {.connectPatience = 0.5s, .patience = 0.5s});
    EXPECT_EQ(alice->count(privateData, "A"), 0U);
    server().pause();
    for (int call = 0; call < 2; ++call) {  // on the connection that there is, and on a new one
        const Seconds begin = uptime();
        EXPECT_EQ(failureOf([&] { (void)alice->count(privateData, "A"); }).kind(), Kind::timedOut);
        EXPECT_LT(uptime() - begin, 2.5s);
    }
    const auto other = session("alice", {}, {.connectPatience = 30s});
    const Outcome seen = outcome([&] { (void)other->count(privateData, "A"); }, [&] { other->cancel(); });
    EXPECT_EQ(seen.kind, Kind::cancelled);
    EXPECT_LT(seen.delay, 2s);
    std::string reason;
    EXPECT_EQ(other->accountStatus(&reason), AccountStatus::couldNotDetermine);
    server().resume();
    EXPECT_EQ(alice->count(privateData, "A"), 0U);
}

TEST_F(CallingOffTest, AStatementThatIsCancelledOrTakesTooLongEndsOnTheServerToo) {
    start();
    (void)session()->modify(privateData, {activity("A")});
    const CancelToken token;
    PostgresConnection other({}, token);
    (void)other.execute("BEGIN");
    (void)other.execute("UPDATE quorvane.private_records SET fields = '{}'");

    const auto alice = session();
    const Outcome cancelled = outcome([&] { (void)alice->modify(privateData, {activity("A")}); },
                                      [&] {
                                          EXPECT_TRUE(answers(waitingStatements, "1"));
                                          alice->cancel();
                                      });
    EXPECT_EQ(cancelled.kind, Kind::cancelled);
    EXPECT_LT(cancelled.delay, 2s);
    EXPECT_TRUE(answers(activeStatements, "0"));

    const auto hasty = session("alice", {}, {.patience = 0.5s});
    EXPECT_EQ(failureOf([&] {
                  (void)hasty->modify(privateData, {activity(""), activity("A")});
              }).kind(),
              Kind::timedOut);  // one by one
    EXPECT_TRUE(answers(activeStatements, "0"));

    const auto slow = session("alice", {"options=-c statement_timeout=200"});
    EXPECT_EQ(failureOf([&] { (void)slow->modify(privateData, {activity("A")}); }).kind(), Kind::timedOut);
    EXPECT_EQ(slow->count(privateData, "ActivityRecord"), 1U);
    (void)other.execute("ROLLBACK");
    EXPECT_EQ(session()->record(privateData, "A"), activity("A"));
}

TEST_F(CallingOffTest, RowsCanBeCalledOffHalfWay) {
    start();
    environment_.set("PGSERVICEFILE", server().serviceFile().string());
    CancelToken token;
    PostgresConnection connection({}, token);
    int rows = 0;
    const auto read = [&] {
        connection.forEachRow("SELECT repeat('x', 1000), generate_series(1, 100000000)", {},
                              [&](const postgresql::PostgresRow&) {
                                  if (++rows == 1000) token.cancel();
                              });
    };
    const Seconds begin = uptime();
    EXPECT_THROW(read(), PostgresError);
    EXPECT_LT(uptime() - begin, 2s);
    EXPECT_FALSE(connection.isOpen());
    EXPECT_TRUE(answers(activeStatements, "0"));
}

TEST_F(CallingOffTest, AHundredThousandRowsPassThroughTheMemoryOfOne) {
    start();
    environment_.set("PGSERVICEFILE", server().serviceFile().string());
    const auto residentPages = [] {
        long size = 0, resident = 0;
        std::ifstream("/proc/self/statm") >> size >> resident;
        return resident;
    };
    const CancelToken token;
    PostgresConnection connection({}, token);
    const long before = residentPages();
    int rows = 0;
    connection.forEachRow("SELECT n, repeat('x', 600) FROM generate_series(1, 100000) AS s(n)", {},
                          [&](const postgresql::PostgresRow& row) { EXPECT_EQ(row.text(0), std::to_string(++rows)); });
    EXPECT_EQ(rows, 100'000);
    EXPECT_LT((residentPages() - before) * ::sysconf(_SC_PAGESIZE), 8 << 20);
    EXPECT_TRUE(connection.isOpen());
}

}  // namespace
}  // namespace quorvane
