#include "cli/CliFixture.h"

#include "base/Json.h"

#include <fmt/format.h>

namespace quorvane {
namespace {

const std::string projects = R"({"entity":"Project","id":"10000000-0000-4000-8000-000000000000","name":"Web"})"
                             "\n"
                             R"({"entity":"Project","id":"20000000-0000-4000-8000-000000000000","name":"App"})"
                             "\n";

class RecordsCommandTest : public CliTest {
protected:
    RecordsCommandTest() {
        load(
            projects + recordLine("B", "2026-03-04T09:00:00Z", "2026-03-04T10:00:00Z", R"(,"app_name":"Editor")") +
            recordLine("A", "2026-03-04T09:00:00Z", "2026-03-04T09:00:01.5Z",
                       R"(,"app_name":"editor","project_id":"10000000-0000-4000-8000-000000000000")") +
            recordLine(
                "C", "2026-03-03T23:59:59.999999Z", "2026-03-04T09:00:00Z",
                R"(,"app_name":"微信","window_title":"聊天\t\u001b[2J\u202e","project_id":"20000000-0000-4000-8000-000000000000")") +
            recordLine("D", "2026-03-04T10:00:00Z", "", R"(,"app_name":"Editor","window_title":"main.cpp")"));
    }

    /// The first letters of the ids that the command lists.
    [[nodiscard]] std::string ids(Arguments arguments) {
        arguments.insert(arguments.begin(), {"records", "--json"});
        const Json listed = parseJson(outputOf(arguments)).value();
        std::string letters;
        for (const Json& record : listed)
            letters += record["id"].get<std::string>().front();
        return letters;
    }
};

TEST_F(RecordsCommandTest, ListsTheNewestFirstAndPicksByTimeApplicationProjectAndNumber) {
    const std::pair<Arguments, const char*> rows[] = {
        {{}, "DABC"},
        {{"--from", "2026-03-04T09:00:00Z"}, "DAB"},
        {{"--from", "2026-03-04T09:00:00.000001Z"}, "D"},
        {{"--to", "2026-03-04T10:00:00+01:00"}, "ABC"},
        {{"--from", "2026-03-04T00:00:00Z", "--to", "2026-03-04T09:30:00Z"}, "AB"},
        {{"--from", "2026-03-05T00:00:00Z", "--to", "2026-03-01T00:00:00Z"}, ""},
        {{"--app", "Editor"}, "DB"},
        {{"--app", "微信"}, "C"},
        {{"--app", ""}, ""},
        {{"--project", "10000000-0000-4000-8000-000000000000"}, "A"},
        {{"--project", "20000000-0000-4000-8000-000000000000", "--from", "2026-03-04T00:00:00Z"}, ""},
        {{"--limit", "0"}, ""},
        {{"--limit", "99999999999999999999999"}, "DABC"},
        {{"--app", "Editor", "--limit", "1"}, "D"},
    };
    for (const auto& [arguments, expected] : rows)
        EXPECT_EQ(ids(arguments), expected) << testing::PrintToString(arguments);
}

TEST_F(RecordsCommandTest, PrintsJsonObjectsAsADumpDoes) {
    const std::string dump = outputOf({"dump"});
    std::string expected = dump.substr(dump.find("{\"entity\":\"ActivityRecord\",\"id\":\"C"));
    expected = expected.substr(0, expected.find('\n'));
    EXPECT_EQ(outputOf({"records", "--json", "--app", "微信"}), "[\n" + expected + "\n]\n");
    EXPECT_EQ(outputOf({"records", "--json", "--limit", "0"}), "[]\n");
}

TEST_F(RecordsCommandTest, PrintsAlignedColumnsInLocalTimeWithNothingThatCommandsATerminal) {
    setting_.environment["TZ"] = "Asia/Shanghai";
    expectOutput({"records", "--now", "2026-03-04T10:01:00Z"}, "records.txt");
    EXPECT_EQ(outputOf({"records", "--limit", "0"}), "START  END  DURATION  APP  TITLE  PROJECT\n");
}

TEST_F(RecordsCommandTest, ListsMoreThanItHoldsBackForTheWidths) {
    std::string many;
    for (int i = 0; i < 1200; ++i)
        many +=
            fmt::format(R"({{"entity":"ActivityRecord","start_time":"2026-01-01T00:{:02}:{:02}Z","app_name":"App {}"}})"
                        "\n",
                        i / 60, i % 60, i);
    load(many);
    const std::string table = outputOf({"records"});
    EXPECT_EQ(std::count(table.begin(), table.end(), '\n'), 1205);
}

}  // namespace
}  // namespace quorvane
