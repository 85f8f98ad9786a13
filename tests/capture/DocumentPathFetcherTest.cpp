#include "capture/DocumentPathFetcher.h"

#include "platform/simulated/SimulatedAccessibility.h"
#include "platform/simulated/SimulatedAutomation.h"
#include "platform/simulated/SimulatedRunningApplications.h"
#include "support/Matching.h"
#include "support/RecordingConsole.h"

#include <fmt/format.h>

namespace quorvane {

// NOLINTNEXTLINE(readability-identifier-naming): the name that the test library looks for
void PrintTo(const WindowInfo& info, std::ostream* out) {
    *out << info.title.value_or("(none)") << " | " << info.document.value_or("(none)");
}

namespace {

namespace Name = platform::AccessibleName;

constexpr const char* textEdit = "com.apple.TextEdit";
constexpr const char* unlisted = "org.example.editor";
constexpr const char* noDocument = "DocumentPathFetcher: AppleScript 未能获取到文档路径，尝试备用方案";

class DocumentPathFetcherTest : public testing::Test {
protected:
    /// The application and its window, which has no attribute yet.
    void bringToFront(const std::string& bundleId, const std::string& name = "Editor") {
        applications.setFrontmost(platform::RunningApplication{
            .processIdentifier = 7, .bundleIdentifier = bundleId, .localizedName = name, .windowTitle = "plain title"});
        tree.setApplication(7, "app");
        tree.setElement("app", Name::focusedWindow, "window");
    }
    void answer(platform::ScriptResult result) {
        automation.answer([result](const platform::Script&) { return result; });
    }

    platform::SimulatedAccessibility tree;
    platform::SimulatedRunningApplications applications;
    platform::SimulatedAutomation automation;
    RecordingConsole console;
    DocumentPathFetcher fetcher{tree, applications, automation, console};
};

TEST_F(DocumentPathFetcherTest, AnotherApplicationInFrontGivesNothing) {
    EXPECT_EQ(fetcher.windowInfo(textEdit), WindowInfo());
    EXPECT_THAT(console.lines(), ElementsAre("DocumentPathFetcher: 无法获取前台应用"));
    bringToFront(unlisted);
    EXPECT_EQ(fetcher.windowInfo(textEdit), WindowInfo());
    applications.setFrontmost(platform::RunningApplication{.processIdentifier = 7});
    EXPECT_EQ(fetcher.windowInfo(textEdit), WindowInfo());
    EXPECT_EQ(console.lines().back(), "DocumentPathFetcher: 前台应用不匹配");
    EXPECT_THAT(tree.asked(), IsEmpty());
}

TEST_F(DocumentPathFetcherTest, ADocumentOfTheWindowNeedsNoScriptAndLeavesTheTitleAsItIs) {
    bringToFront("com.apple.dt.Xcode");
    tree.setText("window", Name::title, "App — Main.swift — Edited");
    tree.setText("window", Name::document, "file:///Users/ann/App/Main.swift");
    EXPECT_EQ(fetcher.windowInfo("com.apple.dt.xcode"),
              (WindowInfo{"App — Main.swift — Edited", "file:///Users/ann/App/Main.swift"}));
    EXPECT_THAT(automation.scripts(), IsEmpty());
    EXPECT_THAT(console.lines(), ElementsAre("DocumentPathFetcher: 成功获取窗口标题: App — Main.swift — Edited",
                                             "DocumentPathFetcher: 成功获取文档路径: file:<redacted>"));
}

TEST_F(DocumentPathFetcherTest, AScriptGivesTheDocumentThatTheWindowLacks) {
    bringToFront("com.Spotify.client");
    tree.setText("window", Name::title, "Spotify");
    tree.setText("window", Name::document, "");
    answer("Some Track");
    EXPECT_EQ(fetcher.windowInfo("com.Spotify.client"), (WindowInfo{"Spotify", "Some Track"}));
    ASSERT_THAT(automation.scripts(), SizeIs(1));
    EXPECT_EQ(automation.scripts().front().family, platform::ScriptFamily::currentTrack);
    EXPECT_EQ(automation.scripts().front().bundleIdentifier, "com.Spotify.client");  // as it runs
    EXPECT_THAT(console.lines(), ElementsAre("DocumentPathFetcher: 成功获取文档路径: Some Track",
                                             "DocumentPathFetcher: 成功获取窗口标题: Spotify",
                                             "DocumentPathFetcher: 成功获取文档路径: Some Track"));
}

TEST_F(DocumentPathFetcherTest, AnApplicationWithoutScriptKeepsItsTitleAloneAndAttributesThatAreNoTextAreMissing) {
    bringToFront(unlisted);
    tree.setText("window", Name::title, "notes.txt");
    EXPECT_EQ(fetcher.windowInfo(unlisted), (WindowInfo{"notes.txt", std::nullopt}));
    EXPECT_THAT(automation.scripts(), IsEmpty());
    EXPECT_THAT(console.lines(), ElementsAre("DocumentPathFetcher: 应用 org.example.editor 不支持文档路径获取",
                                             "DocumentPathFetcher: 成功获取窗口标题: notes.txt"));
    tree.setElement("window", Name::title, "other");
    tree.setText("window", Name::document, "https://example.com/", true);
    EXPECT_EQ(fetcher.readAccessibilityInfo(*applications.frontmost(), unlisted),
              DocumentPathFetcher::AccessibilityInfo());
}

TEST_F(DocumentPathFetcherTest, APrivateWindowLeavesNothingAndOneThatMayBePrivateNoTitle) {
    const std::string firefox = "org.mozilla.firefox";
    const std::string chrome = "com.google.Chrome";
    // The title for accessibility, that of the window, and whether it may be private.
    const std::tuple<const char*, std::string, const char*, const char*, bool, WindowInfo> rows[] = {
        {"marked", firefox, nullptr, "Secret — Mozilla Firefox Private Browsing", false, {}},
        {"marked for accessibility", chrome, "Secret - Chromium (Incognito)", "Secret - Chromium", true, {}},
        {"ordinary for accessibility", chrome, "News - Chromium", "News - Chromium", true, {"News - Chromium", {}}},
        {"nobody tells", chrome, nullptr, "Secret - Chromium", true, {}},
        {"told to be ordinary", chrome, nullptr, "News - Chromium", false, {"News - Chromium", {}}}};
    for (const auto& [name, application, accessibleTitle, windowTitle, mayBePrivate, expected] : rows) {
        SCOPED_TRACE(name);
        console.clear();
        tree = {};
        bringToFront(application);
        if (accessibleTitle) tree.setText("window", Name::title, accessibleTitle);
        auto front = *applications.frontmost();
        front.windowTitle = windowTitle;
        front.mayBePrivate = mayBePrivate;
        applications.setFrontmost(front);
        EXPECT_EQ(fetcher.windowInfo(application), expected);
        EXPECT_THAT(console.lines(), Not(Contains(HasSubstr("Secret"))));
    }
}

TEST_F(DocumentPathFetcherTest, WithoutAccessibilityTheTitleIsTheOneThatEverybodyMayRead) {
    const WindowInfo plain{"plain title", std::nullopt};
    bringToFront(unlisted);
    EXPECT_EQ(fetcher.windowInfo(unlisted), plain);  // no AXTitle
    tree.setApplication(7, "silent");
    EXPECT_EQ(fetcher.windowInfo(unlisted), plain);
    EXPECT_THAT(console.lines(), Contains("DocumentPathFetcher: 无法获取焦点窗口"));
    tree.setTrusted(false);
    EXPECT_EQ(fetcher.windowInfo(unlisted), plain);
    EXPECT_THAT(console.lines(), Contains("DocumentPathFetcher: Accessibility API 未授权"));
}

TEST_F(DocumentPathFetcherTest, AFailedScriptIsReportedAndTheTitleTakesItsPlace) {
    const std::string told = "DocumentPathFetcher: ";
    const std::tuple<platform::ScriptError, const char*, std::vector<std::string>> rows[] = {
        {{-600, "not running"}, "not running", {told + "错误 -600 通常表示应用不响应 AppleScript 或权限问题"}},
        {{-1728, "can't get it"}, "can't get it", {told + "错误 -1728 表示应用不支持该 AppleScript 命令"}},
        {{0, ""}, "未知错误", {}}};
    bringToFront(textEdit);
    tree.setText("window", Name::title, "Untitled");
    for (const auto& [error, text, hint] : rows) {
        console.clear();
        answer(error);
        EXPECT_EQ(fetcher.getDocumentPathByScript(textEdit), "Untitled");
        auto expected = hint;
        expected.insert(expected.begin(), fmt::format("{}AppleScript 执行错误 ({}): {}", told, error.number, text));
        expected.push_back(fmt::format("{}AppleScript 执行错误: {{NSAppleScriptErrorMessage = \"{}\"; "
                                       "NSAppleScriptErrorNumber = {};}}",
                                       told, text, error.number));
        expected.insert(expected.end(), {noDocument, told + "使用窗口标题作为备用信息: Untitled"});
        EXPECT_EQ(console.lines(), expected);
    }
}

TEST_F(DocumentPathFetcherTest, TheFallbackEndsWithTheNameOfTheApplication) {
    bringToFront(textEdit, "TextEdit");
    EXPECT_EQ(fetcher.windowInfo(textEdit), (WindowInfo{"plain title", "TextEdit"}));
    EXPECT_THAT(console.lines(), ElementsAre(noDocument, "DocumentPathFetcher: 使用应用名称作为备用信息: TextEdit",
                                             "DocumentPathFetcher: 成功获取文档路径: TextEdit"));
    applications.setFrontmost(platform::RunningApplication{.bundleIdentifier = textEdit});
    EXPECT_EQ(fetcher.getFallbackInfo("com.apple.textedit"), textEdit);
    tree.setApplication(0, "app");
    tree.setText("window", Name::title, "the title");
    EXPECT_EQ(fetcher.getFallbackInfo(textEdit), "the title");
    tree.setText("window", Name::document, "/the/document");
    EXPECT_EQ(fetcher.getFallbackInfo(textEdit), "/the/document");
}

TEST_F(DocumentPathFetcherTest, TheFallbackCleansATitleOfXcodeThoughTheRecordKeepsIt) {
    bringToFront("com.apple.dt.Xcode");
    tree.setText("window", Name::title, "App — Main.swift — Edited");
    EXPECT_EQ(fetcher.windowInfo("com.apple.dt.Xcode"), (WindowInfo{"App — Main.swift — Edited", "App | Main.swift"}));
    EXPECT_THAT(console.lines(), Contains("DocumentPathFetcher: 从 Xcode 窗口标题提取文件信息: App | Main.swift"));
}

TEST_F(DocumentPathFetcherTest, AnApplicationThatDoesNotRunGetsNoScript) {
    bringToFront(textEdit);
    EXPECT_EQ(fetcher.getDocumentPathByScript("com.apple.textedit"), "Editor");  // runs, but under another name
    bringToFront(unlisted);
    applications.setRunning(textEdit, false);
    EXPECT_EQ(fetcher.getDocumentPathByScript(textEdit), std::nullopt);
    EXPECT_THAT(automation.scripts(), IsEmpty());
    EXPECT_THAT(console.lines(), ElementsAre("DocumentPathFetcher: 应用 com.apple.textedit 未在运行，跳过 AppleScript",
                                             "DocumentPathFetcher: 使用应用名称作为备用信息: Editor",
                                             "DocumentPathFetcher: 应用 com.apple.TextEdit 未在运行，跳过 AppleScript",
                                             "DocumentPathFetcher: 前台应用不匹配，无法使用备用方案"));
}

TEST_F(DocumentPathFetcherTest, AnApplicationThatLeavesTheFrontDuringTheScriptGetsNoFallback) {
    bringToFront(textEdit);
    tree.setText("window", Name::title, "Untitled");
    automation.answer([this](const platform::Script&) {
        bringToFront(unlisted);
        return platform::ScriptResult();
    });
    EXPECT_EQ(fetcher.windowInfo(textEdit), (WindowInfo{"Untitled", std::nullopt}));
    EXPECT_THAT(console.lines(), ElementsAre(noDocument, "DocumentPathFetcher: 前台应用不匹配，无法使用备用方案",
                                             "DocumentPathFetcher: 成功获取窗口标题: Untitled"));
}

TEST_F(DocumentPathFetcherTest, AConversationTakesThePlaceOfTheWindowTitle) {
    bringToFront("com.tencent.xinWeChat");
    tree.setText("window", Name::title, "微信");
    tree.setChildren("window", {"header"});
    tree.setText("header", Name::title, "项目组");
    answer("WeChat");
    EXPECT_EQ(fetcher.windowInfo("com.tencent.xinWeChat"), (WindowInfo{"项目组", "WeChat"}));
    EXPECT_THAT(console.lines(), ElementsAre("DocumentPathFetcher: 成功获取文档路径: WeChat",
                                             "DocumentPathFetcher: 使用聊天上下文标题: 项目组",
                                             "DocumentPathFetcher: 成功获取文档路径: WeChat"));
    bringToFront(unlisted);
    EXPECT_EQ(fetcher.readAccessibilityInfo(*applications.frontmost(), unlisted),
              (DocumentPathFetcher::AccessibilityInfo{.title = "微信"}));
}

TEST(DocumentPathFetcherLogTest, ShowsTheOutlineOfAUrlAndTheLastPartOfAPath) {
    const std::pair<const char*, const char*> rows[] = {{"/Users/ann/Plans/offer.pages", "offer.pages"},
                                                        {"/Users/ann/Plans/", "Plans"},
                                                        {"offer.pages", "offer.pages"},
                                                        {"/", "/"},
                                                        {"", "<redacted>"},
                                                        {"https://example.com/a?token=1#x", "https://example.com/..."},
                                                        {"https://example.com?token=1", "https://example.com"},
                                                        {"file:///Users/ann/offer.pages", "file:<redacted>"},
                                                        {"mailto:ann@example.com", "mailto:<redacted>"}};
    for (const auto& [document, shown] : rows)
        EXPECT_EQ(DocumentPathFetcher::sanitizeForLog(document), shown) << document;
}

}  // namespace
}  // namespace quorvane
