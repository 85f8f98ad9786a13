#include "praise/PraiseMessageTable.h"

#include "base/Text.h"

#include <gmock/gmock.h>
#include <map>
#include <set>

using testing::ElementsAre;
using testing::IsEmpty;

namespace quorvane {
namespace {

using enum SupportedLanguage;
using PraiseMessageDatabase::fallbackRow;
using PraiseMessageDatabase::table;

/// The first row with this id; the fallback row, which no test asks for, if there is none.
const MultilingualPraiseMessage& row(const std::string& id) {
    for (const MultilingualPraiseMessage& candidate : table())
        if (candidate.id == id) return candidate;
    ADD_FAILURE() << "no row " << id;
    return fallbackRow();
}

std::set<SupportedLanguage> languagesOf(const PraiseTemplates& templates) {
    std::set<SupportedLanguage> languages;
    for (const auto& [language, text] : templates)
        languages.insert(language);
    return languages;
}

std::set<SupportedLanguage> firstLanguages(std::size_t count) {
    std::set<SupportedLanguage> languages;
    for (std::size_t i = 0; i < count; ++i)
        languages.insert(RawValues<SupportedLanguage>::table[i].first);
    return languages;
}

/// All texts of the table and the fallback row; the name says which.
std::vector<std::pair<std::string, std::string>> allTexts(std::optional<SupportedLanguage> only = std::nullopt) {
    std::vector<std::pair<std::string, std::string>> texts;
    const auto add = [&](const std::string& id, const PraiseTemplates& templates) {
        for (const auto& [language, text] : templates)
            if (!only || language == *only) texts.emplace_back(id + " " + std::string(rawValue(language)), text);
    };
    for (const MultilingualPraiseMessage& each : table()) {
        add(each.id, each.messages);
        if (each.reasonTemplates) add(each.id + " reason", *each.reasonTemplates);
    }
    add(fallbackRow().id, fallbackRow().messages);
    return texts;
}

std::string without(std::string text, const std::string& part) {
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at))
        text.erase(at, part.size());
    return text;
}

TEST(PraiseMessageTableTest, RowsStandInTheirOrder) {
    std::string ids;
    for (const MultilingualPraiseMessage& each : table())
        ids += each.id + " ";
    EXPECT_EQ(ids, "prod_001 prod_002 prod_003 creat_001 creat_002 creat_003 creat_004 dedic_001 dedic_002 dedic_003 "
                   "future_002 achiev_001 achiev_002 achiev_003 achiev_004 future_001 future_002 future_003 "
                   "compar_001 compar_002 compar_003 motiv_001 motiv_002 motiv_003 humor_001 humor_002 humor_003 "
                   "wisdom_001 wisdom_002 wisdom_003 success_001 success_002 success_003 "
                   "special_001 special_002 special_003 special_004 special_005 code_001 code_002 code_003 "
                   "learn_001 learn_002 learn_003 work_001 work_002 work_003 creative_001 creative_002 creative_003 "
                   "fitness_001 fitness_002 fitness_003 social_001 social_002 social_003 "
                   "entertainment_001 entertainment_002 entertainment_003 "
                   "unique_001 unique_002 unique_003 unique_004 unique_005 "
                   "prod_005 prod_006 prod_007 prod_008 prod_009 prod_010 "
                   "flexible_001 flexible_002 flexible_003 flexible_004 flexible_005 "
                   "flexible_006 flexible_007 flexible_008 flexible_009 flexible_010 ");
    EXPECT_NE(table()[10].messages, table()[16].messages);
}

TEST(PraiseMessageTableTest, TenRowsHaveAllLanguagesOneAllButArabicTheOthersSix) {
    std::map<std::size_t, int> rowsByCoverage;
    for (const MultilingualPraiseMessage& each : table()) {
        SCOPED_TRACE(each.id);
        const std::size_t count = each.messages.size();
        ++rowsByCoverage[count];
        EXPECT_EQ(languagesOf(each.messages), firstLanguages(count));
        if (each.reasonTemplates) {
            EXPECT_EQ(languagesOf(*each.reasonTemplates), firstLanguages(count));
        }
    }
    EXPECT_THAT(rowsByCoverage, ElementsAre(std::pair{6, 69}, std::pair{11, 1}, std::pair{12, 10}));
    EXPECT_EQ(row("future_003").messages.size(), 11U);
    EXPECT_EQ(fallbackRow().messages.size(), 12U);
}

TEST(PraiseMessageTableTest, EveryRowHasAMinimumAndNoneAMaximum) {
    for (const MultilingualPraiseMessage& each : table()) {
        SCOPED_TRACE(each.id);
        ASSERT_TRUE(each.minHours);
        if (each.id.starts_with("flexible")) {
            EXPECT_EQ(*each.minHours, 0.5);
        } else {
            EXPECT_THAT(*each.minHours, testing::AllOf(testing::Ge(2), testing::Le(6)));
        }
        EXPECT_FALSE(each.maxHours);
        EXPECT_NE(each.condition.value_or(""), "");
    }
}

TEST(PraiseMessageTableTest, SomeRowsAreKnownLetterForLetter) {
    const std::vector<std::string> teams{"Slack", "Teams", "Discord"};
    struct Row {
        std::string id;
        PraiseCategory category;
        double minHours;
        std::optional<std::vector<std::string>> appTypes;
        std::string inChinese;
        std::string inEnglish;
    };
    const Row rows[] = {
        {"code_001",
         PraiseCategory::productivity,
         4,
         {},
         "你今天的代码比Linux内核还要稳定！",
         "Your code today is more stable than the Linux kernel!"},
        {"work_003", PraiseCategory::productivity, 3, teams, "你的团队协作比蚂蚁还要默契！",
         "Your teamwork is more harmonious than an ant colony!"},
        {"motiv_002",
         PraiseCategory::motivation,
         2,
         {},
         "每一分钟的努力都在为你的梦想添砖加瓦！",
         "Every minute of effort is adding bricks to your dream!"},
        {"flexible_004",
         PraiseCategory::achievement,
         0.5,
         {},
         "今天的{hours}小时是你成长路上的重要一步！",
         "Your {hours} hours today is an important step on your growth path!"},
        {"flexible_010",
         PraiseCategory::social,
         0.5,
         {},
         "你的{hours}小时社交，比外交官还要专业！",
         "Your {hours} hours of socializing, are more professional than a diplomat!"},
    };
    for (const Row& expected : rows) {
        SCOPED_TRACE(expected.id);
        const auto& found = row(expected.id);
        EXPECT_EQ(found.category, expected.category);
        EXPECT_EQ(found.minHours, expected.minHours);
        EXPECT_EQ(found.appTypes, expected.appTypes);
        EXPECT_EQ(found.messages.at(chinese), expected.inChinese);
        EXPECT_EQ(found.messages.at(english), expected.inEnglish);
    }
    EXPECT_EQ(row("flexible_004").condition, "任何成长时间");

    const auto& coding = row("prod_001");
    EXPECT_EQ(coding.category, PraiseCategory::productivity);
    EXPECT_EQ(coding.condition, "编程时间超过3小时");
    EXPECT_EQ(coding.minHours, 3.0);
    EXPECT_THAT(coding.appTypes.value(), ElementsAre("Xcode", "Visual Studio Code", "IntelliJ IDEA"));
    EXPECT_EQ(coding.reasonTemplates->at(chinese), "你今天用{appName}编程了{hours}小时");
    EXPECT_EQ(coding.reasonTemplates->at(english), "You coded with {appName} for {hours} hours today");

    EXPECT_EQ(fallbackRow().id, "default_context");
    EXPECT_EQ(fallbackRow().category, PraiseCategory::motivation);
    EXPECT_EQ(fallbackRow().messages.at(chinese), "你今天投入了{hours}小时，每一分都在为未来蓄力！");
    EXPECT_EQ(fallbackRow().messages.at(english),
              "You invested {hours} hours today; every minute is charging your future!");
    EXPECT_FALSE(fallbackRow().condition || fallbackRow().minHours || fallbackRow().maxHours ||
                 fallbackRow().appTypes || fallbackRow().reasonTemplates);
}

TEST(PraiseMessageTableTest, EveryTextIsASentenceOfItsOwnAndFitsTheCard) {
    std::map<std::string, std::string> seen;
    for (const auto& [name, text] : allTexts()) {
        SCOPED_TRACE(name);
        SCOPED_TRACE(text);
        EXPECT_EQ(text, text::trimmedWithNewlines(text));
        EXPECT_GT(text::displayWidth(text), 7);
        EXPECT_LE(text::displayWidth(text), 74);  // four lines of the card
        EXPECT_TRUE(seen.emplace(text, name).second) << "also " << seen[text];
        EXPECT_THAT(text, testing::Not(testing::HasSubstr("  ")));
        EXPECT_EQ(without(without(text, "{hours}"), "{appName}").find_first_of("{}"), std::string::npos);
    }
}

TEST(PraiseMessageTableTest, ReasonsNameTheApplicationAndTheTimeAndMessagesNoApplication) {
    for (const auto& [name, text] : allTexts()) {
        SCOPED_TRACE(name);
        SCOPED_TRACE(text);
        const bool isReason = name.find(" reason ") != std::string::npos;
        EXPECT_EQ(text.find("{appName}") != std::string::npos, isReason);
        EXPECT_TRUE(!isReason || text.find("{hours}") != std::string::npos);
    }
    for (const MultilingualPraiseMessage& each : table())
        for (const auto& [language, text] : each.messages)
            EXPECT_EQ(text.find("{hours}") != std::string::npos, each.id.starts_with("flexible")) << text;
}

TEST(PraiseMessageTableTest, SentencesArePunctuatedAsTheirLanguageDoesIt) {
    const auto texts = [](SupportedLanguage language, const std::string& unwanted) {
        std::vector<std::string> found;
        for (const auto& [name, text] : allTexts(language))
            if (text.find(unwanted) != std::string::npos) found.push_back(text);
        return found;
    };
    for (const SupportedLanguage language : {chinese, japanese})
        for (const char* halfWidth : {"!", "?", ",", ":"})
            EXPECT_THAT(texts(language, halfWidth), IsEmpty());
    for (const char* breakable : {" !", " ?", " :", " ;", "{hours} h"})
        EXPECT_THAT(texts(french, breakable), IsEmpty());
    for (const SupportedLanguage language : {english, french, italian})
        EXPECT_THAT(texts(language, "'"), IsEmpty());
    for (const char* foreign : {",", ";", "?"})
        EXPECT_THAT(texts(arabic, foreign), IsEmpty());
    EXPECT_THAT(texts(russian, "{hours} ч"), IsEmpty());
    for (const auto& [name, text] : allTexts(spanish))
        EXPECT_EQ(text.find("¡") != std::string::npos, text.ends_with("!")) << text;
}

}  // namespace
}  // namespace quorvane
