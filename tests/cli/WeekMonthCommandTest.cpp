#include "cli/CliFixture.h"

namespace quorvane {
namespace {

/// Records and an annotation in the first week of March 2026, seen on Wednesday the 4th at 15:00.
class WeekMonthCommandTest : public CliTest {
protected:
    WeekMonthCommandTest() {
        load(R"({"entity":"Project","id":"E0000000-0000-4000-8000-000000000001","name":"网站改版","color":"mint"})"
             "\n"
             R"({"entity":"ProjectTimeAnnotation","id":"F0000000-0000-4000-8000-000000000001",)"
             R"("start_time":"2026-03-03T22:00:00Z","end_time":"2026-03-04T01:00:00Z",)"
             R"("project_id":"E0000000-0000-4000-8000-000000000001"})"
             "\n" +
             recordLine("A", "2026-03-02T09:00:00Z", "2026-03-02T09:04:00Z", R"(,"app_name":"Short")") +
             recordLine("B", "2026-03-03T09:00:00Z", "2026-03-03T10:30:00Z", R"(,"app_name":"编辑器\u001b[2J")") +
             recordLine("C", "2026-03-03T09:00:00Z", "2026-03-03T09:15:00Z") +
             recordLine("D", "2026-03-04T14:00:00Z", "", R"(,"app_name":"Visual Studio Code")"));
    }

    static Arguments atThree(Arguments arguments) {
        arguments.insert(arguments.begin(), {"--now", "2026-03-04T15:00:00Z"});
        return arguments;
    }
};

TEST_F(WeekMonthCommandTest, PrintsTheColumnsOfAWeek) {
    expectOutput(atThree({"week"}), "week.txt");
    expectOutput(atThree({"week", "--json"}), "week.json");
    expectOutput(atThree({"week", "--json", "--date", "2026-03-08"}), "week.json");
    EXPECT_THAT(outputOf(atThree({"week", "--json", "--column-width", "39"})),
                AllOf(HasSubstr(R"("label":null)"), Not(HasSubstr("编辑"))));
    EXPECT_THAT(outputOf(atThree({"week", "--date", "2020-01-01", "--json"})), HasSubstr(R"({"date":"2019-12-30",)"));
}

TEST_F(WeekMonthCommandTest, PrintsTheCellsOfAMonthAsJson) {
    const auto march = outputOf(atThree({"month", "--json"}));
    EXPECT_THAT(march, StartsWith(R"({"leading":0,"days":[{"date":"2026-03-01","lines":[],"more":0,"fallback":null},)"
                                  R"({"date":"2026-03-02","lines":[],"more":0,"fallback":"0.1h"},)"
                                  R"({"date":"2026-03-03","lines":[{"name":"网站改版","duration":"3h"},)"
                                  R"({"name":"编辑器\u001b[2J","duration":"1h30m"},)"
                                  R"({"name":"未知应用","duration":"15m"}],"more":0,"fallback":null},)"
                                  R"({"date":"2026-03-04","lines":[{"name":"网站改版","duration":"3h"}],)"));
    EXPECT_THAT(march, EndsWith(R"({"date":"2026-03-31","lines":[],"more":0,"fallback":null}]})"
                                "\n"));
    setting_.environment["LC_ALL"] = "de_DE.UTF-8";
    EXPECT_THAT(outputOf(atThree({"month", "--json"})), StartsWith(R"({"leading":6,)"));
}

TEST_F(WeekMonthCommandTest, PrintsACalendarWithWideCharactersCounted) {
    load(recordLine("0", "2026-03-03T11:00:00Z", "2026-03-03T12:00:00Z", R"(,"app_name":"A name that is too long")") +
         recordLine("1", "2026-03-03T13:00:00Z", "2026-03-03T14:00:00Z", R"(,"app_name":"More")"));
    const auto month = outputOf(atThree({"month"}));
    EXPECT_THAT(month, StartsWith("March 2026\n\n"
                                  "Sun              Mon              Tue              Wed              Thu"
                                  "              Fri              Sat\n"));
    EXPECT_THAT(month, HasSubstr("\n1                2                3            +1  4*               5"
                                 "                6                7\n"
                                 "                 0.1h             ▌网站改版    3h  ▌网站改版    3h\n"
                                 "                                  ▌编辑器 … 1h30m\n"
                                 "                                  ▌A name tha… 1h\n"
                                 "                                  ▌More        1h\n"
                                 "\n8 "));
    EXPECT_THAT(month, EndsWith("\n29               30               31\n"));
}

TEST_F(WeekMonthCommandTest, TellsOnStandardErrorWhatBeginsInTheFuture) {
    load(recordLine("0", "2026-03-05T11:00:00Z", "2026-03-05T12:00:00Z", R"(,"app_name":"Later")"));
    for (const char* command : {"week", "month"}) {
        const auto result = run({command, "--now", "2026-03-04T15:00:00Z", "--json"});
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.err, "ContentView: 发现未来日期的记录 - Later 开始时间: 2026-03-05 11:00:00 +0000\n");
    }
}

}  // namespace
}  // namespace quorvane
