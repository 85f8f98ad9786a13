#include "timeline/AppColorPalette.h"

#include "timeline/AppStatistics.h"
#include "timeline/MonthTimeline.h"
#include "timeline/OverviewBuilders.h"
#include "timeline/TimelineProcessing.h"
#include "timeline/WeekTimeline.h"

#include <gtest/gtest.h>
#include <initializer_list>

namespace quorvane {
namespace {

using AppColorPalette::appColor;
using AppColorPalette::hashedColor;

TEST(AppColorPaletteTest, GivesAllNamesOfAProductItsColorInAnyPositionAndCase) {
    struct Row {
        const char* color;
        std::initializer_list<const char*> keys;
    };
    const Row rows[] = {
        {"#1B7AE9", {"com.apple.safari", "safari", "COM.APPLE.SAFARI"}},
        {"#EA7A21", {"com.google.chrome", "google chrome", "chrome", "com.google.Chrome"}},
        {"#1673CA", {"com.microsoft.vscode", "code", "visual studio code"}},
        {"#DA4287", {"com.jetbrains.intellij"}},
        {"#5A6673", {"com.apple.terminal", "terminal", "终端"}},
        {"#0EA58A", {"com.openai.chat", "chatgpt", "chatgpt.com", "chat.openai.com"}},
        {"#D67147", {"com.anthropic.claudefordesktop", "claude", "claude.ai"}},
        {"#2555B1", {"com.microsoft.word", "microsoft word"}},
        {"#1BAA4F", {"com.tencent.xinwechat", "微信", "wechat"}},
        {"#F3A927", {"com.bohemiancoding.sketch3", "sketch"}},
    };
    for (const Row& row : rows)
        for (const char* key : row.keys) {
            SCOPED_TRACE(key);
            EXPECT_EQ(hexText(appColor(key, {})), row.color);
            EXPECT_EQ(hexText(appColor({}, key)), row.color);
        }
}

TEST(AppColorPaletteTest, AsksForBundleAndNameInThisOrderAndHashesTheFirstThatSaysSomething) {
    using Text = std::optional<std::string>;
    struct Row {
        const char* name;
        Text bundleId;
        Text appName;
        Color expected;
    };
    const Color safari = colorFromRgb(0x1B7AE9);
    const Row rows[] = {
        {"a known bundle", "com.apple.Safari", "Claude", safari},
        {"a known name", "org.example.browser", "Safari", safari},
        {"nothing known: bundle", "org.GIMP.gimp", "Gimp", hashedColor("org.gimp.gimp")},
        {"nothing known: name", "", "Gimp", hashedColor("gimp")},
        {"nothing at all", {}, {}, hashedColor("unknown")},
        {"empty texts", "", "", hashedColor("unknown")},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(hexText(appColor(row.bundleId, row.appName)), hexText(row.expected));
    }
}

TEST(AppColorPaletteTest, ARecordHasOneColorInDayWeekMonthAndSums) {
    const Date noon = march(3, "12:00:00");
    auto page = activity("Slack", march(3, "09:00:00"), march(3, "10:00:00"));
    page.bundleId = "org.example.browser";
    page.url = "https://claude.ai/new";
    const std::vector records{page};
    const DayRecords ofDay{&page};
    const Color color = appColor(page.bundleId, page.appName);
    EXPECT_EQ(TimelineProcessing::makeItems(TimelineProcessing::process(records, noon, mondayFirst()))[0].color, color);
    EXPECT_EQ(WeekTimeline::column(noon, ofDay, {.now = noon}, mondayFirst()).activities.at(0).color, color);
    EXPECT_EQ(MonthTimeline::cell(noon, ofDay, {.now = noon}, mondayFirst(), mondayFirst()).lines.at(0).mark, color);
    EXPECT_EQ(appStatistics(records, noon).appStats.at(0).color, color);
}

TEST(AppColorPaletteTest, HashesATextToTheSameColorForEver) {
    const std::pair<const char*, const char*> rows[] = {
        {"example.com", "#4263EB"}, {"l", "#F03E3E"}, {"e", "#0CA678"},    {"d", "#F76707"},
        {"写作", "#7048E8"},        {"a", "#D6336C"}, {"", "#66A80F"},     {"unknown", "#1098AD"},
        {"Gimp", "#2F9E44"},        {"b", "#AE3EC9"}, {"gimp", "#7048E8"},
    };
    for (const auto& [seed, color] : rows)
        EXPECT_EQ(hexText(hashedColor(seed)), color) << seed;
}

}  // namespace
}  // namespace quorvane
