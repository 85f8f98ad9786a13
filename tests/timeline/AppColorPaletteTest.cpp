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
        {"#E55121", {"org.mozilla.firefox", "firefox"}},
        {"#0B92BA", {"com.microsoft.edgemac", "microsoft edge"}},
        {"#9C5DE6", {"company.thebrowser.browser", "arc"}},
        {"#2E80E0", {"com.apple.dt.xcode", "xcode"}},
        {"#1673CA", {"com.microsoft.vscode", "code", "visual studio code"}},
        {"#389D9D", {"com.todesktop.230313mzl4w4u92", "cursor"}},
        {"#DA4287", {"com.jetbrains.intellij"}},
        {"#2D9660", {"com.googlecode.iterm2", "iterm2"}},
        {"#5A6673", {"com.apple.terminal", "terminal", "终端"}},
        {"#0EA58A", {"com.openai.chat", "chatgpt", "chatgpt.com", "chat.openai.com"}},
        {"#D67147", {"com.anthropic.claudefordesktop", "claude", "claude.ai"}},
        {"#2555B1", {"com.microsoft.word", "microsoft word"}},
        {"#197A4D", {"com.microsoft.excel", "microsoft excel"}},
        {"#CB512D", {"com.microsoft.powerpoint", "microsoft powerpoint"}},
        {"#F18B21", {"com.apple.iwork.pages", "pages"}},
        {"#37AB3C", {"com.apple.iwork.numbers", "numbers"}},
        {"#4783E1", {"com.apple.iwork.keynote", "keynote"}},
        {"#434A4F", {"notion.id", "notion"}},
        {"#1BAA4F", {"com.tencent.xinwechat", "微信", "wechat"}},
        {"#1492E5", {"com.tencent.qq", "qq"}},
        {"#3296FA", {"com.alibaba.dingtalkmac", "钉钉", "dingtalk"}},
        {"#2E73EA", {"com.electron.lark", "飞书", "lark"}},
        {"#764FA9", {"com.tinyspeck.slackmacgap", "slack"}},
        {"#5865F2", {"com.hnc.discord", "discord"}},
        {"#277EE9", {"com.apple.mail", "mail", "邮件"}},
        {"#1DA238", {"com.spotify.client", "spotify"}},
        {"#FF8800", {"org.videolan.vlc", "vlc"}},
        {"#EF3551", {"com.apple.music", "music", "音乐"}},
        {"#6666E1", {"com.colliderli.iina", "iina"}},
        {"#A253EF", {"com.figma.desktop", "figma"}},
        {"#276ACE", {"com.adobe.photoshop", "photoshop"}},
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
