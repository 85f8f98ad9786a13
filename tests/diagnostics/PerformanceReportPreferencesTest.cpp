#include "diagnostics/PerformanceReportPreferences.h"

#include "platform/simulated/InMemoryUserDefaults.h"
#include "support/Matching.h"

namespace quorvane {
namespace {

TEST(PerformanceReportPreferencesTest, ReportsAreOffUntilSomebodySaysYes) {
    platform::InMemoryUserDefaults defaults;
    PerformanceReportPreferences preferences(defaults);
    EXPECT_FALSE(preferences.isEnabled());
    preferences.setEnabled(true);
    EXPECT_TRUE(PerformanceReportPreferences(defaults).isEnabled());
    EXPECT_EQ(defaults.value("perf-reports.enabled"), "true");
    preferences.setEnabled(false);
    EXPECT_FALSE(preferences.isEnabled());
}

TEST(PerformanceReportPreferencesTest, TheInstallationKeepsItsNameUnlessThatIsNoLowerCaseUuid) {
    platform::InMemoryUserDefaults defaults;
    PerformanceReportPreferences preferences(defaults);
    const auto made = preferences.installId();
    EXPECT_EQ(made.size(), 36U);
    EXPECT_EQ(preferences.installId(), made);
    EXPECT_EQ(defaults.value("perf-reports.install-id"), made);
    for (const char* wrong :
         {"", "hello", "0F8FAD5B-D9CB-469F-A165-70867728950E", "{0f8fad5b-d9cb-469f-a165-70867728950}"}) {
        defaults.setValue("perf-reports.install-id", wrong);
        const auto mended = preferences.installId();
        EXPECT_EQ(mended.size(), 36U) << wrong;
        EXPECT_NE(mended, made);
        EXPECT_EQ(preferences.installId(), mended) << wrong;
    }
}

}  // namespace
}  // namespace quorvane
