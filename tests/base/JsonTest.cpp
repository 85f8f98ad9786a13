#include "base/Json.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quorvane {
namespace {

using testing::HasSubstr;
using testing::Not;

TEST(JsonTest, KeysKeepTheirOrder) {
    const auto value = parseJson(R"({"b": 1, "a": [true, null, "工\u4f5c"], "c": {}})");
    ASSERT_TRUE(value);
    EXPECT_EQ(jsonText(*value), R"({"b":1,"a":[true,null,"工作"],"c":{}})");
    EXPECT_EQ(prettyJsonText(parseJson(R"({"b":1,"a":[2]})").value()), "{\n  \"b\": 1,\n  \"a\": [\n    2\n  ]\n}");
}

TEST(JsonTest, AKeyMayStandOnceInEachObject) {
    EXPECT_TRUE(parseJson(R"([{"a": 1}, {"a": {"a": {"a": 2}}}, {"b": [{"a": 3}], "a": 4}])"));
    for (const char* text : {R"({"a": 1, "a": 1})", R"([{"x": {"a": 1, "b": {"a": 0}, "a": 2}}])",
                             R"({"x": [{"y": 1}], "a": {"x": 2}, "\u0061": 3})"}) {
        SCOPED_TRACE(text);
        std::string error;
        EXPECT_EQ(parseJson(text, &error), std::nullopt);
        EXPECT_EQ(error, "the key \"a\" stands twice in one object");
    }
}

TEST(JsonTest, ErrorsSayWhereInOneLine) {
    struct Row {
        const char* name;
        std::string text;
        const char* part;
    };
    const Row rows[] = {
        {"empty", "", "line 1, column 1"},
        {"not closed", "{\n  \"a\": 1,\n", "line 3"},
        {"more than one value", "1 2", "line 1, column 3"},
        {"a comment", "// x\n1", "line 1, column 1"},
        {"no UTF-8", "\"\xff\"", "UTF-8"},
        {"a number beyond all", "[1e999]", "1e999"},
        {"a line end in a text", "\"a\nb\"", "line 2"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        std::string error;
        EXPECT_EQ(parseJson(row.text, &error), std::nullopt);
        EXPECT_EQ(parseJson(row.text), std::nullopt);
        EXPECT_THAT(error, HasSubstr(row.part));
        EXPECT_THAT(error, Not(HasSubstr("json.exception")));
        EXPECT_THAT(error, Not(HasSubstr("\n")));
    }
}

TEST(JsonTest, DeepNestingIsReadOrRefusedButHarmless) {
    const std::string deep = std::string(100'000, '[') + std::string(100'000, ']');
    const auto value = parseJson(deep);
    EXPECT_TRUE(!value || value->is_array());
    EXPECT_EQ(parseJson(std::string(1'000'000, '[')), std::nullopt);
}

TEST(JsonTest, BytesThatAreNoTextAreWrittenReplaced) { EXPECT_EQ(jsonText(Json("a\xff")), "\"a\ufffd\""); }

}  // namespace
}  // namespace quorvane
