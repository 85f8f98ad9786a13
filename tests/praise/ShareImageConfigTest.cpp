#include "praise/CardColors.h"
#include "praise/CardContent.h"
#include "praise/ShareImageConfigJson.h"
#include "support/Matching.h"

#include <cstdlib>

namespace quorvane {
namespace {

AppStat stat(std::uint8_t id, const std::string& name, double hours, double percentage) {
    return {.id = Uuid({id}), .appName = name, .hours = hours, .percentage = percentage};
}

/// So many applications, with the most hours first.
std::vector<AppStat> stats(std::size_t count) {
    std::vector<AppStat> all;
    for (std::size_t i = 0; i < count; ++i)
        all.push_back(stat(static_cast<std::uint8_t>(i + 1), "App", static_cast<double>(count - i), 5));
    return all;
}

TEST(ShareImageConfigTest, ApplicationsGetTheColoursInTheirOrderAndAfterTheLastTheFirstAgain) {
    const auto config = shareImageConfig({.scheme = ColorScheme::forest, .appStats = stats(12)});
    for (std::size_t i = 0; i < config.appStats.size(); ++i)
        EXPECT_EQ(config.appStats[i].color, colors(ColorScheme::forest)[i % 10]) << i;
}

TEST(ShareImageConfigTest, TheCardIsAboutTheChosenApplicationAndElseTheOneWithTheMostHours) {
    const std::vector<AppStat> unordered{stat(1, "Mail", 1, 25), stat(2, "Figma", 2, 50), stat(3, "Zoom", 2, 50)};
    const std::pair<std::optional<std::string>, std::string> rows[] = {
        {std::nullopt, "Figma"}, {appKey(unordered[0]), "Mail"}, {Uuid({9}).string(), "Figma"}};
    for (const auto& [selected, expected] : rows) {
        const auto config = shareImageConfig({.appStats = unordered, .selectedAppKey = selected});
        EXPECT_EQ(config.topApp->appName, expected);
        EXPECT_EQ(config.highlightedAppKey, selected);
    }
    EXPECT_EQ(shareImageConfig({}).topApp, std::nullopt);
}

TEST(ShareImageConfigTest, ComesBackWholeFromJson) {
    auto config = shareImageConfig({.style = CardStyle::luxury,
                                    .scheme = ColorScheme::random,
                                    .message = "今天 \"很好\"",
                                    .totalHours = 3.25,
                                    .appStats = stats(2),
                                    .date = dateFromSecondsSince1970(1772636400.5),
                                    .showTimeDistribution = true});
    EXPECT_EQ(shareImageConfigFrom(*parseJson(jsonText(jsonOf(config)))), config);
    config.praiseReason = "Weil";
    config.highlightedAppKey = appKey(config.appStats[1]);
    EXPECT_EQ(shareImageConfigFrom(*parseJson(jsonText(jsonOf(config)))), config);
    for (const char* const broken : {"{}", "[]", R"({"cardStyle":"plain"})"})
        EXPECT_EQ(shareImageConfigFrom(*parseJson(broken)), std::nullopt) << broken;
}

TEST(CardContentTest, TheTitleFollowsTheFlagsAndAnEmptyDaySaysSo) {
    const auto two = std::vector{stat(1, "Figma", 3, 66.666), stat(2, "Mail", 1.25, 33.333)};
    const std::tuple<const char*, ShareImageChoice, std::string, std::string, std::vector<std::string>> rows[] = {
        {"hours", {.appStats = two}, "应用使用统计", "", {"3.0 h", "1.2 h"}},
        {"shares", {.appStats = two, .showTimeDistribution = true}, "今日时间分布", "", {"66.7%", "33.3%"}},
        {"nothing", {}, "", "暂无应用数据", {}},
        {"nothing, chart forced", {.forceShowAppChart = true}, "应用使用统计", "暂无应用数据", {}},
        {"no shares", {.showTimeDistribution = true}, "今日时间分布", "暂无应用数据", {}},
    };
    for (const auto& [name, choice, title, note, values] : rows) {
        SCOPED_TRACE(name);
        const CardContent content = cardContent(shareImageConfig(choice), Localization("zh"));
        std::vector<std::string> shown;
        for (const auto& row : content.rows)
            shown.push_back(row.value);
        EXPECT_EQ(content.title, title);
        EXPECT_EQ(content.note, note);
        EXPECT_EQ(shown, values);
    }
    auto config = shareImageConfig({.appStats = two});
    config.shouldShowAppChart = false;
    EXPECT_THAT(cardContent(config, Localization("zh")).rows, IsEmpty());
}

TEST(CardContentTest, TheHighlightedApplicationStandsOutAndIsAlwaysAmongThoseShown) {
    auto many = stats(9);
    for (std::size_t i = 0; i < many.size(); ++i)
        many[i].appName = std::string(1, static_cast<char>('A' + i));
    const auto shown = [&](const std::optional<std::string>& key) {
        std::vector<std::string> names;
        for (const auto& row :
             cardContent(shareImageConfig({.appStats = many, .selectedAppKey = key}), Localization("en"), 4).rows)
            names.push_back(row.name + (row.isHighlighted ? "!" : "") + (row.isFaded ? "-" : ""));
        return names;
    };
    EXPECT_THAT(shown(std::nullopt), ElementsAre("A", "B", "C", "D"));
    EXPECT_THAT(shown(appKey(many[1])), ElementsAre("A-", "B!", "C-", "D-"));
    EXPECT_THAT(shown(appKey(many[7])), ElementsAre("A-", "B-", "C-", "H!"));
    EXPECT_THAT(shown(Uuid({99}).string()), ElementsAre("A", "B", "C", "D"));
}

TEST(CardContentTest, HoursAreWrittenAsInTheSentence) {
    const std::tuple<const char*, double, std::string> rows[] = {
        {"zh", 12.4, "12h"}, {"zh", 6.75, "6.8h"}, {"zh", 0.05, "3分钟"}, {"en", 0.05, "3min"}};
    for (const auto& [language, hours, expected] : rows) {
        const CardContent content = cardContent(shareImageConfig({.totalHours = hours}), Localization(language));
        EXPECT_EQ(content.hours + content.unit, expected);
    }
}

TEST(CardColorsTest, TextAndAccentCanBeReadOnTheBackgroundOfEveryStyleAndScheme) {
    for (const auto& [style, styleName] : RawValues<CardStyle>::table)
        for (const auto& [scheme, schemeName] : RawValues<ColorScheme>::table) {
            SCOPED_TRACE(std::string(styleName) + " " + std::string(schemeName));
            const CardColors chosen = cardColors(style, scheme);
            EXPECT_GE(contrast(chosen.text, chosen.background), 4.5);
            // On a gradient the accent is its other end.
            EXPECT_GE(contrast(chosen.accent, style == CardStyle::gradientCard ? chosen.text : chosen.background), 4.5);
            EXPECT_GE(contrast(quiet(chosen.text, chosen.background), chosen.background), 4.5);
        }
}

TEST(CardColorsTest, ContrastIsThatOfWcag) {
    EXPECT_NEAR(contrast(colorFromRgb(0x000000), colorFromRgb(0xFFFFFF)), 21, 1e-9);
    EXPECT_NEAR(contrast(colorFromRgb(0x767676), colorFromRgb(0xFFFFFF)), 4.54, 0.005);
    EXPECT_EQ(readable(colorFromRgb(0x767676), colorFromRgb(0xFFFFFF), 4.5), colorFromRgb(0x767676));
}

}  // namespace
}  // namespace quorvane
