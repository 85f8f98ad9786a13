#include "praise/PraiseMessageDatabase.h"

#include "praise/PraiseMessageTable.h"
#include "store/AppSettings.h"
#include "support/Builders.h"
#include "support/Matching.h"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <random>
#include <set>

using testing::UnorderedElementsAre;

namespace quorvane {
namespace {

using enum SupportedLanguage;
using PraiseMessageDatabase::selectMessage;
using PraiseMessageDatabase::table;

using Records = std::vector<TimelineRecordSnapshot>;

Records recordsOf(const std::vector<std::string>& names) {
    Records records;
    for (const std::string& name : names)
        records.push_back({.startTime = at("09:00:00"), .endTime = at("09:01:00"), .appName = name});
    return records;
}

/// The ids that a selection can give, found by drawing each place of the pool.
std::set<std::string> selectable(double hours, const Records& records, SupportedLanguage language,
                                 std::optional<PraiseCategory> category,
                                 const std::optional<std::string>& lastId = std::nullopt) {
    std::set<std::string> ids;
    for (std::uint64_t word = 1000; word < 1080; ++word)
        ids.insert(
            selectMessage({.records = records, .hours = hours}, language, category, lastId, [&] { return word; }).id);
    return ids;
}

TEST(PraiseLanguageTest, TheSystemsLanguageIsTheFirstOneAndElseChinese) {
    const std::pair<const char*, SupportedLanguage> rows[] = {
        {"vi:en", vietnamese}, {"pt-BR", portuguese},    {"zh-Hans_CN", chinese}, {"C.UTF-8", english},
        {"pl:en", chinese},    {"pl_PL.UTF-8", chinese}, {":de", chinese}};
    for (const auto& [list, expected] : rows) {
        setenv("LANGUAGE", list, 1);
        EXPECT_EQ(PraiseMessageDatabase::detectSystemLanguage(), expected) << list;
    }
    unsetenv("LANGUAGE");
    EXPECT_EQ(PraiseMessageDatabase::detectSystemLanguage(), english);
}

TEST(PraiseLanguageTest, CodesOfTheTwelveLanguagesAreKnownAndOthersAreChinese) {
    for (const auto& [language, code] : RawValues<SupportedLanguage>::table)
        EXPECT_EQ(PraiseMessageDatabase::languageOfCode(code), language);
    for (const auto& code : {"zh-Hans", "zh-Hant", "tlh", "", "english"})
        EXPECT_EQ(PraiseMessageDatabase::languageOfCode(code), chinese) << code;
    EXPECT_EQ(PraiseMessageDatabase::languageOfCode(std::nullopt), chinese);
}

TEST(PraiseLanguageTest, TheSelectedLanguageGoesBeforeTheSettingsAndTheseBeforeTheSystem) {
    AppSettings settings;
    settings.preferredLanguage = "it";
    setenv("LANGUAGE", "ko", 1);
    const auto languageOf = [](const PraiseRequest& request) {
        return PraiseMessageDatabase::generatePraise(request).language;
    };
    EXPECT_EQ(languageOf({.settings = &settings, .selectedLanguage = arabic}), arabic);
    EXPECT_EQ(languageOf({.settings = &settings}), italian);
    EXPECT_EQ(languageOf({}), korean);
    settings.preferredLanguage = "Italian";
    EXPECT_EQ(languageOf({.settings = &settings}), korean);
    unsetenv("LANGUAGE");
}

TEST(PraiseMessageDatabaseTest, TheCategoryFollowsTheHoursAndThenTheMostFrequentApplication) {
    using enum PraiseCategory;
    const std::tuple<double, std::vector<std::string>, PraiseCategory> rows[] = {
        {8.0, {"Figma"}, achievement},
        {7.99, {"Figma"}, dedication},
        {5.0, {}, dedication},
        {4.99, {}, productivity},
        {0, {}, productivity},
        {1, {"Figma"}, creativity},
        {1, {"Adobe Photoshop 2026"}, creativity},
        {1, {"figma"}, productivity},
        {1, {"Google Chrome"}, wisdom},
        {1, {"Sketch in Chrome"}, creativity},
        {1, {"PyCharm"}, wisdom},
        {1, {"Microsoft Teams"}, social},
        {1, {"Editor", "Slack", "Editor"}, productivity},
        {1, {"Editor", "Slack", "Slack"}, social},
        {1, {"Slack", "Editor"}, social},
    };
    for (const auto& [hours, apps, expected] : rows) {
        const Records records = recordsOf(apps);
        EXPECT_EQ(PraiseMessageDatabase::automaticCategory({.records = records, .hours = hours}), expected)
            << hours << testing::PrintToString(apps);
    }
}

TEST(PraiseMessageDatabaseTest, ARowFitsBetweenItsBoundsAndWithOneOfItsApplications) {
    const std::vector<std::string> none;
    const std::pair<MultilingualPraiseMessage, bool> rows[] = {
        {{}, true},
        {{.minHours = 3.0}, true},
        {{.minHours = 3.01}, false},
        {{.maxHours = 3.0}, true},
        {{.maxHours = 2.99}, false},
        {{.appTypes = none}, true},
        {{.appTypes = {{"Figma", "Slack"}}}, true},
        {{.appTypes = {{"Figma"}}}, false},
        {{.minHours = 3.01, .appTypes = {{"Slack"}}}, false},
    };
    const Records records = recordsOf({"Editor", "Slack"});
    for (const auto& [row, expected] : rows)
        EXPECT_EQ(PraiseMessageDatabase::fits(row, {.records = records, .hours = 3}), expected);
}

TEST(PraiseMessageDatabaseTest, RowsThatFitAreChosenAndElseAllOthersOfTheCategory) {
    using enum PraiseCategory;
    using Ids = std::set<std::string>;
    const Ids allSocial{"flexible_010", "social_001", "social_002", "social_003"};
    const std::tuple<double, std::vector<std::string>, SupportedLanguage, PraiseCategory, std::optional<std::string>,
                     Ids>
        rows[] = {
            {0.5, {}, english, social, {}, {"flexible_010"}},
            {2, {}, english, social, {}, {"flexible_010", "social_001"}},
            {2, {"Slack"}, english, social, {}, {"flexible_010", "social_001", "social_003"}},
            {3, {"Editor", "Slack"}, english, social, {}, allSocial},
            {3, {"Slack"}, english, social, "social_002", {"flexible_010", "social_001", "social_003"}},
            {0.49, {}, english, social, {}, allSocial},
            {0.5, {}, english, social, "flexible_010", {"social_001", "social_002", "social_003"}},
            // An id that stands twice is skipped twice.
            {4, {}, french, future, "future_002", {"future_001", "future_003", "unique_005", "flexible_005"}},
            // A language with one row repeats it, one without gets the fallback.
            {3, {}, german, humor, {}, {"humor_001"}},
            {3, {}, german, humor, "humor_001", {"humor_001"}},
            {0, {}, german, humor, "humor_001", {"humor_001"}},
            {3, {}, arabic, future, {}, {"default_context"}},
            {3, {}, arabic, future, "default_context", {"default_context"}},
        };
    for (const auto& [hours, apps, language, category, last, expected] : rows)
        EXPECT_EQ(selectable(hours, recordsOf(apps), language, category, last), expected);
    EXPECT_EQ(selectable(0, {}, chinese, std::nullopt).size(), 16U);  // all that praise productivity
}

TEST(PraiseMessageDatabaseTest, OverRandomDaysTheRowAlwaysHasTheLanguageAndIsNotRepeatedNeedlessly) {
    std::mt19937_64 words(20260302);
    const auto below = [&](std::size_t count) { return randomIndex(count, std::ref(words)); };
    const std::vector<std::string> apps{"Xcode", "Figma", "Google Chrome", "Slack", "Editor", "PyCharm"};
    for (int day = 0; day < 3000; ++day) {
        std::vector<std::string> names(below(8));
        for (std::string& name : names)
            name = apps[below(apps.size())];
        const Records records = recordsOf(names);
        const PraisedDay praised{.records = records, .hours = static_cast<double>(below(120)) / 10};
        const auto language = RawValues<SupportedLanguage>::table[below(12)].first;
        const auto chosen =
            below(2) == 0 ? std::nullopt : std::optional(RawValues<PraiseCategory>::table[below(12)].first);
        const auto& last = selectMessage(praised, language, chosen, std::nullopt, std::ref(words));
        const auto& row = selectMessage(praised, language, chosen, last.id, std::ref(words));

        const auto category = chosen.value_or(PraiseMessageDatabase::automaticCategory(praised));
        const auto others = std::ranges::count_if(table(), [&](const auto& other) {
            return other.category == category && other.messages.contains(language) && other.id != last.id;
        });
        ASSERT_TRUE(row.messages.contains(language)) << row.id;
        ASSERT_TRUE(row.category == category || row.id == "default_context") << row.id;
        ASSERT_EQ(row.id == last.id, others == 0) << row.id;
    }
}

TEST(PraiseMessageDatabaseTest, PraiseIsTheSentenceTheReasonAndTheRowThatTheyComeFrom) {
    const Records records = recordsOf({"Figma"});
    const PraiseRequest request{.day = {.records = records, .hours = 2, .now = at("18:00:00")},
                                .selectedLanguage = german};
    const Praise praise = PraiseMessageDatabase::generatePraise(request);
    EXPECT_EQ(praise.id, "creat_001");
    EXPECT_EQ(praise.row, &table()[3]);
    EXPECT_EQ(praise.language, german);
    EXPECT_EQ(praise.message, "Deine Ideen blühen wie ein Garten im Mai!");
    EXPECT_EQ(praise.reason, "Heute mit Figma gestaltet: 1 Minute");

    const Praise fallback = PraiseMessageDatabase::generatePraise(
        {.day = {.hours = 3}, .selectedLanguage = english, .category = PraiseCategory::comparison});
    EXPECT_EQ(fallback.reason, std::nullopt);
    EXPECT_THAT(fallback.id, testing::AnyOf("compar_001", "unique_001"));
}

}  // namespace
}  // namespace quorvane
