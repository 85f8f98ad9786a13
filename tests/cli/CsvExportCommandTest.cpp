#include "cli/CliFixture.h"

#include "base/Text.h"

namespace quorvane {
namespace {

class CsvExportCommandTest : public CliTest {
protected:
    /// The first letters of the ids in the exported lines.
    [[nodiscard]] std::string ids(Arguments arguments) {
        arguments.insert(arguments.begin(), "export-csv");
        const auto lines = text::split(outputOf(arguments), '\n');
        EXPECT_TRUE(lines.front().starts_with("id,start_time_iso,"));
        std::string letters;
        for (std::size_t i = 1; i < lines.size(); ++i)
            letters += lines[i].empty() ? '?' : lines[i].front();
        return letters;
    }
};

TEST_F(CsvExportCommandTest, WritesHeaderAndLinesWithNoLineFeedAfterTheLast) {
    load(R"({"entity":"Project","id":"10000000-0000-4000-8000-000000000000","name":"Web, App","hourly_rate":100})"
         "\n" +
         recordLine(
             "A", "2026-03-04T09:00:00Z", "2026-03-04T09:59:59.9Z",
             R"(,"window_title":"He said \"hi\"","tags":"a,b","project_id":"10000000-0000-4000-8000-000000000000")"));
    const std::string header =
        "id,start_time_iso,end_time_iso,duration_seconds,app_bundle_id,app_name,window_title,document_path,url,"
        "category,project_name,client_name,hourly_rate,currency_code,billing_status,billable_amount,tags,source,"
        "confidence,device_id,user_local_id,created_at,updated_at";
    EXPECT_EQ(outputOf({"--now", "2026-03-05T00:00:00Z", "export-csv"}),
              header + "\nA0000000-0000-4000-8000-000000000000,2026-03-04T09:00:00Z,2026-03-04T09:59:59Z,3599,,,"
                       "\"He said \"\"hi\"\"\",,,,\"Web, App\",,100.00,USD,review,99.97,a;b,,1.000,,,"
                       "2026-03-04T09:00:00Z,2026-03-04T09:59:59Z");
    EXPECT_EQ(outputOf({"export-csv", "--to", "2000-01-01T00:00:00Z"}), header);
    EXPECT_EQ(outputOf({"--now", "2026-03-05T00:00:00Z", "export-csv", "-o", "out.csv"}), "");
    EXPECT_EQ(contentOf(folder_ / "out.csv"), outputOf({"--now", "2026-03-05T00:00:00Z", "export-csv"}));
}

TEST_F(CsvExportCommandTest, GoesBackSevenDaysOfTheCalendarByItself) {
    // The clocks went forward on 29 March: seven days are an hour less than 168.
    setting_.environment["TZ"] = "Europe/Berlin";
    load(recordLine("A", "2026-03-25T10:59:59Z", "2026-03-25T11:30:00Z") +
         recordLine("B", "2026-03-25T11:00:00Z", "2026-03-25T11:30:00Z") +
         recordLine("C", "2026-04-01T10:00:00Z", "2026-04-01T10:30:00Z") +
         recordLine("D", "2026-04-01T10:00:01Z", "2026-04-01T10:30:00Z"));
    EXPECT_EQ(ids({"--now", "2026-04-01T12:00:00+02:00"}), "CB");
}

TEST_F(CsvExportCommandTest, ComparesTheBoundsAsGivenAndReachesAsFarBackAsTheStoreGoes) {
    load(recordLine("A", "2026-03-04T09:00:00.199999Z", "2026-03-04T09:30:00Z") +
         recordLine("B", "2026-03-04T09:00:00.2Z", "2026-03-04T10:30:00Z") +
         recordLine("C", "2026-03-04T10:00:00.9Z", "2026-03-04T10:30:00Z") +
         recordLine("D", "2026-03-04T10:00:00.900001Z", "2026-03-04T10:30:00Z") +
         recordLine("E", "1999-01-01T00:00:00Z", "1999-01-01T01:00:00Z"));
    EXPECT_EQ(ids({"--from", "0001-01-01T00:00:00Z"}), "DCBAE");
    EXPECT_EQ(ids({"--from", "2026-03-04T09:00:00.2Z", "--to", "2026-03-04T10:00:00.9Z"}), "CB");
}

TEST_F(CsvExportCommandTest, KeepsTheRecordsOfAnyNamedProject) {
    const auto with = [](const std::string& project) {
        return R"(,"project_id":")" + project + R"(0000000-0000-4000-8000-000000000000")";
    };
    std::string lines;
    for (const char* id : {"1", "2", "3"})
        lines += R"({"entity":"Project","id":")" + std::string(id) + "0000000-0000-4000-8000-000000000000\"}\n";
    load(lines + recordLine("A", "2026-03-04T09:00:00Z", "2026-03-04T09:30:00Z", with("1")) +
         recordLine("B", "2026-03-04T10:00:00Z", "2026-03-04T10:30:00Z", with("2")) +
         recordLine("C", "2026-03-04T11:00:00Z", "2026-03-04T11:30:00Z", with("3")) +
         recordLine("D", "2026-03-04T12:00:00Z", "2026-03-04T12:30:00Z"));
    const auto from = [&](Arguments arguments) {
        arguments.insert(arguments.begin(), {"--from", "2026-01-01T00:00:00Z"});
        return ids(arguments);
    };
    const std::string first = "10000000-0000-4000-8000-000000000000";
    EXPECT_EQ(from({}), "DCBA");
    EXPECT_EQ(from({"--project", first}), "A");
    EXPECT_EQ(from({"--project", first, "--project", "30000000-0000-4000-8000-000000000000"}), "CA");
    EXPECT_EQ(from({"--project", "90000000-0000-4000-8000-000000000000"}), "");
}

}  // namespace
}  // namespace quorvane
