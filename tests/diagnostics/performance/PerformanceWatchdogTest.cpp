#include "diagnostics/performance/PerformanceReporting.h"

#include "base/Uuid.h"
#include "diagnostics/performance/PackedBytes.h"
#include "platform/simulated/InMemoryUserDefaults.h"
#include "platform/simulated/SimulatedHttpClient.h"
#include "platform/simulated/SimulatedProcessUsage.h"
#include "platform/simulated/SimulatedSerialQueue.h"
#include "platform/simulated/SimulatedStackSampler.h"
#include "support/LoggingTest.h"
#include "support/TemporaryFolder.h"

#include <cstdlib>

namespace quorvane {
namespace {

using platform::HttpResponse;

const std::string uploads = "https://telemetry.example.org/api/v1/public/telemetry/perf-reports";

/// The whole pipeline in simulated time: only the tool, the network and the processor are on paper.
class PerformanceWatchdogTest : public LoggingTest {
protected:
    PerformanceWatchdogTest() {
        network.answers[uploads] = HttpResponse{.status = 202};
        defaults.setValue("perf-reports.enabled", "true");
    }

    void start() {
        reporting = std::make_unique<PerformanceReporting>(PerformanceReporting::Parts{
            .runLoop = loop,
            .logger = logger,
            .defaults = defaults,
            .usage = usage,
            .sampler = sampler,
            .makeQueue = [this](auto) { return std::make_unique<platform::SimulatedSerialQueue>(loop); },
            .makeHttpClient = [this] { return std::make_unique<platform::SimulatedHttpClient>(loop, network); },
            .surroundings = [this] { return surroundings; },
            .application = {.shortVersion = "1.2.0", .build = "345"},
            .system = {.name = "Linux", .version = "6.1", .architecture = "x86_64"},
            .homeDirectory = "/home/ann",
            .spoolDirectory = directory,
            .telemetryHost = host,
            .policy = policy});
        reporting->startWatchdog();
    }

    /// Lets time pass with so much load, which comes in portions.
    void play(Seconds duration, double percent, Seconds portion = 1s) {
        for (Seconds played{}; played < duration; played += portion) {
            usage.burn(percent / 100 * portion.count());
            loop.playFor(portion);
        }
    }

    TemporaryFolder folder;
    std::string host = "telemetry.example.org";
    std::filesystem::path directory = folder / "perf-reports";
    platform::SimulatedHttpClient::Network network;
    platform::SimulatedProcessUsage usage;
    platform::SimulatedStackSampler sampler;
    platform::InMemoryUserDefaults defaults;
    PerformanceWatchdog::Policy policy;
    PerformanceReporting::Surroundings surroundings{
        .hasWindow = true, .isActive = false, .preferredLocalizations = {"zh_Hans"}};
    std::unique_ptr<PerformanceReporting> reporting;
};

TEST_F(PerformanceWatchdogTest, SustainedLoadBecomesOneReportThatTheServerGets) {
    sampler.text = "#0 spin - /opt/acme/q\n#1 /home/ann/q /home/bob/q\n";
    defaults.setValue("perf-reports.install-id", "0f8fad5b-d9cb-469f-a165-70867728950e");
    start();
    play(60s, 5);
    play(6s, 87.25);
    play(60s, 5);

    ASSERT_THAT(network.requests, SizeIs(1));
    auto report = parsePerformanceReport(unpacked(*network.requests.front().body));
    ASSERT_TRUE(report);
    EXPECT_EQ(report->reportID.size(), 36U);
    EXPECT_TRUE(Uuid::parse(report->reportID));
    report->reportID = "any";
    EXPECT_EQ(performanceReportJson(*report),
              R"({"app_id":"quorvane","report_id":"any","install_id":"0f8fad5b-d9cb-469f-a165-70867728950e",)"
              R"("app_version":"1.2.0","build":"345","os_version":"6.1","arch":"x86_64","locale":"zh-Hans",)"
              R"("captured_at":"2026-03-02T09:01:06Z","active_surface":"quorvane.window_inactive",)"
              R"("threshold_percent":30.0,"sustained_seconds":6.0,"peak_cpu_percent":87.3,"average_cpu_percent":87.3,)"
              R"("sample_duration_seconds":2,"call_stacks_format":"linux-eu-stack-v1",)"
              R"("call_stacks":"#0 spin - q\n#1 ~/q /home/_/q\n"})");
    EXPECT_THAT(console.lines(),
                ElementsAre(EndsWith("[WARNING] [PerfWatchdog] 性能报告：CPU 持续 6 秒超过 30%（峰值 87%），开始抓栈"),
                            EndsWith("发送结果 delivered")));
    EXPECT_EQ(reporting->uploader().pendingCount(), 0U);
}

TEST_F(PerformanceWatchdogTest, WhatTheCaptureItselfBurnsTriggersNothing) {
    policy = {.sustainedSeconds = 3s, .cooldown = 0s};  // a single hot sample is enough
    sampler.whileBusy = [this] { usage.burn(100); };
    start();
    play(60s, 5);
    play(3s, 50);
    EXPECT_EQ(sampler.starts, 1);
    play(60s, 5);
    EXPECT_EQ(sampler.starts, 1);
    play(3s, 50);
    EXPECT_EQ(sampler.starts, 2);
}

TEST_F(PerformanceWatchdogTest, AFailedCaptureMakesNoReportAndTheNextOneComesAfterTheCooldown) {
    sampler.status = 2;
    start();
    play(629s, 50);
    EXPECT_EQ(sampler.starts, 1);
    play(4s, 50);
    EXPECT_EQ(sampler.starts, 2);
    EXPECT_THAT(network.requests, IsEmpty());
    EXPECT_FALSE(std::filesystem::exists(directory));
}

TEST_F(PerformanceWatchdogTest, WithoutAYesOrAHostThereIsNoCaptureNoFileAndNoRequest) {
    const std::pair<const char*, std::string> rows[] = {{"", host}, {"false", host}, {"true", ""}};
    for (const auto& [isEnabled, to] : rows) {
        SCOPED_TRACE(isEnabled);
        defaults.setValue("perf-reports.enabled", isEnabled);
        host = to;
        std::filesystem::create_directories(directory);
        writeFile(directory / "old.json.gz", "old");
        start();
        play(1000s, 100);
        EXPECT_EQ(sampler.starts, 0);
        EXPECT_THAT(network.requests, IsEmpty());
        EXPECT_THAT(console.lines(), IsEmpty());
        EXPECT_TRUE(std::filesystem::is_empty(directory));
        EXPECT_EQ(reporting->canReport(), !host.empty());
    }
    EXPECT_EQ(loop.pendingTimers(), 0) << "without a host nothing is watched";
}

TEST_F(PerformanceWatchdogTest, YesAndNoTakeEffectAtOnceAlsoDuringACapture) {
    network.answers[uploads] = HttpResponse{.status = 503};
    defaults.setValue("perf-reports.enabled", "");
    start();
    play(100s, 100);
    reporting->setEnabled(true);
    EXPECT_EQ(defaults.value("perf-reports.enabled"), "true");
    EXPECT_THAT(console.lines().back(), EndsWith("[INFO] [PerfWatchdog] 性能报告开关：开启"));
    play(20s, 50);
    EXPECT_EQ(reporting->uploader().pendingCount(), 1U);
    network.requests.clear();
    sampler.whileBusy = [this] { reporting->setEnabled(false); };
    play(700s, 50);
    EXPECT_EQ(sampler.starts, 2);
    EXPECT_THAT(console.lines().back(), EndsWith("[INFO] [PerfWatchdog] 性能报告开关：关闭"));
    EXPECT_EQ(defaults.value("perf-reports.enabled"), "false");
    EXPECT_TRUE(std::filesystem::is_empty(directory));
    EXPECT_THAT(network.requests, IsEmpty());
}

TEST_F(PerformanceWatchdogTest, AStartSendsWhatAnEarlierRunHasLeftButNotUnderATestHost) {
    std::filesystem::create_directories(directory);
    writeFile(directory / "old.json.gz", "old");
    setenv("XCTestConfigurationFilePath", "", 1);
    start();
    unsetenv("XCTestConfigurationFilePath");
    play(100s, 100);
    EXPECT_EQ(loop.pendingTimers(), 0);
    EXPECT_EQ(sampler.starts, 0);
    EXPECT_THAT(network.requests, IsEmpty());
    start();
    loop.playFor(1s);
    EXPECT_THAT(network.requests, SizeIs(1));
    EXPECT_TRUE(std::filesystem::is_empty(directory));
}

TEST_F(PerformanceWatchdogTest, AQuietProcessIsNotWokenAndUseWakesItForTwoTicks) {
    for (const char* isEnabled : {"true", "false"}) {
        SCOPED_TRACE(isEnabled);
        defaults.setValue("perf-reports.enabled", isEnabled);
        start();
        loop.playFor(6s);
        EXPECT_EQ(loop.pendingTimers(), 0);
        const int before = loop.wakeUps();
        play(3600s, 0.01);
        EXPECT_EQ(loop.wakeUps(), before);
        usage.burn(0.2);
        loop.playFor(10s);
        EXPECT_EQ(loop.wakeUps(), before + 1);
        EXPECT_EQ(loop.pendingTimers(), 0);
    }
}

TEST_F(PerformanceWatchdogTest, ItWakesOnceForEachIntervalUnderLoadAndWhereTheMachineKnowsNoAlarm) {
    for (const double percent : {5.0, 0.0}) {
        usage.hasAlarms = percent > 0;
        start();
        reporting->startWatchdog();  // one timer, however often it is started
        const int before = loop.wakeUps();
        play(300s, percent);
        EXPECT_EQ(loop.wakeUps(), before + 100);
    }
}

TEST_F(PerformanceWatchdogTest, AHotLoopThatBeginsInAQuietTimeIsNoticedWithinThreeTicks) {
    start();
    for (const double percent : {35.0, 50.0, 100.0, 400.0}) {
        SCOPED_TRACE(percent);
        play(701s, 0);
        EXPECT_EQ(loop.pendingTimers(), 0);
        const int before = sampler.starts;
        play(5.9s, percent, 0.1s);
        EXPECT_EQ(sampler.starts, before);
        play(3.1s, percent, 0.1s);
        EXPECT_EQ(sampler.starts, before + 1);
    }
}

TEST_F(PerformanceWatchdogTest, AStreakUnderWayKeepsTickingHoweverSmallItsLoadIs) {
    policy.thresholdPercent = 0.5;
    start();
    play(40s, 1);
    EXPECT_EQ(sampler.starts, 1);
    EXPECT_EQ(loop.pendingTimers(), 1);
}

TEST_F(PerformanceWatchdogTest, AStreakThatWasHeldWhileReportsWereOffEndsWithTheQuietAfterwards) {
    start();
    play(42s, 5);
    play(3s, 100);
    reporting->setEnabled(false);
    play(60s, 0);
    EXPECT_EQ(loop.pendingTimers(), 0);
    reporting->setEnabled(true);
    play(10s, 0);
    EXPECT_EQ(loop.pendingTimers(), 0);
    play(5.9s, 100, 0.1s);
    EXPECT_EQ(sampler.starts, 0);
    play(3.1s, 100, 0.1s);
    EXPECT_EQ(sampler.starts, 1);
}

TEST_F(PerformanceWatchdogTest, AWatchdogThatGoesTakesItsCaptureAlong) {
    start();
    play(40s, 5);
    usage.burn(10);
    loop.playFor(3s);
    usage.burn(10);
    sampler.whileBusy = [this] { loop.post([this] { reporting.reset(); }); };
    loop.playFor(100s);
    EXPECT_EQ(sampler.starts, 1);
    EXPECT_THAT(network.requests, IsEmpty());
    EXPECT_EQ(loop.pendingTimers(), 0);
}

}  // namespace
}  // namespace quorvane
