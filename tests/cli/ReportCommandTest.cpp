#include "base/Text.h"
#include "cli/CliFixture.h"

namespace quorvane {
namespace {

/// Two projects and four records in the first days of March 2026, seen on the 4th at 15:00.
class ReportCommandTest : public CliTest {
protected:
    void SetUp() override {
        const std::string web = R"(,"app_name":"编辑器","project_id":"E0000000-0000-4000-8000-000000000001")";
        const std::string app = R"(,"app_name":"Mail","project_id":"E0000000-0000-4000-8000-000000000002")";
        load(R"({"entity":"Project","id":"E0000000-0000-4000-8000-000000000001","name":"网站","client_name":"ACME",)"
             R"("hourly_rate":90,"currency_code":"EUR"})"
             "\n"
             R"({"entity":"Project","id":"E0000000-0000-4000-8000-000000000002","name":"App"})"
             "\n" +
             recordLine("A", "2026-03-02T09:00:00Z", "2026-03-02T10:30:00Z", web + R"(,"billing_status":"billable")") +
             recordLine("B", "2026-03-04T09:00:00Z", "2026-03-04T09:30:00Z", web) +
             recordLine("C", "2026-03-04T11:00:00Z", "2026-03-04T12:00:00Z",
                        app + R"(,"billing_status":"billable","category":"社交")") +
             recordLine("D", "2026-02-27T09:00:00Z", "2026-02-27T10:00:00Z", web + R"(,"billing_status":"excluded")") +
             recordLine("E", "2026-07-11T05:10:00Z", "2026-07-11T05:40:00Z", web));
    }

    static Arguments atThree(Arguments arguments) {
        arguments.insert(arguments.begin(), {"--now", "2026-03-04T15:00:00Z", "report"});
        return arguments;
    }
    std::string report(const Arguments& arguments) { return outputOf(atThree(arguments)); }
};

TEST_F(ReportCommandTest, PrintsEverythingAsJsonOrATableWithTotalsAndAMarkForReview) {
    expectOutput(atThree({"--json"}), "report.json");
    expectOutput(atThree({"--format", "json"}), "report.json");
    expectOutput(atThree({}), "report.txt");
    EXPECT_THAT(report({"--category", "社交"}), AllOf(HasSubstr("Category: Social"), HasSubstr("Mail")));
    EXPECT_EQ(report({"--category", "social"}), report({"--category", "社交"}));
    EXPECT_EQ(outputOf({"categories", "add", "Social"}), "");
    EXPECT_THAT(report({"--category", "Social"}), Not(HasSubstr("Mail"))) << "a category of one's own";
    setting_.environment["LANGUAGE"] = "zh";
    EXPECT_THAT(report({"--category", "社交"}), AllOf(HasSubstr("类别: 社交"), HasSubstr("均已审核")));
    EXPECT_THAT(report({"--client", "Nobody"}), EndsWith("\n暂无可结算内容\n"));
}

TEST_F(ReportCommandTest, PrintsTheDocuments) {
    EXPECT_THAT(report({"--format", "markdown"}),
                AllOf(StartsWith("# Billing report\n"), HasSubstr("| 网站 | ACME | 2.00 h | 0.50 h |"),
                      EndsWith("\nMade with Quorvane\n")));
    EXPECT_THAT(report({"--format", "email", "--no-client"}),
                AllOf(HasSubstr("Client: Not set."), HasSubstr("- App: 1.00 h, USD 0.00\n")));
    EXPECT_EQ(report({"--format", "social", "--range", "week"}),
              "This week: 3.0 hours of focused work on 网站 2.0h / App 1.0h, worth EUR 180.00.\n");
}

TEST_F(ReportCommandTest, TakesRangesAndFilters) {
    const std::pair<Arguments, const char*> rows[] = {
        {{"--range", "custom", "--from", "2026-03-02", "--to", "2026-03-02"}, R"("hours":1.5,"review_hours":0.0)"},
        {{"--range", "quarter"}, R"("hours":3.0,"review_hours":0.5)"},
        {{"--project", "e0000000-0000-4000-8000-000000000002"}, R"("hours":1.0,"review_hours":0.0)"},
        {{"--client", "ACME"}, R"("hours":2.0,"review_hours":0.5)"},
        {{"--no-category"}, R"("hours":2.0,"review_hours":0.5)"},
    };
    for (auto [arguments, totals] : rows) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        arguments.emplace_back("--json");
        EXPECT_THAT(report(arguments), HasSubstr(std::string(R"("totals":{)") + totals));
    }
}

TEST_F(ReportCommandTest, TheLastDayOfARangeEndsWithTheClocksOfTheZone) {
    setting_.environment["TZ"] = "America/Mexico_City";  // where there is no summer time since 2022
    EXPECT_THAT(report({"--json", "--range", "custom", "--from", "2026-07-10", "--to", "2026-07-10"}),
                AllOf(HasSubstr(R"("end":"2026-07-11T06:00:00.000000Z")"),
                      HasSubstr(R"("days":[{"date":"2026-07-10","hours":0.5,)")));
    EXPECT_THAT(report({"--range", "custom", "--from", "2026-07-10", "--to", "2026-07-10"}),
                testing::StartsWith("Custom range: Jul 10, 2026 — Jul 10, 2026\n"));
}

TEST_F(ReportCommandTest, RefusesWhatDoesNotGoTogether) {
    for (const char* arguments :
         {"--range year", "--format pdf", "--from 2026-03-01", "--range custom", "--range custom --from 2026-03-01",
          "--range custom --from 2026-03-02 --to 2026-03-01", "--range custom --from 2026-02-30 --to 2026-03-01",
          "--client A --no-client", "--category A --no-category", "--json --format text", "--project x"})
        expectRefusal(atThree(text::split(arguments, ' ')), 2, "");
}

}  // namespace
}  // namespace quorvane
