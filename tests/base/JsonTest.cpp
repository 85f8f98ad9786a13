#include "base/Json.h"

#include "support/Matching.h"

namespace quorvane {
namespace {

TEST(JsonTest, KeysKeepTheirOrderAndBytesThatAreNoTextAreReplaced) {
    const auto value = parseJson(R"({"b": 1, "a": [{"a": {"a": "工\u4f5c"}}, {"b": [{"a": 3}], "a": 4}]})");
    ASSERT_TRUE(value);
    EXPECT_EQ(jsonText(*value), R"({"b":1,"a":[{"a":{"a":"工作"}},{"b":[{"a":3}],"a":4}]})");
    EXPECT_EQ(jsonText(Json("a\xff")), "\"a\ufffd\"");
}

TEST(JsonTest, ErrorsSayWhereAndWhyInOneLine) {
    const char* const twice = "the key \"a\" stands twice in one object";
    const std::pair<std::string, const char*> rows[] = {
        {"", "line 1, column 1"},
        {"{\n  \"a\": 1,\n", "line 3"},
        {"\"a\nb\"", "line 2"},
        {"1 2", "line 1, column 3"},
        {"// x\n1", "line 1, column 1"},
        {"\"\xff\"", "UTF-8"},
        {"[1e999]", "1e999"},
        {R"({"a": 1, "a": 1})", twice},
        {R"([{"x": {"a": 1, "b": {"a": 0}, "a": 2}}])", twice},
        {R"({"x": [{"y": 1}], "a": {"x": 2}, "\u0061": 3})", twice},
    };
    for (const auto& [text, part] : rows) {
        SCOPED_TRACE(text);
        std::string error;
        EXPECT_EQ(parseJson(text, &error), std::nullopt);
        EXPECT_THAT(error, AllOf(HasSubstr(part), Not(HasSubstr("json.exception")), Not(HasSubstr("\n"))));
    }
}

TEST(JsonTest, DeepNestingIsHarmless) {
    const std::string deep(1'000'000, '[');
    EXPECT_EQ(parseJson(deep), std::nullopt);
    const auto closed = parseJson(deep + std::string(1'000'000, ']'));
    EXPECT_TRUE(!closed || closed->is_array());
}

}  // namespace
}  // namespace quorvane
