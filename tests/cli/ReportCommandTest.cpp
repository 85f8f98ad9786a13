#include "cli/CliFixture.h"

using testing::HasSubstr;

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

    std::string report(Arguments arguments) {
        arguments.insert(arguments.begin(), {"--now", "2026-03-04T15:00:00Z", "report"});
        return outputOf(arguments);
    }
};

TEST_F(ReportCommandTest, PrintsEverythingAsJson) {
    const std::string expected =
        R"({"range":{"kind":"month","start":"2026-03-01T00:00:00.000000Z","end":"2026-03-04T15:00:00.000000Z",)"
        R"("label":"This month"},"rows":[{"id":"E0000000-0000-4000-8000-000000000001","project_name":"网站",)"
        R"("client_name":"ACME","hours":2.0,"review_hours":0.5,"record_count":2,"hourly_rate":90.0,)"
        R"("currency_code":"EUR","amount":180.0},{"id":"E0000000-0000-4000-8000-000000000002","project_name":"App",)"
        R"("client_name":"","hours":1.0,"review_hours":0.0,"record_count":1,"hourly_rate":0.0,"currency_code":"USD",)"
        R"("amount":0.0}],"days":[{"date":"2026-03-02","hours":1.5,"review_hours":0.0,"amount":135.0,)"
        R"("project_names":["网站"],"activity_summaries":["编辑器"]},{"date":"2026-03-04","hours":1.5,)"
        R"("review_hours":0.5,"amount":45.0,"project_names":["App","网站"],"activity_summaries":["Mail","编辑器"]}],)"
        R"("billable":["C0000000-0000-4000-8000-000000000000","B0000000-0000-4000-8000-000000000000",)"
        R"("A0000000-0000-4000-8000-000000000000"],"review":["B0000000-0000-4000-8000-000000000000"],)"
        R"("totals":{"hours":3.0,"review_hours":0.5,"amount":180.0,"currency":"EUR"},"clients":["ACME"]})"
        "\n";
    EXPECT_EQ(report({"--json"}), expected);
    EXPECT_EQ(report({"--format", "json"}), expected);
}

TEST_F(ReportCommandTest, PrintsATableWithWideCharactersCountedTotalsAndAMarkForReview) {
    EXPECT_EQ(report({}), "This month: Mar 1, 2026 — Mar 4, 2026\n"
                          "Client: All clients\n"
                          "\n"
                          "Project     Client  Duration   To review  Hourly rate      Amount\n"
                          "网站        ACME        2.00*       0.50    EUR 90.00  EUR 180.00\n"
                          "App                     1.00        0.00                        -\n"
                          "Total time              3.00*       0.50               EUR 180.00\n"
                          "\n"
                          "Date         Duration   To review  Amount  Project    Activities\n"
                          "Mar 2, 2026      1.50        0.00  135.00  网站       编辑器\n"
                          "Mar 4, 2026      1.50*       0.50   45.00  App, 网站  Mail; 编辑器\n"
                          "\n"
                          "* 0.50 hours still need a review. They are part of the totals above.\n");
    setting_.environment["LANGUAGE"] = "zh";
    EXPECT_THAT(report({"--category", "社交"}), AllOf(HasSubstr("类别: 社交"), HasSubstr("均已审核")));
    EXPECT_THAT(report({"--client", "Nobody"}), testing::EndsWith("\n暂无可结算内容\n"));
}

TEST_F(ReportCommandTest, PrintsTheDocuments) {
    EXPECT_THAT(report({"--format", "markdown"}),
                AllOf(testing::StartsWith("# Billing report\n"), HasSubstr("| 网站 | ACME | 2.00 h | 0.50 h |"),
                      testing::EndsWith("\nMade with Quorvane\n")));
    EXPECT_THAT(report({"--format", "email", "--no-client"}),
                AllOf(HasSubstr("Client: Not set."), HasSubstr("- App: 1.00 h, USD 0.00\n")));
    EXPECT_EQ(report({"--format", "social", "--range", "week"}),
              "This week: 3.0 hours of focused work on 网站 2.0h / App 1.0h, worth EUR 180.00.\n");
}

TEST_F(ReportCommandTest, TakesRangesAndFilters) {
    struct Row {
        Arguments arguments;
        const char* totals;
    };
    const Row rows[] = {
        {{"--range", "custom", "--from", "2026-03-02", "--to", "2026-03-02"}, R"("hours":1.5,"review_hours":0.0)"},
        {{"--range", "quarter"}, R"("hours":3.0,"review_hours":0.5)"},
        {{"--project", "e0000000-0000-4000-8000-000000000002"}, R"("hours":1.0,"review_hours":0.0)"},
        {{"--client", "ACME"}, R"("hours":2.0,"review_hours":0.5)"},
        {{"--no-category"}, R"("hours":2.0,"review_hours":0.5)"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.arguments));
        Arguments arguments = row.arguments;
        arguments.emplace_back("--json");
        EXPECT_THAT(report(arguments), HasSubstr(std::string(R"("totals":{)") + row.totals));
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
    for (const Arguments& arguments : {Arguments{"--range", "year"},
                                       {"--format", "pdf"},
                                       {"--from", "2026-03-01"},
                                       {"--range", "custom"},
                                       {"--range", "custom", "--from", "2026-03-01"},
                                       {"--range", "custom", "--from", "2026-03-02", "--to", "2026-03-01"},
                                       {"--range", "custom", "--from", "2026-02-30", "--to", "2026-03-01"},
                                       {"--client", "A", "--no-client"},
                                       {"--category", "A", "--no-category"},
                                       {"--json", "--format", "text"},
                                       {"--project", "x"}}) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        Arguments all{"report"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        const auto result = run(all);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_THAT(result.err, isRefusal(testing::_));
    }
}

}  // namespace
}  // namespace quorvane
