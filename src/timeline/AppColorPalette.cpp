#include "timeline/AppColorPalette.h"

#include "base/Fnv.h"
#include "base/Text.h"

#include <array>
#include <unordered_map>
#include <utility>

namespace quorvane::AppColorPalette {
namespace {

struct Brand {
    std::string_view key;  ///< lower case
    std::uint32_t rgb;
};

/// Rows of one product have one colour, so that a record with only a name looks like one with a bundle identifier.
constexpr std::array<Brand, 78> brands{{
    {"com.apple.safari", 0x1B7AE9},
    {"com.google.chrome", 0xEA7A21},
    {"org.mozilla.firefox", 0xE55121},
    {"com.microsoft.edgemac", 0x0B92BA},
    {"company.thebrowser.browser", 0x9C5DE6},
    {"com.apple.dt.xcode", 0x2E80E0},
    {"com.microsoft.vscode", 0x1673CA},
    {"com.todesktop.230313mzl4w4u92", 0x389D9D},
    {"com.jetbrains.intellij", 0xDA4287},
    {"com.googlecode.iterm2", 0x2D9660},
    {"com.apple.terminal", 0x5A6673},
    {"com.openai.chat", 0x0EA58A},
    {"chatgpt", 0x0EA58A},
    {"chatgpt.com", 0x0EA58A},
    {"chat.openai.com", 0x0EA58A},
    {"com.anthropic.claudefordesktop", 0xD67147},
    {"claude", 0xD67147},
    {"claude.ai", 0xD67147},
    {"com.microsoft.word", 0x2555B1},
    {"com.microsoft.excel", 0x197A4D},
    {"com.microsoft.powerpoint", 0xCB512D},
    {"com.apple.iwork.pages", 0xF18B21},
    {"com.apple.iwork.numbers", 0x37AB3C},
    {"com.apple.iwork.keynote", 0x4783E1},
    {"notion.id", 0x434A4F},
    {"com.tencent.xinwechat", 0x1BAA4F},
    {"com.tencent.qq", 0x1492E5},
    {"com.alibaba.dingtalkmac", 0x3296FA},
    {"com.electron.lark", 0x2E73EA},
    {"com.tinyspeck.slackmacgap", 0x764FA9},
    {"com.hnc.discord", 0x5865F2},
    {"com.apple.mail", 0x277EE9},
    {"com.spotify.client", 0x1DA238},
    {"org.videolan.vlc", 0xFF8800},
    {"com.apple.music", 0xEF3551},
    {"com.colliderli.iina", 0x6666E1},
    {"com.figma.desktop", 0xA253EF},
    {"com.adobe.photoshop", 0x276ACE},
    {"com.bohemiancoding.sketch3", 0xF3A927},
    {"safari", 0x1B7AE9},
    {"google chrome", 0xEA7A21},
    {"chrome", 0xEA7A21},
    {"firefox", 0xE55121},
    {"microsoft edge", 0x0B92BA},
    {"arc", 0x9C5DE6},
    {"xcode", 0x2E80E0},
    {"code", 0x1673CA},
    {"visual studio code", 0x1673CA},
    {"cursor", 0x389D9D},
    {"iterm2", 0x2D9660},
    {"terminal", 0x5A6673},
    {"终端", 0x5A6673},
    {"microsoft word", 0x2555B1},
    {"microsoft excel", 0x197A4D},
    {"microsoft powerpoint", 0xCB512D},
    {"pages", 0xF18B21},
    {"numbers", 0x37AB3C},
    {"keynote", 0x4783E1},
    {"notion", 0x434A4F},
    {"微信", 0x1BAA4F},
    {"wechat", 0x1BAA4F},
    {"qq", 0x1492E5},
    {"钉钉", 0x3296FA},
    {"dingtalk", 0x3296FA},
    {"飞书", 0x2E73EA},
    {"lark", 0x2E73EA},
    {"slack", 0x764FA9},
    {"discord", 0x5865F2},
    {"mail", 0x277EE9},
    {"邮件", 0x277EE9},
    {"spotify", 0x1DA238},
    {"vlc", 0xFF8800},
    {"music", 0xEF3551},
    {"音乐", 0xEF3551},
    {"iina", 0x6666E1},
    {"figma", 0xA253EF},
    {"photoshop", 0x276ACE},
    {"sketch", 0xF3A927},
}};
static_assert(!brands.back().key.empty());

constexpr std::array<Color, 10> palette{{{66, 99, 235},
                                         {240, 62, 62},
                                         {12, 166, 120},
                                         {247, 103, 7},
                                         {112, 72, 232},
                                         {16, 152, 173},
                                         {214, 51, 108},
                                         {102, 168, 15},
                                         {47, 158, 68},
                                         {174, 62, 201}}};

std::optional<Color> brandColor(std::string_view key) {
    static const auto colors = [] {
        std::unordered_map<std::string_view, Color> byKey;
        for (const auto& [brand, rgb] : brands)
            byKey.emplace(brand, colorFromRgb(rgb));
        return byKey;
    }();
    const auto found = colors.find(key);
    return found == colors.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace

Color appColor(const std::optional<std::string>& bundleId, const std::optional<std::string>& appName) {
    std::string seed;
    for (const auto* given : {&bundleId, &appName}) {
        if (!*given || (*given)->empty()) continue;
        std::string key = text::lowercased(**given);
        if (const auto color = brandColor(key)) return *color;
        if (seed.empty()) seed = std::move(key);
    }
    return hashedColor(seed.empty() ? "unknown" : seed);
}

Color hashedColor(std::string_view seed) {
    return palette[fnv1a(seed) % palette.size()];
}

}  // namespace quorvane::AppColorPalette
