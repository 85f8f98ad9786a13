#include "diagnostics/performance/PerformanceReport.h"

#include "support/Matching.h"

#include <limits>

namespace quorvane {
namespace {

PerformanceReport aReport() {
    return {.appID = "quorvane",
            .reportID = "1b9d6bcd-bbfd-4b2d-9b5d-ab8dfbbd4bed",
            .installID = "0f8fad5b-d9cb-469f-a165-70867728950e",
            .appVersion = "1.2.0",
            .build = "345",
            .osVersion = "6.1",
            .arch = "x86_64",
            .locale = "zh-Hans",
            .capturedAt = "2026-03-04T15:00:00Z",
            .activeSurface = "quorvane.foreground",
            .thresholdPercent = 30,
            .sustainedSeconds = 6.1,
            .peakCPUPercent = 198.7,
            .averageCPUPercent = 97.0,
            .sampleDurationSeconds = 2,
            .callStacksFormat = "linux-eu-stack-v1",
            .callStacks = "TID 7:\n#0 \"spin\" \\ ~/日志\t\x01"};
}

constexpr const char* aReportsJson =
    R"({"app_id":"quorvane","report_id":"1b9d6bcd-bbfd-4b2d-9b5d-ab8dfbbd4bed",)"
    R"("install_id":"0f8fad5b-d9cb-469f-a165-70867728950e","app_version":"1.2.0","build":"345","os_version":"6.1",)"
    R"("arch":"x86_64","locale":"zh-Hans","captured_at":"2026-03-04T15:00:00Z",)"
    R"("active_surface":"quorvane.foreground","threshold_percent":30.0,"sustained_seconds":6.1,)"
    R"("peak_cpu_percent":198.7,"average_cpu_percent":97.0,"sample_duration_seconds":2,)"
    R"("call_stacks_format":"linux-eu-stack-v1","call_stacks":"TID 7:\n#0 \"spin\" \\ ~/日志\t\u0001"})";

TEST(PerformanceReportTest, HasItsSeventeenKeysInTheirOrderAndReadsBackTheSame) {
    EXPECT_EQ(performanceReportJson(aReport()), aReportsJson);
    EXPECT_EQ(parsePerformanceReport(aReportsJson), aReport());

    auto report = aReport();
    report.locale.reset();  // has no key then
    std::string expected = aReportsJson;
    expected.erase(expected.find(R"("locale":"zh-Hans",)"), 19);
    EXPECT_EQ(performanceReportJson(report), expected);
    EXPECT_EQ(parsePerformanceReport(expected), report);
}

TEST(PerformanceReportTest, WhatIsNoNumberCannotBeWrittenAndWhatIsNoReportNotRead) {
    auto report = aReport();
    report.averageCPUPercent = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(performanceReportJson(report), std::nullopt);
    for (const char* json : {"", "[]", "{}", R"({"app_id":7})"})
        EXPECT_EQ(parsePerformanceReport(json), std::nullopt) << json;
}

}  // namespace
}  // namespace quorvane
