#include "diagnostics/performance/PerformanceReportUploader.h"

#include "diagnostics/performance/PackedBytes.h"
#include "diagnostics/performance/PerformanceReportDelivery.h"
#include "platform/simulated/SimulatedHttpClient.h"
#include "platform/simulated/SimulatedSerialQueue.h"
#include "support/LoggingTest.h"
#include "support/Mapped.h"
#include "support/TemporaryFolder.h"

#include <fmt/format.h>
#include <limits>

namespace quorvane {
namespace {

using platform::HttpFailure;
using platform::HttpRequest;
using platform::HttpResponse;
using platform::HttpResult;

const std::string url = "https://telemetry.example.org/api/v1/public/telemetry/perf-reports";

class PerformanceReportUploaderTest : public LoggingTest {
protected:
    [[nodiscard]] std::unique_ptr<PerformanceReportUploader> make(std::optional<std::filesystem::path> spoolDirectory,
                                                                  const std::string& host) {
        return std::make_unique<PerformanceReportUploader>(PerformanceReportUploader::Parts{
            loop, logger, std::make_unique<platform::SimulatedSerialQueue>(loop),
            [this] { return std::make_unique<platform::SimulatedHttpClient>(loop, network); },
            std::move(spoolDirectory), host, "Quorvane/1.2.0 (345; Linux 6.1; x86_64)"});
    }

    /// Spooled files "1.json.gz" (the oldest) to "n.json.gz", each of which holds its name.
    void spool(int count) {
        std::filesystem::create_directories(directory);
        for (int i = 1; i <= count; ++i) {
            const auto name = fmt::format("{}.json.gz", i);
            writeFile(directory / name, name);
            std::filesystem::last_write_time(directory / name, std::filesystem::file_time_type::clock::now() -
                                                                   std::chrono::hours(count - i + 1));
        }
    }

    void answer(HttpResult result) { network.answers[url] = std::move(result); }

    [[nodiscard]] std::vector<std::string> sentBodies() const {
        return mapped(network.requests, [](const auto& request) { return request.body.value_or(""); });
    }

    void flush() {
        uploader->flushPending();
        loop.playFor(10s);
    }

    TemporaryFolder folder;
    std::filesystem::path directory = folder / "perf-reports";
    platform::SimulatedHttpClient::Network network;
    std::unique_ptr<PerformanceReportUploader> uploader = make(directory, "telemetry.example.org");
};

TEST_F(PerformanceReportUploaderTest, AReportIsSentAsItLiesOnDiskAndThenGone) {
    answer(HttpResponse{.status = 202});
    const PerformanceReport report{.reportID = "r", .callStacks = "#0 spin"};
    uploader->submit(report);
    loop.runPosted();
    EXPECT_EQ(uploader->pendingCount(), 1U);
    const auto bytes = contentOf(directory / "r.json.gz");
    loop.playFor(1s);
    EXPECT_EQ(parsePerformanceReport(unpacked(bytes)), report);
    EXPECT_THAT(network.requests,
                ElementsAre(HttpRequest{.method = "POST",
                                        .url = url,
                                        .headers = {{"Content-Type", "application/json"},
                                                    {"Content-Encoding", "gzip"},
                                                    {"User-Agent", "Quorvane/1.2.0 (345; Linux 6.1; x86_64)"}},
                                        .body = bytes,
                                        .maximumBytes = 1 << 20,
                                        .timeout = 60s}));
    EXPECT_EQ(uploader->pendingCount(), 0U);
    EXPECT_THAT(console.lines(), ElementsAre(EndsWith("[INFO] [PerfWatchdog] 性能报告：r.json.gz 发送结果 delivered")));
}

TEST_F(PerformanceReportUploaderTest, AnAnswerDeliversRejectsOrAsksForAPause) {
    using enum PerformanceReportSendOutcome;
    const std::pair<PerformanceReportSendOutcome, std::vector<int>> rows[] = {
        {delivered, {200, 299}},
        {rejected, {400, 428, 430, 499}},
        {retryLater, {-1, 0, 100, 199, 300, 399, 429, 500, 599, 600}}};
    for (const auto& [outcome, statuses] : rows)
        for (const int status : statuses)
            EXPECT_EQ(PerformanceReportDelivery::outcome(status), outcome) << status;
}

TEST_F(PerformanceReportUploaderTest, AFlushGoesOnAfterARejectionAndEndsAtTheFirstPause) {
    const std::tuple<HttpResult, std::size_t, std::size_t, const char*> rows[] = {
        {HttpResponse{.status = 200}, 3, 0, "1.json.gz 发送结果 delivered"},
        {HttpResponse{.status = 404}, 3, 0, "1.json.gz 发送结果 rejected"},
        {HttpResponse{.status = 429}, 1, 3, "1.json.gz 发送结果 retryLater"},
        {HttpFailure{.cause = "no route"}, 1, 3, "[WARNING] [PerfWatchdog] 性能报告：网络失败，稍后重试：no route"}};
    for (const auto& [given, requests, left, line] : rows) {
        SCOPED_TRACE(line);
        network.requests.clear();
        console.clear();
        spool(3);
        answer(given);
        flush();
        EXPECT_THAT(network.requests, SizeIs(requests));
        EXPECT_EQ(sentBodies().front(), "1.json.gz");
        EXPECT_EQ(uploader->pendingCount(), left);
        EXPECT_THAT(console.lines().front(), HasSubstr(line));
    }
    answer(HttpResponse{.status = 200});
    network.requests.clear();
    flush();
    EXPECT_THAT(sentBodies(), ElementsAre("1.json.gz", "2.json.gz", "3.json.gz"));
}

TEST_F(PerformanceReportUploaderTest, TheSixthReportCostsTheOldestBeforeAnythingIsSent) {
    spool(5);
    answer(HttpResponse{.status = 429});
    uploader->submit({.reportID = "new"});
    loop.playFor(10s);
    EXPECT_THAT(sentBodies(), ElementsAre("2.json.gz"));
    EXPECT_EQ(uploader->pendingCount(), 5U);
}

TEST_F(PerformanceReportUploaderTest, AFlushThatIsAskedForMeanwhileFollowsAndSendsNothingTwice) {
    spool(2);
    answer(HttpResponse{.status = 200});
    uploader->flushPending();
    uploader->flushPending();
    uploader->submit({.reportID = "new"});
    loop.playFor(10s);
    EXPECT_THAT(network.requests, SizeIs(3));
    EXPECT_EQ(uploader->pendingCount(), 0U);
}

TEST_F(PerformanceReportUploaderTest, WhatIsDiscardedInTheMiddleOfAFlushIsNotSentAndFlushesGoOn) {
    spool(3);
    answer(HttpResponse{.status = 200});
    uploader->flushPending();
    loop.runPosted();
    uploader->discardPending();
    loop.playFor(10s);
    EXPECT_THAT(sentBodies(), ElementsAre("1.json.gz"));
    EXPECT_TRUE(std::filesystem::is_empty(directory));
    spool(1);
    flush();
    EXPECT_EQ(uploader->pendingCount(), 0U);
}

TEST_F(PerformanceReportUploaderTest, WithoutAHostNothingIsAskedForAndNothingStays) {
    for (const char* host : {"", "a b", "host/path", "user@host"}) {
        SCOPED_TRACE(host);
        uploader = make(directory, host);
        spool(2);
        uploader->submit({.reportID = "new"});
        loop.playFor(10s);
        EXPECT_EQ(uploader->pendingCount(), 0U);
        EXPECT_THAT(console.lines().back(), HasSubstr("new.json.gz 发送结果 rejected"));
    }
    EXPECT_THAT(network.requests, IsEmpty());
}

TEST_F(PerformanceReportUploaderTest, WhatCannotBeKeptOrWrittenIsALineInTheLog) {
    writeFile(folder / "file", "");
    const std::tuple<double, std::optional<std::filesystem::path>, std::vector<std::string>> rows[] = {
        {std::numeric_limits<double>::infinity(), directory, {"[ERROR] [PerfWatchdog] 性能报告：编码失败 r"}},
        {0, folder / "file", {"[WARNING] [PerfWatchdog] 性能报告：落盘失败 r："}},
        {0, std::nullopt, {}}};
    for (const auto& [peak, spoolDirectory, expected] : rows) {
        console.clear();
        uploader = make(spoolDirectory, "telemetry.example.org");
        uploader->submit({.reportID = "r", .peakCPUPercent = peak});
        loop.playFor(1s);
        ASSERT_EQ(console.lines().size(), expected.size());
        for (const std::string& line : expected)
            EXPECT_THAT(console.lines().front(), HasSubstr(line));
        EXPECT_EQ(uploader->pendingCount(), 0U);
    }
    EXPECT_FALSE(std::filesystem::exists(directory));
    EXPECT_THAT(network.requests, IsEmpty());
}

TEST_F(PerformanceReportUploaderTest, AnUploaderThatGoesLeavesWhatItWasSending) {
    spool(1);
    network.silent = {url};
    uploader->flushPending();
    loop.playFor(1s);
    EXPECT_THAT(network.requests, SizeIs(1));
    uploader.reset();
    loop.playFor(100s);
    EXPECT_TRUE(std::filesystem::exists(directory / "1.json.gz"));
}

}  // namespace
}  // namespace quorvane
