#include "cli/CliFixture.h"

#include "base/Json.h"

namespace quorvane {
namespace {

const std::string project = "E0000000-0000-4000-8000-000000000001";

/// One day with two records and a project.
class TimelineCommandTest : public CliTest {
protected:
    void SetUp() override {
        load(R"({"entity":"Project","id":")" + project + R"(","name":"网站","color":"mint"})" + "\n" +
             recordLine("A", "2026-03-04T09:00:00Z", "2026-03-04T10:30:00Z",
                        R"(,"app_name":"Safari","app_bundle_id":"com.apple.safari","window_title":"A page\u001b[2J")") +
             recordLine("B", "2026-03-04T13:10:00Z", "", R"(,"app_name":"编辑器")"));
    }
    std::string timeline(Arguments arguments) {
        arguments.insert(arguments.begin(), {"--now", "2026-03-04T13:30:00Z", "timeline"});
        return outputOf(arguments);
    }
    ProgramResult annotate(const std::string& from, const std::string& to, const std::string& id = project) {
        return run({"annotate", "--project", id, "--date", "2026-03-04", "--from-hour", from, "--to-hour", to});
    }
};

TEST_F(TimelineCommandTest, PrintsBlocksLayoutBarsAndHitAsJson) {
    ASSERT_EQ(annotate("9.01", "9.75").status, 0);
    const auto json = parseJson(timeline({"--json", "--hour-height", "100", "--width", "450", "--at", "60,150"}));
    ASSERT_TRUE(json);
    const Json& day = *json;
    EXPECT_EQ(jsonText(day["blocks"][0]),
              R"({"id":"A0000000-0000-4000-8000-000000000000","start":"2026-03-04T09:00:00.000000Z",)"
              R"("end":"2026-03-04T10:30:00.000000Z","lane":0,"lanes":1,"start_hour":9.0,"duration":1.5,)"
              R"("bundle_id":"com.apple.safari","app_name":"Safari","window_title":"A page\u001b[2J",)"
              R"("document_path":null,"url":null,"category":null,"tags":"","color":"#1B7AE9","y_top":144.0,)"
              R"("y_bottom":294.0,"should_show_name":true})");
    EXPECT_EQ(day["blocks"].size(), 2);
    EXPECT_EQ(jsonText(day["active_hours"]), "[9,10,13]");
    EXPECT_EQ(day["hour_offsets"].size(), 25);
    EXPECT_EQ(day["total_height"], 3 * 100 + 21 * 16.0);
    EXPECT_NEAR(day["sidebar_total_hours"].get<double>(), 1.5 + 1.0 / 3, 1e-9);
    Json bar = day["annotations"][0];
    bar.erase("id");
    EXPECT_EQ(jsonText(bar), R"({"project_id":")" + project +
                                 R"(","start_hour":9.0,"end_hour":9.75,"column_index":0,"total_columns":1,)"
                                 R"("x":230.0,"y":181.5,"width":196.0,"height":75.0})");
    EXPECT_EQ(day["hit"], "A0000000-0000-4000-8000-000000000000");
    EXPECT_TRUE(parseJson(timeline({"--json", "--at", "60,10"})).value()["hit"].is_null());
    EXPECT_EQ(parseJson(timeline({"--json", "--date", "2026-03-05"})).value()["total_height"], 384.0);
}

TEST_F(TimelineCommandTest, DrawsTheDayForATerminal) {
    ASSERT_EQ(annotate("9.5", "10.5").status, 0);
    expectOutput({"--now", "2026-03-04T13:30:00Z", "timeline"}, "timeline.txt");
    EXPECT_EQ(timeline({"--date", "2026-03-05"}), "Mar 5, 2026  0.0 h\n");
}

TEST_F(TimelineCommandTest, AssignsARangeAsADragDoesAndRefusesWithTheLineThatTheChartPrints) {
    const std::tuple<const char*, const char*, std::string, int, testing::Matcher<std::string>> rows[] = {
        {"9.01", "9.1", project, 0, "ProjectTimeAnnotation saved: 网站 from 09:00 to 09:15\n"},
        {"9", "10", project, 1, isRefusal(HasSubstr("该时间段已经标注给项目: 网站"))},
        {"23.9", "24", project, 0, "ProjectTimeAnnotation saved: 网站 from 23:54 to 24:09\n"},
        {"9", "10", "E0000000-0000-4000-8000-000000000002", 1, isRefusal(HasSubstr("there is no project"))},
        {"10", "10", project, 2, isRefusal(HasSubstr("--from-hour"))},
        {"10", "24.5", project, 2, isRefusal(HasSubstr("--to-hour"))},
        {"-1", "2", project, 2, isRefusal(testing::_)},
        {"nine", "10", project, 2, isRefusal(testing::_)},
    };
    for (const auto& [from, to, id, status, err] : rows) {
        SCOPED_TRACE(testing::Message() << from << " to " << to);
        const auto result = annotate(from, to, id);
        EXPECT_EQ(result.status, status);
        EXPECT_EQ(result.out, "");
        EXPECT_THAT(result.err, err);
    }
    EXPECT_THAT(run({"timeline", "--at", "5"}).err, isRefusal(HasSubstr("--at")));
}

}  // namespace
}  // namespace quorvane
