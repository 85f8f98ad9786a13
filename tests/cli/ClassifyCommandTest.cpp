#include "cli/CliFixture.h"

namespace quorvane {
namespace {

class ClassifyCommandTest : public CliTest {
protected:
    ClassifyCommandTest() {
        load(R"({"entity":"Project","id":"A0000000-0000-4000-8000-000000000000","name":"Web"}
{"entity":"Rule","name":"Host","condition":"{\"conditions\":[{\"id\":\"A0000000-0000-4000-8000-000000000001\",\"field\":\"urlHost\",\"operator\":\"equals\",\"value\":\"example.com\"}]}","action":"{\"category\":\"工作\",\"projectId\":\"A0000000-0000-4000-8000-000000000000\",\"tags\":[\"docs\"]}"}
)");
    }

    const Arguments classify_{"--now", "2026-03-04T12:00:00Z", "classify"};
};

TEST_F(ClassifyCommandTest, WritesRecordsAsTheRulesLeaveThemAndChangesNoStore) {
    const std::string before = outputOf({"dump"});
    setting_.input =
        R"({"id":"B0000000-0000-4000-8000-000000000000","url":"https://example.com/a","confidence":0.5,"tags":"a"})"
        "\n"
        R"({"entity":"ActivityRecord","id":"C0000000-0000-4000-8000-000000000000","start_time":"2026-03-01T00:00:00Z",)"
        R"("end_time":"2026-03-01T01:00:00.25Z","project_id":"a0000000-0000-4000-8000-000000000000","source":"system"})";
    expectOutput(classify_, "classified.jsonl");
    EXPECT_EQ(outputOf({"dump"}), before);
}

TEST_F(ClassifyCommandTest, ABadLineEndsItWithItsNumber) {
    const std::pair<const char*, const char*> rows[] = {
        {"{", "line 2: "},
        {R"({"entity":"Rule"})", "line 2: \"entity\" must be \"ActivityRecord\""},
        {R"({"entity":null})", "line 2: \"entity\" must be \"ActivityRecord\""},
        {R"({"name":"x"})", "line 2: ActivityRecord has no \"name\""},
        {R"({"start_time":null})", "line 2: \"start_time\" can't be null"},
        {R"({"project_id":"B0000000-0000-4000-8000-000000000000"})", "line 2: \"project_id\" names no project"},
        {"\n{}", "line 2: the line is empty"},
    };
    for (const auto& [line, cause] : rows) {
        setting_.input = std::string("{}\n") + line + "\n{}\n";
        const auto result = run(classify_);
        EXPECT_EQ(result.status, 1) << line;
        EXPECT_THAT(result.err, isRefusal(HasSubstr(std::string("standard input: ") + cause)));
    }
}

}  // namespace
}  // namespace quorvane
