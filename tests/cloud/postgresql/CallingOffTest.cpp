#include "cloud/postgresql/support/PostgresScene.h"
#include "desktop/support/Waiting.h"

#include <arpa/inet.h>
#include <charconv>
#include <fmt/format.h>
#include <future>
#include <netinet/in.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

namespace quorvane {
namespace {

using namespace platform;
using Kind = CloudFailure::Kind;
using postgresql::CancelToken;
using postgresql::ConnectionSettings;
using postgresql::PostgresConnection;
using postgresql::PostgresError;

constexpr auto privateData = DatabaseScope::privateData;
constexpr const char* activeStatements =
    "SELECT count(*) FROM pg_stat_activity WHERE usename = 'alice' AND state = 'active'";
constexpr const char* waitingStatements = "SELECT count(*) FROM pg_stat_activity WHERE wait_event_type = 'Lock'";

/// Takes connections and never says a word.
class SilentServer {
public:
    SilentServer() : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        auto* const any = reinterpret_cast<sockaddr*>(&address);
        if (::bind(socket_, any, size) != 0 || ::listen(socket_, 8) != 0 || ::getsockname(socket_, any, &size) != 0)
            throw std::runtime_error("no socket");
        port_ = ntohs(address.sin_port);
    }
    SilentServer(const SilentServer&) = delete;
    SilentServer& operator=(const SilentServer&) = delete;
    ~SilentServer() { ::close(socket_); }

    [[nodiscard]] ConnectionSettings settings() const {
        return {.service = "",
                .overrides = {{"hostaddr", "127.0.0.1"}, {"port", std::to_string(port_)}, {"user", "alice"}},
                .connectPatience = 0.3s};
    }

private:
    int socket_;
    int port_ = 0;
};

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

TEST_F(CallingOffTest, AServerThatSaysNothingIsGivenUpInTime) {
    const SilentServer silent;
    postgresql::PostgresSession session(silent.settings());
    const Seconds begin = uptime();
    EXPECT_EQ(failureOf([&] { (void)session.count(privateData, "A"); }).kind(), Kind::timedOut);
    EXPECT_LT(uptime() - begin, 1.5s);

    ConnectionSettings patient = silent.settings();
    patient.connectPatience = 30s;
    postgresql::PostgresSession cancelled(patient);
    const Outcome seen = outcome([&] { (void)cancelled.count(privateData, "A"); }, [&] { cancelled.cancel(); });
    EXPECT_EQ(seen.kind, Kind::cancelled);
    EXPECT_LT(seen.delay, 1s);
    std::string reason;
    EXPECT_EQ(cancelled.accountStatus(&reason), AccountStatus::couldNotDetermine);
}

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
        const std::string statm = contentOf("/proc/self/statm");
        long pages = 0;
        const auto at = statm.find(' ') + 1;
        std::from_chars(statm.data() + at, statm.data() + statm.size(), pages);
        return pages;
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
