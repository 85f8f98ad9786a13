#include "diagnostics/performance/PerformanceReportModules.h"

#include "support/Matching.h"
#include "support/TextTable.h"

namespace quorvane {
namespace {

TEST(PerformanceReportModulesTest, FilesLoseTheirFoldersAndFunctionsKeepTheirNames) {
    auto rows = textTable(QUORVANE_DIAGNOSTICS_DATA "/modules.txt");
    rows.push_back({"PID 7 - process\nTID 7:\n#0  0x7f a() - /a/x\n    [93ac]@0x7f00+0xcf\n#1  0x80 b() - /b/c/y\n\n",
                    "PID 7 - process\nTID 7:\n#0  0x7f a() - x\n    [93ac]@0x7f00+0xcf\n#1  0x80 b() - y\n\n"});
    rows.push_back({"#0  0x7f a() - /home/ann/", "#0  0x7f a() - "});  // a line that was cut off
    for (const auto& row : rows) {
        const auto once = PerformanceReportModules::withoutFolders(row[0]);
        EXPECT_EQ(once, row[1]);
        EXPECT_EQ(PerformanceReportModules::withoutFolders(once), once);
    }
}

}  // namespace
}  // namespace quorvane
