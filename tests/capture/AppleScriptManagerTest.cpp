#include "capture/AppleScriptManager.h"

#include "platform/simulated/SimulatedAutomation.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "support/Matching.h"
#include "support/RecordingConsole.h"
#include "support/TemporaryFolder.h"

namespace quorvane {
namespace {

using platform::Script;
using platform::ScriptError;
using platform::ScriptFamily;

class AppleScriptManagerTest : public testing::Test {
protected:
    AppleScriptManager& manager(std::optional<std::filesystem::path> folder = std::nullopt) {
        manager_.emplace(
            runLoop, automation, console, [this] { return runLoop.uptime(); }, std::move(folder));
        runLoop.runPosted();
        return *manager_;
    }

    /// The same with the lines of loading left out.
    AppleScriptManager& loadedManager() {
        manager();
        console.clear();
        return *manager_;
    }

    platform::SimulatedRunLoop runLoop{dateFromSecondsSince1970(1772442000)};
    platform::SimulatedAutomation automation;
    RecordingConsole console;
    std::optional<AppleScriptManager> manager_;
};

TEST_F(AppleScriptManagerTest, WithoutCompiledFilesAllScriptsComeFromTheirSources) {
    auto& scripts = manager();
    EXPECT_THAT(console.lines(), SizeIs(17));
    EXPECT_THAT(console.lines(), IsSupersetOf({"AppleScriptManager: ❌ 找不到脚本文件: arc.scpt",
                                               "AppleScriptManager: 💡 opera.scpt 无法预编译，将使用源码字符串",
                                               "AppleScriptManager: ⚠️ 无法加载脚本: opera",
                                               "AppleScriptManager: ✅ 使用源码字符串加载脚本: opera"}));
    EXPECT_EQ(console.lines().back(), "AppleScriptManager: 📊 已加载 5 个脚本");
    const std::pair<const char*, std::string> rows[] = {
        {"safari", "Safari"}, {"chrome", "Google Chrome"}, {"arc", "Arc"}, {"firefox", "Firefox"}, {"opera", "Opera"}};
    for (const auto& [name, application] : rows) {
        EXPECT_TRUE(scripts.hasCompiledScript(name)) << name;
        (void)scripts.executeScript(name);
        const Script script = automation.scripts().back();
        EXPECT_EQ(script.family, ScriptFamily::browserURL);
        EXPECT_EQ(script.applicationName, application);
        EXPECT_THAT(script.source, StartsWith("tell application \"" + application + "\"\n"));
        EXPECT_THAT(script.source, EndsWith("\nend tell"));
    }
}

TEST_F(AppleScriptManagerTest, CompiledFilesAreTakenFromTheirFolderThenFromItsParent) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder / "AppleScripts");
    writeFile(folder / "AppleScripts/chrome.scpt", "inner");
    writeFile(folder / "chrome.scpt", "outer");
    writeFile(folder / "opera.scpt", "of opera");
    std::filesystem::create_directory(folder / "arc.scpt");
    auto& scripts = manager(folder.path());
    EXPECT_THAT(
        console.lines(),
        IsSupersetOf({"AppleScriptManager: ✅ 成功加载脚本: chrome", "AppleScriptManager: ✅ 成功加载脚本: opera",
                      "AppleScriptManager: ❌ 无法从编译文件创建脚本对象: arc.scpt",
                      "AppleScriptManager: 错误信息: Is a directory",
                      "AppleScriptManager: ✅ 使用源码字符串加载脚本: arc", "AppleScriptManager: 📊 已加载 5 个脚本"}));
    (void)scripts.executeScript("chrome");
    (void)scripts.executeScript("opera");
    EXPECT_THAT(
        automation.scripts(),
        ElementsAre(Script{.family = ScriptFamily::browserURL, .applicationName = "Google Chrome", .source = "inner"},
                    Script{.family = ScriptFamily::browserURL, .applicationName = "Opera", .source = "of opera"}));
}

TEST_F(AppleScriptManagerTest, NothingIsLoadedOnceTheManagerIsGone) {
    std::make_unique<AppleScriptManager>(runLoop, automation, console, [] { return 0s; }).reset();
    runLoop.runPosted();
    EXPECT_THAT(console.lines(), IsEmpty());
}

TEST_F(AppleScriptManagerTest, FindsTheScriptOfABrowserByItsExactBundleId) {
    const std::pair<const char*, std::optional<std::string>> rows[] = {{"com.apple.Safari", "safari"},
                                                                       {"com.google.Chrome.canary", "chrome"},
                                                                       {"com.brave.browser", "chrome"},
                                                                       {"com.microsoft.edgemac", "chrome"},
                                                                       {"com.vivaldi.Vivaldi", "chrome"},
                                                                       {"company.thebrowser.Browser", "arc"},
                                                                       {"com.operasoftware.Opera", "opera"},
                                                                       {"org.mozilla.firefox", "firefox"},
                                                                       {"com.brave.BROWSER", std::nullopt},
                                                                       {"com.apple", std::nullopt},
                                                                       {"", std::nullopt}};
    for (const auto& [bundleId, expected] : rows)
        EXPECT_EQ(AppleScriptManager::scriptName(bundleId), expected) << bundleId;
}

TEST_F(AppleScriptManagerTest, AnswersAreTrimmedAndEmptyOrFailedOnesAreNone) {
    const std::vector<std::string> isEmpty{"AppleScriptManager: ⚠️ 预编译脚本返回空结果: safari"};
    const std::tuple<platform::ScriptResult, std::optional<std::string>, std::vector<std::string>> rows[] = {
        {"  https://a.example/ \n", "https://a.example/", {}},
        {"ERROR:-600:Safari is not running", "ERROR:-600:Safari is not running", {}},
        {"", std::nullopt, isEmpty},
        {" \r\n\t", std::nullopt, isEmpty},
        {ScriptError{-1728, "no window"},
         std::nullopt,
         {"AppleScriptManager: ❌ 预编译脚本执行错误: safari, 错误: no window"}}};
    for (const auto& [answer, expected, lines] : rows) {
        SCOPED_TRACE(testing::PrintToString(lines));
        auto& scripts = loadedManager();
        automation.answer([this, given = answer](const Script&) {
            runLoop.sleepFor(0.5s);
            return given;
        });
        EXPECT_EQ(scripts.executeScript("safari"), expected);
        EXPECT_EQ(console.lines(), lines);
        EXPECT_THAT(scripts.getExecutionStatistics(), ElementsAre(Pair("safari", ScriptStatistics{1, 0.5s})));
    }
}

TEST_F(AppleScriptManagerTest, CountsRunsAndTheirMeanTimeForEachScript) {
    auto& scripts = loadedManager();
    Seconds duration = 1s;
    automation.answer([&](const Script& script) -> platform::ScriptResult {
        runLoop.sleepFor(duration);
        if (script.applicationName == "Arc") return ScriptError{-600, "not running"};
        return "x";
    });
    (void)scripts.executeScript("chrome");
    duration = 2s;
    (void)scripts.executeScript("chrome");
    (void)scripts.executeScript("arc");
    (void)scripts.executeScript("lynx");
    EXPECT_THAT(scripts.getExecutionStatistics(),
                ElementsAre(Pair("arc", ScriptStatistics{1, 2s}), Pair("chrome", ScriptStatistics{2, 1.5s})));
}

TEST_F(AppleScriptManagerTest, AMissingScriptDoesNotBlockTheNextAndBeforeLoadingAllAreMissing) {
    auto& scripts = loadedManager();
    automation.answer([](const Script&) { return "x"; });
    EXPECT_EQ(scripts.executeScript("lynx"), std::nullopt);
    EXPECT_EQ(scripts.executeScript("arc"), "x");
    EXPECT_THAT(console.lines(), ElementsAre("AppleScriptManager: ❌ 未找到预编译脚本: lynx"));
    manager_.emplace(runLoop, automation, console, [] { return 0s; });
    EXPECT_EQ(manager_->executeScript("safari"), std::nullopt);
}

TEST_F(AppleScriptManagerTest, AScriptInsideAScriptIsSkipped) {
    auto& scripts = loadedManager();
    automation.answer([&](const Script&) {
        EXPECT_EQ(scripts.executeScript("arc"), std::nullopt);
        return "x";
    });
    EXPECT_EQ(scripts.executeScript("safari"), "x");
    EXPECT_THAT(console.lines(), ElementsAre("AppleScriptManager: ⚠️ 检测到重入调用，跳过执行: arc"));
    EXPECT_EQ(automation.scripts().size(), 1);
}

TEST_F(AppleScriptManagerTest, NoScriptRunsAfterTheCachesWereCleared) {
    auto& scripts = loadedManager();
    (void)scripts.executeScript("arc");
    console.clear();
    scripts.clearAllCaches();
    runLoop.playFor(3600s);
    EXPECT_FALSE(scripts.hasCompiledScript("arc"));
    EXPECT_EQ(scripts.executeScript("arc"), std::nullopt);
    EXPECT_THAT(scripts.getExecutionStatistics(), IsEmpty());
    EXPECT_THAT(console.lines(), ElementsAre("AppleScriptManager: 🧹 已清理所有缓存",
                                             "AppleScriptManager: ❌ 未找到预编译脚本: arc"));
}

}  // namespace
}  // namespace quorvane
