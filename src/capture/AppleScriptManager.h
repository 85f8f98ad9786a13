#pragma once

#include "base/Date.h"
#include "diagnostics/ConsoleSink.h"
#include "platform/Automation.h"
#include "platform/RunLoop.h"

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

namespace quorvane {

/// How often a script ran, failed runs included, and how long on average.
struct ScriptStatistics {
    int executionCount = 0;
    Seconds averageTime{};
    friend bool operator==(const ScriptStatistics&, const ScriptStatistics&) = default;
};

/// Keeps one script for each family of browsers and runs one at a time. From any thread. Where applications understand
/// no scripts, as on Linux, it is the way to the front tab all the same: a script says what is asked, and a channel of
/// the desktop answers.
class AppleScriptManager {
public:
    /// Loads the scripts in the background. `folder`, if any, may hold compiled ones, in "AppleScripts" or directly.
    /// `uptime` measures the runs and never steps back. What is passed outlives the workers.
    AppleScriptManager(platform::RunLoop& runLoop, platform::Automation& automation, ConsoleSink& console,
                       std::function<Seconds()> uptime, std::optional<std::filesystem::path> folder = std::nullopt);
    ~AppleScriptManager();

    /// What the script answered, trimmed and not empty. None if it failed or isn't loaded, and at once while another
    /// one runs on any thread. Blocks for as long as the application takes.
    [[nodiscard]] std::optional<std::string> executeScript(const std::string& name);

    /// The script for a browser; none for other applications. Capitals count.
    [[nodiscard]] static std::optional<std::string> scriptName(std::string_view bundleId);

    [[nodiscard]] bool hasCompiledScript(const std::string& name) const;

    /// Of the scripts that ran, by name.
    [[nodiscard]] std::map<std::string, ScriptStatistics> getExecutionStatistics() const;

    /// Forgets scripts and counts. Scripts are loaded once only, so none runs after that.
    void clearAllCaches();

private:
    class Library;

    void preloadScripts();
    [[nodiscard]] std::optional<std::string> run(const platform::Script& script, const std::string& name);

    platform::RunLoop& runLoop_;
    platform::Automation& automation_;
    ConsoleSink& console_;
    std::function<Seconds()> uptime_;
    std::shared_ptr<Library> library_;  ///< the worker that loads holds it weakly

    mutable std::mutex executionLock_;  ///< guards the three below; never held together with the library's lock
    bool isExecutingScript_ = false;
    std::map<std::string, int> executionCount_;
    std::map<std::string, Seconds> totalExecutionTime_;
};

}  // namespace quorvane
