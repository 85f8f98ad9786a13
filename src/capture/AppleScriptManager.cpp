#include "capture/AppleScriptManager.h"

#include "base/Text.h"

#include <algorithm>
#include <fmt/format.h>
#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

namespace quorvane {
namespace {

struct ScriptFile {
    const char* name;
    const char* file;
    const char* application;
};

constexpr ScriptFile scriptFiles[] = {
    {"safari", "safari.scpt", "Safari"},    {"chrome", "chrome.scpt", "Google Chrome"}, {"arc", "arc.scpt", "Arc"},
    {"firefox", "firefox.scpt", "Firefox"}, {"opera", "opera.scpt", "Opera"},
};

struct Browser {
    std::string_view bundleId;
    const char* script;
};

/// Both spellings where a bundle id occurs with different capitals. Relatives of Chrome share its script.
constexpr Browser browsers[] = {
    {"com.apple.Safari", "safari"},         {"com.apple.safari", "safari"},
    {"com.google.Chrome", "chrome"},        {"com.google.chrome", "chrome"},
    {"com.google.Chrome.canary", "chrome"}, {"com.brave.Browser", "chrome"},
    {"com.brave.browser", "chrome"},        {"com.microsoft.Edge", "chrome"},
    {"com.microsoft.edgemac", "chrome"},    {"com.vivaldi.Vivaldi", "chrome"},
    {"com.vivaldi.vivaldi", "chrome"},      {"company.thebrowser.Browser", "arc"},
    {"company.thebrowser.browser", "arc"},  {"com.operasoftware.Opera", "opera"},
    {"com.operasoftware.opera", "opera"},   {"org.mozilla.firefox", "firefox"},
    {"org.mozilla.Firefox", "firefox"},
};

constexpr const char* safariSource = R"(tell application "Safari"
    if it is not running then return "ERROR:-600:Safari is not running"
    try
        if it is not running then return ""
        if (count of windows) = 0 then return ""
        set theDoc to front document
        if theDoc is missing value then return ""
        set theURL to URL of theDoc
        if theURL is missing value or theURL is "" then
            try
                delay 0.1
                set theURL to do JavaScript "document.URL" in theDoc
            on error
                set theURL to ""
            end try
        end if
        if theURL is missing value then return ""
        return theURL
    on error errMsg number errNum
        return "ERROR:" & errNum & ":" & errMsg
    end try
end tell)";

/// Of all but Safari: they report no error, they answer nothing.
constexpr const char* tabSource = R"(tell application "{}"
    try
        if it is not running then return ""
        if (count of windows) = 0 then return ""
        tell front window
            if (count of tabs) = 0 then return ""
            set theURL to URL of active tab
            return theURL
        end tell
    on error errMsg number errNum
        return ""
    end try
end tell)";

platform::Script scriptOf(const ScriptFile& file, std::string source) {
    return {
        .family = platform::ScriptFamily::browserURL, .applicationName = file.application, .source = std::move(source)};
}

platform::Script scriptFromSource(const ScriptFile& file) {
    const std::string_view application = file.application;
    return scriptOf(file, application == "Safari" ? safariSource : fmt::format(fmt::runtime(tabSource), application));
}

}  // namespace

/// The loaded scripts, apart from their manager so that a worker can fill them while the manager goes.
class AppleScriptManager::Library {
public:
    Library(ConsoleSink& console, std::optional<std::filesystem::path> folder)
        : console_(console), folder_(std::move(folder)) {}

    /// Whoever asks for a script meanwhile waits until all are there; loading runs none, so that is short.
    void loadPrecompiledScripts() {
        console_.line("AppleScriptManager: 🚀 开始加载预编译脚本...");
        const std::lock_guard lock(scriptsLock_);
        for (const ScriptFile& file : scriptFiles) {
            if (auto script = compiledScript(file)) {
                compiledScripts_.insert_or_assign(file.name, std::move(*script));
                console_.line("AppleScriptManager: ✅ 成功加载脚本: {}", file.name);
                continue;
            }
            console_.line("AppleScriptManager: ⚠️ 无法加载脚本: {}", file.name);
            compiledScripts_.insert_or_assign(file.name, scriptFromSource(file));
            console_.line("AppleScriptManager: ✅ 使用源码字符串加载脚本: {}", file.name);
        }
        console_.line("AppleScriptManager: 📊 已加载 {} 个脚本", compiledScripts_.size());
    }

    [[nodiscard]] std::optional<platform::Script> script(const std::string& name) {
        const std::lock_guard lock(scriptsLock_);
        const auto found = compiledScripts_.find(name);
        return found == compiledScripts_.end() ? std::nullopt : std::optional(found->second);
    }

    void clear() {
        const std::lock_guard lock(scriptsLock_);
        compiledScripts_.clear();
    }

private:
    [[nodiscard]] std::optional<std::filesystem::path> find(const std::string& file) const {
        if (!folder_) return std::nullopt;
        for (const auto& path : {*folder_ / "AppleScripts" / file, *folder_ / file}) {
            std::error_code error;
            if (std::filesystem::exists(path, error)) return path;
        }
        return std::nullopt;
    }

    [[nodiscard]] std::optional<platform::Script> compiledScript(const ScriptFile& file) {
        const std::string name = file.file;
        const auto path = find(name);
        if (!path) {
            if (name.find("firefox") != std::string::npos || name.find("opera") != std::string::npos)
                console_.line("AppleScriptManager: 💡 {} 无法预编译，将使用源码字符串", name);
            else
                console_.line("AppleScriptManager: ❌ 找不到脚本文件: {}", name);
            return std::nullopt;
        }
        // The channel knows what to make of the bytes; here it matters only that they can be read.
        std::error_code error;
        const auto size = std::filesystem::file_size(*path, error);
        std::string bytes(error ? 0 : size, '\0');
        std::ifstream stream(*path, std::ios::binary);
        if (!error && stream.read(bytes.data(), static_cast<std::streamsize>(size)))
            return scriptOf(file, std::move(bytes));
        console_.line("AppleScriptManager: ❌ 无法从编译文件创建脚本对象: {}", name);
        if (error) console_.line("AppleScriptManager: 错误信息: {}", error.message());
        return std::nullopt;
    }

    ConsoleSink& console_;
    const std::optional<std::filesystem::path> folder_;
    std::mutex scriptsLock_;  ///< guards `compiledScripts_`
    std::map<std::string, platform::Script> compiledScripts_;
};

AppleScriptManager::AppleScriptManager(platform::RunLoop& runLoop, platform::Automation& automation,
                                       ConsoleSink& console, std::function<Seconds()> uptime,
                                       std::optional<std::filesystem::path> folder)
    : runLoop_(runLoop), automation_(automation), console_(console), uptime_(std::move(uptime)),
      library_(std::make_shared<Library>(console, std::move(folder))) {
    preloadScripts();
}

AppleScriptManager::~AppleScriptManager() = default;

void AppleScriptManager::preloadScripts() {
    runLoop_.background([weak = std::weak_ptr(library_)] {
        if (const auto library = weak.lock()) library->loadPrecompiledScripts();
    });
}

std::optional<std::string> AppleScriptManager::executeScript(const std::string& name) {
    {
        std::unique_lock lock(executionLock_);
        if (isExecutingScript_) {
            lock.unlock();
            console_.line("AppleScriptManager: ⚠️ 检测到重入调用，跳过执行: {}", name);
            return std::nullopt;
        }
        isExecutingScript_ = true;
    }
    const auto script = library_->script(name);
    if (!script) console_.line("AppleScriptManager: ❌ 未找到预编译脚本: {}", name);
    auto result = script ? run(*script, name) : std::nullopt;
    const std::lock_guard lock(executionLock_);
    isExecutingScript_ = false;
    return result;
}

std::optional<std::string> AppleScriptManager::run(const platform::Script& script, const std::string& name) {
    const Seconds start = uptime_();
    const auto result = automation_.run(script);
    const Seconds elapsed = uptime_() - start;
    {
        const std::lock_guard lock(executionLock_);
        ++executionCount_[name];
        totalExecutionTime_[name] += elapsed;
    }
    if (const auto* error = std::get_if<platform::ScriptError>(&result)) {
        console_.line("AppleScriptManager: ❌ 预编译脚本执行错误: {}, 错误: {}", name, error->message);
        return std::nullopt;
    }
    auto text = text::trimmedWithNewlines(std::get<std::string>(result));
    if (!text.empty()) return text;
    console_.line("AppleScriptManager: ⚠️ 预编译脚本返回空结果: {}", name);
    return std::nullopt;
}

std::optional<std::string> AppleScriptManager::scriptName(std::string_view bundleId) {
    const auto* found = std::ranges::find(browsers, bundleId, &Browser::bundleId);
    return found == std::end(browsers) ? std::nullopt : std::optional<std::string>(found->script);
}

bool AppleScriptManager::hasCompiledScript(const std::string& name) const {
    return library_->script(name).has_value();
}

std::map<std::string, ScriptStatistics> AppleScriptManager::getExecutionStatistics() const {
    const std::lock_guard lock(executionLock_);
    std::map<std::string, ScriptStatistics> statistics;
    for (const auto& [name, total] : totalExecutionTime_) {
        const int count = executionCount_.at(name);
        statistics[name] = {.executionCount = count, .averageTime = total / count};
    }
    return statistics;
}

void AppleScriptManager::clearAllCaches() {
    library_->clear();
    {
        const std::lock_guard lock(executionLock_);
        executionCount_.clear();
        totalExecutionTime_.clear();
    }
    console_.line("AppleScriptManager: 🧹 已清理所有缓存");
}

}  // namespace quorvane
