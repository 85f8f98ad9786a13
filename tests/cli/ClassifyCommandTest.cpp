#include "cli/CliFixture.h"

using testing::HasSubstr;

namespace quorvane {
namespace {

class ClassifyCommandTest : public CliTest {
protected:
    ClassifyCommandTest() {
        load(R"({"entity":"Project","id":"A0000000-0000-4000-8000-000000000000","name":"Web"}
{"entity":"Rule","name":"Host","condition":"{\"conditions\":[{\"id\":\"A0000000-0000-4000-8000-000000000001\",\"field\":\"urlHost\",\"operator\":\"equals\",\"value\":\"example.com\"}]}","action":"{\"category\":\"工作\",\"projectId\":\"A0000000-0000-4000-8000-000000000000\",\"tags\":[\"docs\"]}"}
)");
    }

    ProgramResult classify(const std::string& lines) {
        setting_.input = lines;
        return run({"--now", "2026-03-04T12:00:00Z", "classify"});
    }
};

TEST_F(ClassifyCommandTest, WritesRecordsAsTheRulesLeaveThemAndChangesNoStore) {
    const std::string before = outputOf({"dump"});
    const auto result = classify(
        R"({"id":"B0000000-0000-4000-8000-000000000000","url":"https://example.com/a","confidence":0.5,"tags":"a"})"
        "\n"
        R"({"entity":"ActivityRecord","id":"C0000000-0000-4000-8000-000000000000","start_time":"2026-03-01T00:00:00Z",)"
        R"("end_time":"2026-03-01T01:00:00.25Z","project_id":"a0000000-0000-4000-8000-000000000000","source":"system"})");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(
        result.out,
        R"({"entity":"ActivityRecord","id":"B0000000-0000-4000-8000-000000000000","start_time":"2026-03-04T12:00:00.000000Z","end_time":null,"activity_type":"app","app_bundle_id":null,"app_name":null,"window_title":null,"document_path":null,"url":"https://example.com/a","category":"工作","tags":"a,docs","source":"rule:Host","confidence":0.95,"billing_status":"review","device_id":null,"user_local_id":null,"created_at":"2026-03-04T12:00:00.000000Z","updated_at":"2026-03-04T12:00:00.000000Z","cloud_kit_record_id":null,"project_id":"A0000000-0000-4000-8000-000000000000"}
{"entity":"ActivityRecord","id":"C0000000-0000-4000-8000-000000000000","start_time":"2026-03-01T00:00:00.000000Z","end_time":"2026-03-01T01:00:00.250000Z","activity_type":"app","app_bundle_id":null,"app_name":null,"window_title":null,"document_path":null,"url":null,"category":null,"tags":"","source":"system","confidence":1.0,"billing_status":"review","device_id":null,"user_local_id":null,"created_at":"2026-03-04T12:00:00.000000Z","updated_at":"2026-03-04T12:00:00.000000Z","cloud_kit_record_id":null,"project_id":"A0000000-0000-4000-8000-000000000000"}
)");
    EXPECT_EQ(outputOf({"dump"}), before);
}

TEST_F(ClassifyCommandTest, ABadLineEndsItWithItsNumber) {
    struct Row {
        const char* line;
        const char* cause;
    };
    const Row rows[] = {
        {"{", "line 2: "},
        {R"({"entity":"Rule"})", "line 2: \"entity\" must be \"ActivityRecord\""},
        {R"({"entity":null})", "line 2: \"entity\" must be \"ActivityRecord\""},
        {R"({"name":"x"})", "line 2: ActivityRecord has no \"name\""},
        {R"({"start_time":null})", "line 2: \"start_time\" can't be null"},
        {R"({"project_id":"B0000000-0000-4000-8000-000000000000"})", "line 2: \"project_id\" names no project"},
        {"\n{}", "line 2: the line is empty"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.line);
        const auto result = classify(std::string("{}\n") + row.line + "\n{}\n");
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.err, isRefusal(HasSubstr(std::string("standard input: ") + row.cause)));
    }
}

}  // namespace
}  // namespace quorvane
