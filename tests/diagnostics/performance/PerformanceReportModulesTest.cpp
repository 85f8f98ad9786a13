#include "diagnostics/performance/PerformanceReportModules.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

TEST(PerformanceReportModulesTest, FilesLoseTheirFoldersAndFunctionsKeepTheirNames) {
    const struct {
        const char* name;
        const char* stacks;
        const char* expected;
    } rows[] = {
        {"a library", "#0  0x7f QTimer::start() - /usr/lib/x86_64-linux-gnu/libQt6Core.so.6.4.2",
         "#0  0x7f QTimer::start() - libQt6Core.so.6.4.2"},
        {"at the root", "#0  0x7f run() - /quorvane", "#0  0x7f run() - quorvane"},
        {"a function without a name", "#2  0x7f - /home/ann/bin/q", "#2  0x7f - q"},
        {"blanks and dashes in folders", "#0  0x7f f() - /home/ann/My - /Acme - Plans/q 2", "#0  0x7f f() - q 2"},
        {"replaced since the start", "#0  0x7f f() - /opt/ann/q (deleted)", "#0  0x7f f() - q (deleted)"},
        {"not ASCII", "#0  0x7f f() - /home/张三/日志", "#0  0x7f f() - 日志"},
        {"slashes in a name", "#0  0x7f std::filesystem::operator/(path const&, path const&) - /usr/bin/q",
         "#0  0x7f std::filesystem::operator/(path const&, path const&) - q"},
        {"arithmetic in a name", "#0  0x7f f<(4 - 1), (8 / 2)>(decltype (({parm#1}) - ({parm#2}))) - /usr/bin/q",
         "#0  0x7f f<(4 - 1), (8 / 2)>(decltype (({parm#1}) - ({parm#2}))) - q"},
        {"no file", "#0  0x7f operator/(A - B) - [vdso: 7]\nTID 7:\n",
         "#0  0x7f operator/(A - B) - [vdso: 7]\nTID 7:\n"},
        {"all the lines of a text",
         "PID 7 - process\nTID 7:\n#0  0x7f a() - /a/x\n    [93ac]@0x7f00+0xcf\n#1  0x80 b() - /b/c/y\n\n",
         "PID 7 - process\nTID 7:\n#0  0x7f a() - x\n    [93ac]@0x7f00+0xcf\n#1  0x80 b() - y\n\n"},
        {"a line that was cut off", "#0  0x7f a() - /home/ann/", "#0  0x7f a() - "},
        {"nothing", "", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto once = PerformanceReportModules::withoutFolders(row.stacks);
        EXPECT_EQ(once, row.expected);
        EXPECT_EQ(PerformanceReportModules::withoutFolders(once), once);
    }
}

}  // namespace
}  // namespace quorvane
