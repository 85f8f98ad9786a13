#include "diagnostics/performance/PerformanceReportRedaction.h"

#include "diagnostics/performance/PerformanceReportEnvironment.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

using PerformanceReportRedaction::redact;
using PerformanceReportRedaction::truncate;

TEST(PerformanceReportRedactionTest, NoHomeKeepsItsName) {
    const struct {
        const char* name;
        const char* stacks;
        const char* home;
        const char* expected;
    } rows[] = {
        {"the own home", "at /home/ann/bin/q, /home/ann", "/home/ann", "at ~/bin/q, ~"},
        {"with a slash at its end", "at /home/ann/bin/q", "/home/ann/", "at ~/bin/q"},
        {"wherever it stands", "x/data/ann.so /data/ann", "/data/ann", "x~.so ~"},
        {"another's", "/home/bob/x /Users/bob/y\n/home/eve", "/home/ann", "/home/_/x /Users/_/y\n/home/_"},
        {"at the root", "/a /home/ann/x", "/", "/a /home/_/x"},
        {"none", "/a /Users/ann/x", "", "/a /Users/_/x"},
        {"not ASCII", "/Users/张三/x /home/zoë/y", "", "/Users/_/x /home/_/y"},
        {"up to a blank of any kind", "/Users/ann\u3000x", "", "/Users/_\u3000x"},
        {"case counts", "/users/ann /HOME/ann", "", "/users/ann /HOME/ann"},
        {"nobody's", "/Users/ /home//x", "", "/Users/ /home//x"},
        {"root's", "/root/x /root", "/home/ann", "/home/_/x /home/_"},
        {"the own is root's", "/root/x", "/root", "~/x"},
        {"not root's", "/rooted /root.txt /usr/lib/root-x /proc/1/root", "/home/ann",
         "/rooted /root.txt /usr/lib/root-x /proc/1/root"},
        {"behind a folder", "/mnt/home/ann/x", "", "/mnt/home/_/x"},
        {"a frame", "#1 0x7f spin(char const*) - /home/ann/q/libq.so\n    [ab]@0x7f+0x1", "/home/ann",
         "#1 0x7f spin(char const*) - ~/q/libq.so\n    [ab]@0x7f+0x1"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto once = redact(row.stacks, row.home);
        EXPECT_EQ(once, row.expected);
        EXPECT_EQ(redact(once, row.home), once);
    }
}

TEST(PerformanceReportRedactionTest, ALongTextIsCutBetweenCharactersAndSaysSo) {
    constexpr auto marker = "\n\n[truncated by Quorvane: 50 bytes total]\n";  // 42 bytes
    const std::string rest(50 - 6, 'x');
    const struct {
        const char* name;
        std::string text;
        std::size_t limit;
        std::string expected;
    } rows[] = {
        {"just fits", std::string(50, 'x'), 50, std::string(50, 'x')},
        {"one too many", std::string(50, 'x'), 49, "xxxxxxx" + std::string(marker)},
        {"between two characters", "日志" + rest, 45, "日" + std::string(marker)},
        {"straddling by one", "日志" + rest, 46, "日" + std::string(marker)},
        {"straddling by two", "日志" + rest, 47, "日" + std::string(marker)},
        {"behind both", "日志" + rest, 48, "日志" + std::string(marker)},
        {"nothing fits", std::string(50, 'x'), 42, marker},
        {"not even the marker", std::string(50, 'x'), 10, marker},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(truncate(row.text, row.limit), row.expected);
    }
}

TEST(PerformanceReportRedactionTest, TheCapOfAReportIsSixMebibytes) {
    constexpr auto cap = PerformanceReportEnvironment::mostCallStackBytes;
    std::string text(cap, 'x');
    EXPECT_EQ(truncate(text, cap), text);
    text += 'x';
    const auto cut = truncate(text, cap);
    EXPECT_EQ(cut.size(), cap);
    EXPECT_TRUE(cut.ends_with("x\n\n[truncated by Quorvane: 6291457 bytes total]\n"));
}

}  // namespace
}  // namespace quorvane
