#include "cli/CliFixture.h"

namespace quorvane {
namespace {

class StatsCommandTest : public CliTest {
protected:
    StatsCommandTest() {
        load(recordLine("A", "2026-03-04T09:00:00Z", "2026-03-04T10:30:00Z",
                        R"(,"app_bundle_id":"com.apple.Safari","app_name":"Safari","url":"https://claude.ai/")") +
             recordLine("B", "2026-03-04T10:30:00Z", "2026-03-04T10:30:27Z", R"(,"app_name":"微信\u001b[2J")") +
             recordLine("C", "2026-03-04T11:00:00Z", "2026-03-04T11:30:00Z") +
             recordLine("D", "2026-03-04T23:00:00Z", "", R"(,"app_name":"Safari")") +
             recordLine("E", "2026-03-03T23:59:59Z", "2026-03-04T09:00:00Z", R"(,"app_name":"Yesterday")"));
    }
};

TEST_F(StatsCommandTest, PrintsHoursAndSharesOfWhatStartedOnTheDayAsJson) {
    expectOutput({"stats", "--date", "2026-03-04", "--now", "2026-03-05T01:00:00Z", "--json"}, "stats.json");
    EXPECT_EQ(outputOf({"stats", "--date", "2026-03-05", "--json"}), "[]\n");
}

TEST_F(StatsCommandTest, PrintsATableOfTodayWithBarsAndWithoutColorsWhereNoTerminalIs) {
    expectOutput({"stats", "--now", "2026-03-04T23:30:00Z"}, "stats.txt");
    EXPECT_EQ(outputOf({"stats", "--now", "2026-03-06T00:00:00Z"}), "APP  HOURS  SHARE\n");
}

TEST_F(StatsCommandTest, TakesTheDayOfTheUsersZone) {
    setting_.environment["TZ"] = "Asia/Shanghai";
    EXPECT_EQ(outputOf({"stats", "--now", "2026-03-05T00:00:00Z"}), "APP     HOURS   SHARE\n"
                                                                    "Safari   1.00  100.0%  ████████████████\n");
}

}  // namespace
}  // namespace quorvane
