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

constexpr const char* operaSource =
    "tell application \"Opera\"\n    try\n        if it is not running then return \"\"\n        if (count of windows) "
    "= 0 then return \"\"\n        tell front window\n            if (count of tabs) = 0 then return \"\"\n            "
    "set theURL to URL of active tab\n            return theURL\n        end tell\n    on error errMsg number "
    "errNum\n        return \"\"\n    end try\nend tell";

constexpr const char* safariSource =
    "tell application \"Safari\"\n    if it is not running then return \"ERROR:-600:Safari is not running\"\n    "
    "try\n        if it is not running then return \"\"\n        if (count of windows) = 0 then return \"\"\n        "
    "set theDoc to front document\n        if theDoc is missing value then return \"\"\n        set theURL to URL of "
    "theDoc\n        if theURL is missing value or theURL is \"\" then\n            try\n                delay "
    "0.1\n                set theURL to do JavaScript \"document.URL\" in theDoc\n            on error\n             "
    "   set theURL to \"\"\n            end try\n        end if\n        if theURL is missing value then return "
    "\"\"\n        return theURL\n    on error errMsg number errNum\n        return \"ERROR:\" & errNum & \":\" & "
    "errMsg\n    end try\nend tell";

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
    EXPECT_THAT(
        console.lines(),
        ElementsAre(
            "AppleScriptManager: 🚀 开始加载预编译脚本...", "AppleScriptManager: ❌ 找不到脚本文件: safari.scpt",
            "AppleScriptManager: ⚠️ 无法加载脚本: safari",
            "AppleScriptManager: ✅ 使用源码字符串加载脚本: safari", "AppleScriptManager: ❌ 找不到脚本文件: chrome.scpt",
            "AppleScriptManager: ⚠️ 无法加载脚本: chrome",
            "AppleScriptManager: ✅ 使用源码字符串加载脚本: chrome", "AppleScriptManager: ❌ 找不到脚本文件: arc.scpt",
            "AppleScriptManager: ⚠️ 无法加载脚本: arc", "AppleScriptManager: ✅ 使用源码字符串加载脚本: arc",
            "AppleScriptManager: 💡 firefox.scpt 无法预编译，将使用源码字符串",
            "AppleScriptManager: ⚠️ 无法加载脚本: firefox",
            "AppleScriptManager: ✅ 使用源码字符串加载脚本: firefox",
            "AppleScriptManager: 💡 opera.scpt 无法预编译，将使用源码字符串",
            "AppleScriptManager: ⚠️ 无法加载脚本: opera",
            "AppleScriptManager: ✅ 使用源码字符串加载脚本: opera", "AppleScriptManager: 📊 已加载 5 个脚本"));
    std::vector<std::string> applications;
    for (const char* name : {"safari", "chrome", "arc", "firefox", "opera"}) {
        EXPECT_TRUE(scripts.hasCompiledScript(name)) << name;
        (void)scripts.executeScript(name);
        applications.push_back(automation.scripts().back().applicationName);
    }
    EXPECT_THAT(applications, ElementsAre("Safari", "Google Chrome", "Arc", "Firefox", "Opera"));
    EXPECT_EQ(automation.scripts().front(),
              (Script{.family = ScriptFamily::browserURL, .applicationName = "Safari", .source = safariSource}));
    EXPECT_EQ(automation.scripts().back(),
              (Script{.family = ScriptFamily::browserURL, .applicationName = "Opera", .source = operaSource}));
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
    struct Row {
        const char* bundleId;
        std::optional<std::string> expected;
    };
    const Row rows[] = {
        {"com.apple.Safari", "safari"},
        {"com.apple.safari", "safari"},
        {"com.google.Chrome", "chrome"},
        {"com.google.chrome", "chrome"},
        {"com.google.Chrome.canary", "chrome"},
        {"com.brave.Browser", "chrome"},
        {"com.brave.browser", "chrome"},
        {"com.microsoft.Edge", "chrome"},
        {"com.microsoft.edgemac", "chrome"},
        {"com.vivaldi.Vivaldi", "chrome"},
        {"com.vivaldi.vivaldi", "chrome"},
        {"company.thebrowser.Browser", "arc"},
        {"company.thebrowser.browser", "arc"},
        {"com.operasoftware.Opera", "opera"},
        {"com.operasoftware.opera", "opera"},
        {"org.mozilla.firefox", "firefox"},
        {"org.mozilla.Firefox", "firefox"},
        {"com.brave.BROWSER", std::nullopt},
        {"com.apple.Safari2", std::nullopt},
        {"com.apple", std::nullopt},
        {"", std::nullopt},
    };
    for (const Row& row : rows)
        EXPECT_EQ(AppleScriptManager::scriptName(row.bundleId), row.expected) << row.bundleId;
}

TEST_F(AppleScriptManagerTest, AnswersAreTrimmedAndEmptyOrFailedOnesAreNone) {
    struct Row {
        const char* name;
        platform::ScriptResult answer;
        std::optional<std::string> expected;
        std::vector<std::string> lines;
    };
    const Row rows[] = {
        {"blanks and a line end", "  https://a.example/ \n", "https://a.example/", {}},
        {"an error in the text", "ERROR:-600:Safari is not running", "ERROR:-600:Safari is not running", {}},
        {"empty", "", std::nullopt, {"AppleScriptManager: ⚠️ 预编译脚本返回空结果: safari"}},
        {"blank", " \r\n\t", std::nullopt, {"AppleScriptManager: ⚠️ 预编译脚本返回空结果: safari"}},
        {"failed",
         ScriptError{-1728, "Can't get window 1."},
         std::nullopt,
         {"AppleScriptManager: ❌ 预编译脚本执行错误: safari, 错误: Can't get window 1."}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        auto& scripts = loadedManager();
        automation.answer([&](const Script&) {
            runLoop.sleepFor(0.5s);
            return row.answer;
        });
        EXPECT_EQ(scripts.executeScript("safari"), row.expected);
        EXPECT_EQ(console.lines(), row.lines);
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

TEST_F(AppleScriptManagerTest, AMissingScriptDoesNotBlockTheNext) {
    auto& scripts = loadedManager();
    automation.answer([](const Script&) { return "x"; });
    EXPECT_EQ(scripts.executeScript("lynx"), std::nullopt);
    EXPECT_EQ(scripts.executeScript("arc"), "x");
    EXPECT_THAT(console.lines(), ElementsAre("AppleScriptManager: ❌ 未找到预编译脚本: lynx"));
}

TEST_F(AppleScriptManagerTest, ARequestBeforeTheScriptsAreLoadedFindsNone) {
    manager_.emplace(runLoop, automation, console, [] { return 0s; });
    EXPECT_EQ(manager_->executeScript("safari"), std::nullopt);
    EXPECT_THAT(console.lines(), ElementsAre("AppleScriptManager: ❌ 未找到预编译脚本: safari"));
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
