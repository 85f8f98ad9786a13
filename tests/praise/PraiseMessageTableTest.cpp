#include "praise/PraiseMessageTable.h"

#include "base/Text.h"
#include "support/Matching.h"

#include <map>

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

/// Are these texts in the first languages of the table, so many of them?
bool isInFirstLanguages(const PraiseTemplates& templates, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
        if (!templates.contains(RawValues<SupportedLanguage>::table[i].first)) return false;
    return templates.size() == count;
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
    ASSERT_THAT(table(), SizeIs(80));
    const std::pair<std::size_t, const char*> rows[] = {
        {0, "prod_001"}, {10, "future_002"}, {16, "future_002"}, {33, "special_001"}, {79, "flexible_010"}};
    for (const auto& [place, id] : rows)
        EXPECT_EQ(table()[place].id, id);
    EXPECT_NE(table()[10].messages, table()[16].messages);
}

TEST(PraiseMessageTableTest, TenRowsHaveAllLanguagesOneAllButArabicTheOthersSix) {
    std::map<std::size_t, int> rowsByCoverage;
    for (const MultilingualPraiseMessage& each : table()) {
        SCOPED_TRACE(each.id);
        const std::size_t count = each.messages.size();
        ++rowsByCoverage[count];
        EXPECT_TRUE(isInFirstLanguages(each.messages, count));
        EXPECT_TRUE(!each.reasonTemplates || isInFirstLanguages(*each.reasonTemplates, count));
    }
    EXPECT_THAT(rowsByCoverage, ElementsAre(std::pair{6, 69}, std::pair{11, 1}, std::pair{12, 10}));
    EXPECT_EQ(row("future_003").messages.size(), 11U);
    EXPECT_EQ(fallbackRow().messages.size(), 12U);
}

TEST(PraiseMessageTableTest, EveryRowHasAMinimumAndNoneAMaximum) {
    for (const MultilingualPraiseMessage& each : table()) {
        SCOPED_TRACE(each.id);
        ASSERT_TRUE(each.minHours);
        const bool isFlexible = each.id.starts_with("flexible");
        EXPECT_TRUE(isFlexible ? each.minHours == 0.5 : each.minHours >= 2 && each.minHours <= 6) << *each.minHours;
        EXPECT_FALSE(each.maxHours);
        EXPECT_NE(each.condition.value_or(""), "");
    }
}

TEST(PraiseMessageTableTest, SomeRowsAreKnownLetterForLetter) {
    const auto& teams = row("work_003");
    EXPECT_EQ(teams.category, PraiseCategory::productivity);
    EXPECT_EQ(teams.minHours, 3);
    EXPECT_THAT(teams.appTypes.value(), ElementsAre("Slack", "Teams", "Discord"));
    EXPECT_EQ(teams.messages.at(english), "Your teamwork is more harmonious than an ant colony!");
    EXPECT_EQ(row("prod_001").condition, "编程时间超过3小时");
    EXPECT_EQ(row("prod_001").reasonTemplates->at(chinese), "你今天用{appName}编程了{hours}小时");
    EXPECT_EQ(fallbackRow().id, "default_context");
    EXPECT_EQ(fallbackRow().category, PraiseCategory::motivation);
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
        EXPECT_THAT(text, Not(HasSubstr("  ")));
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
