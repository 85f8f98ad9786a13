#include "timeline/AppColorPalette.h"

#include <gtest/gtest.h>
#include <initializer_list>

namespace quorvane {
namespace {

using AppColorPalette::appColor;
using AppColorPalette::hashedColor;

TEST(AppColorPaletteTest, GivesAllNamesOfAProductItsColorInAnyPositionCaseAndAppearance) {
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
            EXPECT_EQ(hexText(appColor(key, {}, {}, false)), row.color);
            EXPECT_EQ(hexText(appColor({}, key, {}, true)), row.color);
            EXPECT_EQ(hexText(appColor({}, {}, key, false)), row.color);
        }
}

TEST(AppColorPaletteTest, AsksForBundleHostAndNameInThisOrderAndHashesTheFirstThatSaysSomething) {
    using Text = std::optional<std::string>;
    struct Row {
        const char* name;
        Text bundleId;
        Text appName;
        Text host;
        Color expected;
    };
    const Color safari = colorFromRgb(0x1B7AE9);
    const Color assistant = colorFromRgb(0xD67147);
    const Row rows[] = {
        {"a known bundle goes before the host", "com.apple.Safari", "Safari", "claude.ai", safari},
        {"the host goes before the name", "org.example.browser", "Safari", "Claude.AI", assistant},
        {"the name is left", "org.example.browser", "Safari", "example.com", safari},
        {"nothing known: bundle", "org.GIMP.gimp", "Gimp", "example.com", hashedColor("org.gimp.gimp", false)},
        {"nothing known: host", "", "Gimp", "Example.com", hashedColor("example.com", false)},
        {"nothing known: name", {}, "Gimp", "", hashedColor("gimp", false)},
        {"nothing at all", {}, {}, {}, hashedColor("unknown", false)},
        {"empty texts", "", "", "", hashedColor("unknown", false)},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(hexText(appColor(row.bundleId, row.appName, row.host, false)), hexText(row.expected));
    }
    EXPECT_EQ(appColor({}, {}, {}, true), hashedColor("unknown", true));
}

TEST(AppColorPaletteTest, HashesATextToTheSameColorForEver) {
    struct Row {
        const char* seed;
        const char* light;
        const char* dark;
    };
    const Row rows[] = {
        {"example.com", "#4263EB", "#748FFC"}, {"l", "#F03E3E", "#FF8787"},    {"e", "#0CA678", "#38D9A9"},
        {"d", "#F76707", "#FFA94D"},           {"写作", "#7048E8", "#9775FA"}, {"unknown", "#1098AD", "#3BC9DB"},
        {"a", "#D6336C", "#F783AC"},           {"", "#66A80F", "#A9E34B"},     {"Gimp", "#2F9E44", "#69DB7C"},
        {"b", "#AE3EC9", "#DA77F2"},           {"gimp", "#7048E8", "#9775FA"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.seed);
        EXPECT_EQ(hexText(hashedColor(row.seed, false)), row.light);
        EXPECT_EQ(hexText(hashedColor(row.seed, true)), row.dark);
    }
}

}  // namespace
}  // namespace quorvane
