#include "diagnostics/performance/PerformanceReportEnvironment.h"

#include "support/Matching.h"

namespace quorvane {
namespace {

namespace Environment = PerformanceReportEnvironment;

TEST(PerformanceReportEnvironmentTest, FieldsAreTrimmedAndOtherwisePlainOrNothing) {
    EXPECT_EQ(Environment::cleaned(" \t\n1.2.0\r\n ", 10), "1.2.0");
    EXPECT_EQ(Environment::cleaned(" 1234567890 ", 10), "1234567890");
    EXPECT_EQ(Environment::cleaned("aZ09._:+-", 10), "aZ09._:+-");
    for (const char* unfit : {"12345678901", "", " \n", "1.2 beta", "1.2\n3", "ü", "a/b"})
        EXPECT_EQ(Environment::cleaned(unfit, 10), std::nullopt) << unfit;
}

TEST(PerformanceReportEnvironmentTest, AVersionThatIsNotPlainIsSentAsZero) {
    const ApplicationInfo application{.shortVersion = "1.2 beta", .build = " 345\n"};
    EXPECT_EQ(Environment::appVersion(application), "0");
    EXPECT_EQ(Environment::build(application), "345");
    EXPECT_EQ(Environment::appVersion({}), "0");
    EXPECT_EQ(Environment::appVersion({.shortVersion = std::string(33, '1')}), "0");
    EXPECT_EQ(Environment::userAgent(application, {.name = "Linux", .version = "6.1", .architecture = "x86_64"}),
              "Quorvane/0 (345; Linux 6.1; x86_64)");
}

TEST(PerformanceReportEnvironmentTest, TheLocaleIsTheFirstLocalizationWithHyphens) {
    EXPECT_EQ(Environment::locale({.preferredLocalizations = {"zh_Hans", "en"}, .currentLocale = "de_DE"}), "zh-Hans");
    EXPECT_EQ(Environment::locale({.currentLocale = "de_DE"}), "de-DE");
    EXPECT_EQ(Environment::locale({.currentLocale = "de_DE@calendar=x"}), std::nullopt);
    EXPECT_EQ(Environment::locale({.currentLocale = "a_very_long_locale"}), std::nullopt);
    EXPECT_EQ(Environment::locale({}), std::nullopt);
}

TEST(PerformanceReportEnvironmentTest, TheSurfaceSaysWhetherAWindowCanBeSeenAndHasTheFocus) {
    EXPECT_EQ(Environment::activeSurface({.hasWindow = false, .isActive = true}), "quorvane.background");
    EXPECT_EQ(Environment::activeSurface({.hasWindow = true, .isActive = true}), "quorvane.foreground");
    EXPECT_EQ(Environment::activeSurface({.hasWindow = true, .isActive = false}), "quorvane.window_inactive");
}

}  // namespace
}  // namespace quorvane
