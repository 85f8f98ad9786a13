#include "diagnostics/DiagnosticReport.h"

#include "base/Iso8601.h"
#include "support/Matching.h"

#include <cstdlib>
#include <filesystem>

namespace quorvane {
namespace {

class DiagnosticReportTest : public testing::Test {
protected:
    DiagnosticReportTest() {
        ::setenv("TZ", "Europe/Berlin", 1);
        ::setenv("LC_ALL", "de_DE.UTF-8", 1);
    }
    ~DiagnosticReportTest() override {
        ::setenv("TZ", "UTC", 1);
        ::setenv("LC_ALL", "en_US.UTF-8", 1);
    }

    const Date now = *parseIso8601("2026-03-02T08:05:06Z");
};

TEST_F(DiagnosticReportTest, HoldsVersionsCountsAndEveryLineSanitised) {
    const LogEntries logs = {
        {.timestamp = now - 2s, .level = LogLevel::debug, .module = "Store", .message = "opened /Users/ann/x"},
        {.timestamp = now - 1s, .level = LogLevel::error, .module = "a@b.cc", .message = "失败"},
        {.timestamp = now, .level = LogLevel::error, .module = "Sync", .message = "two\nlines"},
        {.timestamp = now, .level = LogLevel::warning, .module = "Sync", .message = ""}};
    EXPECT_EQ(diagnosticReport(logs, {.shortVersion = "1.2.0", .build = "345"}, now),
              "============================================\n"
              "Quorvane Diagnostic Report\n"
              "Version: 1.2.0 (345)\n"
              "导出时间: 02.03.2026, 09:05:06\n"
              "日志总数: 4\n"
              "DEBUG: 1 | INFO: 0 | WARNING: 1 | ERROR: 2\n"
              "Privacy: URLs, local file paths, emails and token-like values are redacted.\n"
              "============================================\n"
              "[2026-03-02 09:05:04.000] [DEBUG] [Store] opened [redacted-path]\n"
              "[2026-03-02 09:05:05.000] [ERROR] [[redacted-email]] 失败\n"
              "[2026-03-02 09:05:06.000] [ERROR] [Sync] two\nlines\n"
              "[2026-03-02 09:05:06.000] [WARNING] [Sync] ");
}

TEST_F(DiagnosticReportTest, ShowsAnUnknownVersionAndTheDateAsTheUsersLanguageHasIt) {
    ::setenv("LC_ALL", "zh_CN.UTF-8", 1);
    EXPECT_THAT(diagnosticReport({}, {.build = "345"}, now),
                AllOf(HasSubstr("\nVersion: unknown (345)\n"), HasSubstr("\n导出时间: 2026年3月2日 09:05:06\n"),
                      EndsWith("=\n")));
    EXPECT_EQ(diagnosticReportFileName(now), "Quorvane_Diagnostic_2026-03-02_09-05-06.txt");
}

TEST_F(DiagnosticReportTest, IsSavedOrTheCauseIsTold) {
    const auto file = std::filesystem::path(testing::TempDir()) / "quorvane-report.txt";
    EXPECT_EQ(saveDiagnosticReport(file, "一\n二"), std::nullopt);
    EXPECT_EQ(std::filesystem::file_size(file), 7U);
    std::filesystem::remove(file);
    EXPECT_THAT(saveDiagnosticReport(file / "missing", "x"), Optional(HasSubstr("No such file or directory")));
}

}  // namespace
}  // namespace quorvane
