#pragma once

#include "base/Date.h"
#include "capture/AccessibilityBrowserURLParser.h"
#include "capture/AppleScriptManager.h"
#include "capture/BrowserURLSource.h"
#include "diagnostics/ConsoleSink.h"
#include "platform/Automation.h"
#include "platform/RunningApplications.h"

#include <functional>
#include <mutex>
#include <optional>
#include <string>

namespace quorvane {

/// Which URL the browser in front shows: asks the browser itself, and where that fails its accessibility tree.
/// From any thread; blocks for as long as the browser takes to answer.
class BrowserURLFetcher final : public BrowserURLSource {
public:
    /// `uptime` times the scripts; it never steps back.
    BrowserURLFetcher(platform::RunningApplications& applications, platform::Automation& automation,
                      AppleScriptManager& scripts, AccessibilityBrowserURLParser& parser, ConsoleSink& console,
                      std::function<Seconds()> uptime);

    /// Of the application that is in front now; not empty.
    [[nodiscard]] std::optional<std::string> fetchCurrentURL();
    [[nodiscard]] std::optional<std::string> frontURL() override { return fetchCurrentURL(); }
    [[nodiscard]] std::optional<std::string> toldURL() override { return automation_.toldAddress(); }

    /// May this process send scripts? An answer holds for 300 s; the first question may make the system ask the user.
    [[nodiscard]] bool checkAppleEventsPermission();

private:
    enum class Permission { unknown, granted, denied };

    [[nodiscard]] std::optional<std::string> scriptedURL(const platform::RunningApplication& application,
                                                         const std::string& bundleId, bool mayUseScripts);
    [[nodiscard]] std::optional<bool> validPermission();
    void cache(Permission permission);

    platform::RunningApplications& applications_;
    platform::Automation& automation_;
    AppleScriptManager& scripts_;
    AccessibilityBrowserURLParser& parser_;
    ConsoleSink& console_;
    std::function<Seconds()> uptime_;
    std::mutex permissionLock_;  ///< guards the two below
    Permission cachedPermission_ = Permission::unknown;
    std::optional<Date> lastPermissionCheck_;
};

}  // namespace quorvane
