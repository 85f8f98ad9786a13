#include "cloud/postgresql/RecordJson.h"

#include "support/Matching.h"
#include "support/TextTable.h"

#include <limits>

namespace quorvane::postgresql {
namespace {

using RecordJson::Values;

Date date(std::int64_t microseconds) {
    return dateFromMicroseconds(microseconds);
}

TEST(RecordJsonTest, WritesEachKindOfValue) {
    EXPECT_EQ(RecordJson::text({}), "{}");
    EXPECT_EQ(RecordJson::text({{"a", "text"},
                                {"b", date(1'772'636'400'000'001)},
                                {"c", 20.0},
                                {"d", 0.1},
                                {"e", true},
                                {"f", false},
                                {"g", std::vector<std::string>{"x", ""}},
                                {"h", std::vector<std::string>{}},
                                {"i", std::numeric_limits<double>::infinity()},
                                {"j", std::numeric_limits<double>::quiet_NaN()}}),
              R"({"a":"text","b":{"$date":"2026-03-04T15:00:00.000001Z"},"c":20,"d":0.1,"e":true,"f":false,)"
              R"("g":["x",""],"h":[]})");
}

TEST(RecordJsonTest, MendsTextsThatADatabaseCannotStore) {
    using namespace std::string_literals;
    const std::tuple<const char*, std::string, std::string> rows[] = {
        {"quotes and controls", "\"\\\n\r\t\x01\x1f\x7f", "\"\\\"\\\\\\n\\r\\t\\u0001\\u001f\x7f\""},
        {"U+0000", "a\0b\0"s, "\"ab\""},
        {"a byte of Latin-1", "caf\xe9!", "\"caf\xef\xbf\xbd!\""},
        {"cut off", "\xe6\xbc", "\"\xef\xbf\xbd\""},
        {"a surrogate", "\xed\xa0\x80", "\"\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd\""},
        {"valid", "漢字 🙂", "\"漢字 🙂\""},
    };
    for (const auto& [name, text, expected] : rows) {
        SCOPED_TRACE(name);
        EXPECT_EQ(RecordJson::text({{"k", text}}), "{\"k\":" + expected + "}");
        EXPECT_EQ(RecordJson::text({{text, true}}), "{" + expected + ":true}");
    }
}

TEST(RecordJsonTest, ReadsBackWhatItWrote) {
    Values values{{"localId", "6F9619FF-8B86-D011-B42D-00C04FC964FF"},
                  {"windowTitle", "工作 \"x\" \\u0041 \x01\x7f é🙂 }{"},
                  {"tags", ""},
                  {"confidence", 0.1},
                  {"tiny", 5e-324},
                  {"large", 1.7976931348623157e308},
                  {"whole", -9'007'199'254'740'993.0},
                  {"isActive", true},
                  {"projectIds", std::vector<std::string>{"a", "b\"]"}}};
    int number = 0;
    for (const std::int64_t at :
         {std::int64_t{-62'135'596'800'000'000}, std::int64_t{-1}, std::int64_t{0}, std::int64_t{1'772'636'400'123'457},
          std::int64_t{1'772'636'399'999'999}, std::int64_t{4'102'444'800'000'001}})
        values["date" + std::to_string(++number)] = date(at);
    EXPECT_THAT(RecordJson::read(RecordJson::text(values)), Optional(values));
}

TEST(RecordJsonTest, LeavesOutValuesOfAnotherShape) {
    const auto expectRead = [](const std::string& json, Values expected) {
        expected["last"] = "kept";
        EXPECT_THAT(RecordJson::read("{" + json + R"(,"last":"kept"})"), Optional(expected)) << json;
    };
    for (const auto& row : textTable(QUORVANE_POSTGRES_DATA "/other-json-values.txt"))
        expectRead("\"a\":" + row[0], {});
    expectRead(R"("a":"first","a":["second"])", {{"a", std::vector<std::string>{"second"}}});
    expectRead(R"("a":"\"\\\/\b\f\n\r\t\u0041\u6f22\uD83D\ude42\u0000")", {{"a", "\"\\/\b\f\n\r\tA漢🙂"}});
    expectRead(R"("a": 1 , "b" : -2.5e1, "c":18446744073709551615)",
               {{"a", 1.0}, {"b", -25.0}, {"c", 18446744073709551615.0}});
}

TEST(RecordJsonTest, ReadsNothingFromWhatIsNoObjectAndQuotesNothingOfIt) {
    const std::string deep(100'000, '[');
    auto rows = textTable(QUORVANE_POSTGRES_DATA "/broken-json.txt");
    for (const std::string& json : {std::string(), std::string("{\"a\":\"\xff secret\"}"), deep, "{\"a\":" + deep})
        rows.push_back({json});
    for (const auto& row : rows) {
        const std::string& json = row[0];
        SCOPED_TRACE(json.substr(0, 40));
        std::string reason;
        EXPECT_EQ(RecordJson::read(json, &reason), std::nullopt);
        EXPECT_THAT(reason, AllOf(StartsWith("its fields "), Not(HasSubstr("secret"))));
    }
}

TEST(RecordJsonTest, WritesTextsAsAnArrayOfTheDatabase) {
    EXPECT_EQ(RecordJson::array({}), "{}");
    EXPECT_EQ(RecordJson::array({"a", "", "NULL", "\"\\{},\n"}), R"({"a","","NULL","\"\\{},)"
                                                                 "\n\"}");
}

}  // namespace
}  // namespace quorvane::postgresql
