#include "l10n/Localization.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <utility>

namespace quorvane {
namespace {

TEST(LocalizationTest, AKeyStandsForTheTextInTheLanguage) {
    static constexpr TextKey keys[] = {"operator_contains", "operator_prefix"};
    const Localization english("en");
    const Localization chinese("zh");
    EXPECT_EQ(english.text(keys[0]), "contains");
    EXPECT_EQ(chinese.text(keys[0]), "包含");
    EXPECT_EQ(english.text("list_separator"), ", ");
    EXPECT_EQ(chinese.text("sentence_separator"), "");
    EXPECT_EQ(keys[1].name(), "operator_prefix");
    EXPECT_NE(keys[0], keys[1]);
}

TEST(LocalizationTest, KeysAndValuesAreCheckedAgainstTheCatalogue) {
    static_assert(messageIndex("operator_regex"));
    static_assert(!messageIndex("operator_rege") && !messageIndex("operator_regexp") && !messageIndex(""));

    constexpr MessageSignature message{"mixed", "vnw"};
    static_assert(message.takes<std::string, int, const char*>());
    static_assert(message.takes<double, std::size_t, std::string_view>());
    static_assert(!message.takes<std::string, std::string, std::string>(), "a text where a number is wanted");
    static_assert(!message.takes<std::string, int, int>(), "a number where a word is wanted");
    static_assert(!message.takes<std::string, int>());
    static_assert(!message.takes<std::string, int, const char*, int>());

    static_assert(messageSignatures[*messageIndex("builtin_rules_import_result_message")].arguments == "nn");
    static_assert(messageSignatures[*messageIndex("rule_summary_template")].arguments == "vvvv");
}

TEST(LocalizationTest, PluralsAndNumbersFollowTheLanguageOfTheWords) {
    struct Row {
        const char* language;
        int imported;
        std::size_t skipped;
        const char* expected;
    };
    const Row rows[] = {
        {"en", 0, 0, "No rule was added; none was there already."},
        {"en", 1, 1, "1 rule was added; 1 was there already."},
        {"en", 1234, 2, "1,234 rules were added; 2 were there already."},
        {"zh", 0, 0, "未添加规则；没有重复的规则。"},
        {"zh", 1, 1, "已添加 1 条规则；1 条此前已存在。"},
        {"zh", 1234, 2, "已添加 1,234 条规则；2 条此前已存在。"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(Localization(row.language).text("builtin_rules_import_result_message", row.imported, row.skipped),
                  row.expected);
}

TEST(LocalizationTest, PlainArgumentsTakeNumbersToo) {
    EXPECT_EQ(Localization("en").text("builtin_rule_name_template", 12345, 2.5), "12,345: 2.5");
}

TEST(LocalizationTest, ValuesComeOutUnchanged) {
    const Localization localization("en");
    for (const std::string value :
         {"{0}", "}{", "it's '{0}'", "100 % #1 |", "עברית (אבג)", "e\u0301 👩‍💻 工作", "", "a\nb"}) {
        EXPECT_EQ(localization.text("rule_summary_category", value), "Set the category to " + value + ".");
        EXPECT_EQ(localization.text("rule_summary_template", "URL", std::string_view("is"), value, "x"),
                  "When: URL is “" + value + "”. Then: x");
    }
    EXPECT_EQ(localization.text("rule_summary_project", "cut \xe5\xb7"), "Assign it to cut \uFFFD.");
}

TEST(LocalizationTest, ATagChoosesTheCatalogue) {
    struct Row {
        const char* tag;
        const char* language;
    };
    const Row rows[] = {{"zh", "zh"},    {"zh_CN.UTF-8", "zh"}, {"zh-Hans", "zh"},     {"zh_TW", "zh"},
                        {"ZH-cn", "zh"}, {"zh.UTF-8", "zh"},    {"zh@pinyin", "zh"},   {"en_US", "en"},
                        {"C", "en"},     {"C.UTF-8", "en"},     {"de_DE.UTF-8", "en"}, {"zhx", "en"},
                        {"", "en"}};
    for (const Row& row : rows)
        EXPECT_EQ(Localization(row.tag).language(), row.language) << row.tag;
}

TEST(LocalizationTest, TheFirstOfTheUsersLanguagesWithACatalogueIsTaken) {
    const std::pair<const char*, const char*> rows[] = {
        {"fr:de:zh_CN:en", "zh"}, {"en_GB:zh", "en"}, {"C:zh", "en"}, {"::zh:", "zh"}, {"fr:de", "en"}};
    for (const auto& [list, language] : rows) {
        setenv("LANGUAGE", list, 1);
        EXPECT_EQ(Localization::fromEnvironment().language(), language) << list;
    }
    unsetenv("LANGUAGE");
}

}  // namespace
}  // namespace quorvane
