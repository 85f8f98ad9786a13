#include "cli/CliFixture.h"

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

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

    std::string outputAtThree(Arguments arguments) {
        arguments.insert(arguments.begin(), {"--now", "2026-03-04T15:00:00Z"});
        return outputOf(arguments);
    }
};

TEST_F(WeekMonthCommandTest, PrintsTheColumnsOfAWeekAsJson) {
    const std::string expected =
        "[\n"
        R"({"date":"2026-03-02","activities":[],"annotations":[]},)"
        "\n"
        R"({"date":"2026-03-03","activities":[)"
        R"({"id":"B0000000-0000-4000-8000-000000000000","start_hour":9.0,"end_hour":10.5,"lane":0,"lanes":2,)"
        R"("height":30.0,"center_y":195.0,"label":"编辑…"},)"
        R"({"id":"C0000000-0000-4000-8000-000000000000","start_hour":9.0,"end_hour":9.25,"lane":1,"lanes":2,)"
        R"("height":5.0,"center_y":182.5,"label":"Unkno…"}],"annotations":[)"
        R"({"id":"F0000000-0000-4000-8000-000000000001","start_hour":22.0,"end_hour":23.99972222222222,"lane":0,)"
        R"("lanes":1,"height":39.994444444444426,"center_y":459.9972222222222,"label":"网站改版"}]},)"
        "\n"
        R"({"date":"2026-03-04","activities":[)"
        R"({"id":"D0000000-0000-4000-8000-000000000000","start_hour":14.0,"end_hour":15.0,"lane":0,"lanes":1,)"
        R"("height":20.0,"center_y":290.0,"label":"Visual Stu…"}],"annotations":[)"
        R"({"id":"F0000000-0000-4000-8000-000000000001","start_hour":0.0,"end_hour":1.0,"lane":0,)"
        R"("lanes":1,"height":20.0,"center_y":10.0,"label":"网站改版"}]},)"
        "\n";
    const std::string rest = R"({"date":"2026-03-05","activities":[],"annotations":[]},)"
                             "\n"
                             R"({"date":"2026-03-06","activities":[],"annotations":[]},)"
                             "\n"
                             R"({"date":"2026-03-07","activities":[],"annotations":[]},)"
                             "\n"
                             R"({"date":"2026-03-08","activities":[],"annotations":[]})"
                             "\n]\n";
    EXPECT_EQ(outputAtThree({"week", "--json"}), expected + rest);
    EXPECT_EQ(outputAtThree({"week", "--json", "--date", "2026-03-08"}), expected + rest);
    EXPECT_THAT(outputAtThree({"week", "--json", "--column-width", "39"}),
                AllOf(HasSubstr(R"("label":null)"), Not(HasSubstr("编辑"))));
    EXPECT_THAT(outputAtThree({"week", "--date", "2020-01-01", "--json"}), StartsWith(R"([
{"date":"2019-12-30","activities":[])"));
}

TEST_F(WeekMonthCommandTest, PrintsTheCellsOfAMonthAsJson) {
    const auto march = outputAtThree({"month", "--json"});
    EXPECT_THAT(march, StartsWith(R"({"leading":0,"days":[{"date":"2026-03-01","lines":[],"more":0,"fallback":null},)"
                                  R"({"date":"2026-03-02","lines":[],"more":0,"fallback":"0.1h"},)"
                                  R"({"date":"2026-03-03","lines":[{"name":"网站改版","duration":"3h"},)"
                                  R"({"name":"编辑器\u001b[2J","duration":"1h30m"},)"
                                  R"({"name":"未知应用","duration":"15m"}],"more":0,"fallback":null},)"
                                  R"({"date":"2026-03-04","lines":[{"name":"网站改版","duration":"3h"}],)"));
    EXPECT_THAT(march, testing::EndsWith(R"({"date":"2026-03-31","lines":[],"more":0,"fallback":null}]})"
                                         "\n"));
    setting_.environment["LC_ALL"] = "de_DE.UTF-8";
    EXPECT_THAT(outputAtThree({"month", "--json"}), StartsWith(R"({"leading":6,)"));
}

TEST_F(WeekMonthCommandTest, PrintsAWeekForPeople) {
    EXPECT_EQ(outputAtThree({"week"}), "Mon, Mar 2\n"
                                       "Tue, Mar 3\n"
                                       "  09:00:00  10:30:00   1:30:00  ▌ 编辑器 [2J\n"
                                       "  09:00:00  09:15:00   0:15:00  ▌ Unknown\n"
                                       "  22:00:00  23:59:59   1:59:59  ▌ Project: 网站改版\n"
                                       "Wed, Mar 4\n"
                                       "  00:00:00  01:00:00   1:00:00  ▌ Project: 网站改版\n"
                                       "  14:00:00  15:00:00   1:00:00  ▌ Visual Studio Code\n"
                                       "Thu, Mar 5\n"
                                       "Fri, Mar 6\n"
                                       "Sat, Mar 7\n"
                                       "Sun, Mar 8\n");
}

TEST_F(WeekMonthCommandTest, PrintsACalendarWithWideCharactersCounted) {
    load(recordLine("0", "2026-03-03T11:00:00Z", "2026-03-03T12:00:00Z", R"(,"app_name":"A name that is too long")") +
         recordLine("1", "2026-03-03T13:00:00Z", "2026-03-03T14:00:00Z", R"(,"app_name":"More")"));
    const auto month = outputAtThree({"month"});
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
    EXPECT_THAT(month, testing::EndsWith("\n29               30               31\n"));
}

TEST_F(WeekMonthCommandTest, TellsOnStandardErrorWhatBeginsInTheFuture) {
    load(recordLine("0", "2026-03-05T11:00:00Z", "2026-03-05T12:00:00Z", R"(,"app_name":"Later")"));
    for (const char* command : {"week", "month"}) {
        const auto result = run({command, "--now", "2026-03-04T15:00:00Z", "--json"});
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.err, "ContentView: 发现未来日期的记录 - Later 开始时间: 2026-03-05 11:00:00 +0000\n");
    }
}

TEST_F(WeekMonthCommandTest, RefusesWhatIsNoDayAndNoWidth) {
    for (const Arguments& arguments : {Arguments{"week", "--date", "2026-02-30"},
                                       {"month", "--date", "March"},
                                       {"week", "--column-width", "-1"},
                                       {"week", "--column-width", "nan"},
                                       {"month", "--column-width", "100"}}) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        const auto result = run(arguments);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_THAT(result.err, isRefusal(testing::_));
    }
}

}  // namespace
}  // namespace quorvane
