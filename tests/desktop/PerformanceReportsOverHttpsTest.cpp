#include "diagnostics/performance/PerformanceReportUploader.h"

#include "desktop/support/Waiting.h"
#include "desktop/support/WebServer.h"
#include "diagnostics/performance/PackedBytes.h"
#include "platform/linux/http/QtHttpClient.h"
#include "platform/linux/loop/QtRunLoop.h"
#include "platform/linux/loop/ThreadSerialQueue.h"
#include "platform/simulated/RecordingSystemLog.h"
#include "support/Matching.h"
#include "support/RecordingConsole.h"

#include <algorithm>

namespace quorvane {
namespace {

using platform::HttpExchange;
using platform::HttpRequest;
using platform::HttpResult;
using platform::QtHttpClient;

/// The real client with a shorter patience.
class HastyHttpClient final : public platform::HttpClient {
public:
    explicit HastyHttpClient(const std::string& authority) : client_("Quorvane", authority) {}

    [[nodiscard]] std::unique_ptr<HttpExchange> send(const HttpRequest& request,
                                                     std::function<void(const HttpResult&)> completion) override {
        auto hasty = request;
        hasty.timeout = 0.5s;
        return client_.send(hasty, std::move(completion));
    }

private:
    QtHttpClient client_;
};

class PerformanceReportsOverHttpsTest : public testing::Test {
protected:
    static void SetUpTestSuite() { server = std::make_unique<WebServer>(); }
    static void TearDownTestSuite() { server.reset(); }

    /// An uploader of its own with an empty spool.
    [[nodiscard]] std::unique_ptr<PerformanceReportUploader> uploader(const std::string& authority,
                                                                      const std::string& host) {
        return std::make_unique<PerformanceReportUploader>(PerformanceReportUploader::Parts{
            .runLoop = loop,
            .logger = logger,
            .queue = std::make_unique<platform::ThreadSerialQueue>("reports"),
            .makeTransport = [authority] { return std::make_unique<HastyHttpClient>(authority); },
            .spoolDirectory = folder / "spool",
            .host = host,
            .userAgent = "Quorvane/1.2.0"});
    }

    [[nodiscard]] bool hasLine(const std::string& part) const {
        return std::ranges::any_of(console.lines(),
                                   [&](const std::string& line) { return line.find(part) != std::string::npos; });
    }

    static std::unique_ptr<WebServer> server;
    TemporaryFolder folder;
    platform::QtRunLoop loop;
    platform::RecordingSystemLog systemLog;
    RecordingConsole console;
    AppLogger logger{loop, systemLog, console, {}};
};

std::unique_ptr<WebServer> PerformanceReportsOverHttpsTest::server;

TEST_F(PerformanceReportsOverHttpsTest, EveryEndOfARequestLeavesTheReportWhereItBelongs) {
    const struct {
        const char* answer;
        const char* outcome;
        std::size_t left;
        const char* failure = "";
        const char* host = "localhost";
    } rows[] = {
        {"200", "delivered", 0},
        {"404", "rejected", 0},
        {"301", "retryLater", 1},
        {"hang", "retryLater", 1, "稍后重试：there was no whole answer within 0.5 s"},
        {"200", "retryLater", 1, "host name did not match", "127.0.0.1"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.answer) + row.failure);
        server->publish("perf-reports", row.answer);
        console.clear();
        const auto sender = uploader(server->authority(), row.host + (":" + server->port()));
        sender->submit({.reportID = "r", .callStacks = row.answer});
        ASSERT_TRUE(waitUntil([&] { return hasLine(std::string("r.json.gz 发送结果 ") + row.outcome); }));
        EXPECT_TRUE(waitUntil([&] { return sender->pendingCount() == row.left; }));
        EXPECT_THAT(console.lines(), Contains(HasSubstr(row.failure)));
        sender->discardPending();
        EXPECT_TRUE(waitUntil([&] { return sender->pendingCount() == 0; }));
    }
}

TEST_F(PerformanceReportsOverHttpsTest, WhatAnEarlierRunCouldNotSendArrivesAtTheNextAsItWas) {
    server->publish("perf-reports", "500");
    const auto before = server->posted("perf-reports").size();
    const PerformanceReport report{.reportID = "r", .callStacks = "#0 spin 日志"};
    const auto host = "localhost:" + server->port();
    auto first = uploader(server->authority(), host);
    first->submit(report);
    ASSERT_TRUE(waitUntil([&] { return hasLine("retryLater"); }));
    first.reset();
    server->publish("perf-reports", "202");
    const auto second = uploader(server->authority(), host);
    second->flushPending();
    ASSERT_TRUE(waitUntil([&] { return hasLine("delivered"); }));
    const auto posted = server->posted("perf-reports");
    ASSERT_THAT(posted, SizeIs(before + 2));
    EXPECT_EQ(posted[before].body, posted[before + 1].body);
    EXPECT_EQ(parsePerformanceReport(unpacked(posted[before].body)), report);
}

}  // namespace
}  // namespace quorvane
