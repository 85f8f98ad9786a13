#include "diagnostics/performance/PerformanceReportRedaction.h"

#include "diagnostics/performance/PerformanceReportEnvironment.h"
#include "support/Matching.h"
#include "support/TextTable.h"

namespace quorvane {
namespace {

using PerformanceReportRedaction::redact;
using PerformanceReportRedaction::truncate;

TEST(PerformanceReportRedactionTest, NoHomeKeepsItsName) {
    auto rows = textTable(QUORVANE_DIAGNOSTICS_DATA "/redacted-homes.txt");
    rows.push_back({"/home/bob/x /Users/bob/y\n/home/eve", "/home/ann", "/home/_/x /Users/_/y\n/home/_"});
    for (const auto& row : rows) {
        const auto once = redact(row[0], row[1]);
        EXPECT_EQ(once, row[2]);
        EXPECT_EQ(redact(once, row[1]), once);
    }
}

TEST(PerformanceReportRedactionTest, ALongTextIsCutBetweenCharactersAndSaysSo) {
    constexpr auto marker = "\n\n[truncated by Quorvane: 50 bytes total]\n";  // 42 bytes
    const std::string rest(50 - 6, 'x');
    const std::tuple<const char*, std::string, std::size_t, std::string> rows[] = {
        {"just fits", std::string(50, 'x'), 50, std::string(50, 'x')},
        {"one too many", std::string(50, 'x'), 49, "xxxxxxx" + std::string(marker)},
        {"between two characters", "日志" + rest, 45, "日" + std::string(marker)},
        {"straddling by one", "日志" + rest, 46, "日" + std::string(marker)},
        {"straddling by two", "日志" + rest, 47, "日" + std::string(marker)},
        {"behind both", "日志" + rest, 48, "日志" + std::string(marker)},
        {"nothing fits", std::string(50, 'x'), 42, marker},
        {"not even the marker", std::string(50, 'x'), 10, marker}};
    for (const auto& [name, text, limit, expected] : rows)
        EXPECT_EQ(truncate(text, limit), expected) << name;
    EXPECT_EQ(PerformanceReportEnvironment::mostCallStackBytes, 6U << 20);
}

}  // namespace
}  // namespace quorvane
