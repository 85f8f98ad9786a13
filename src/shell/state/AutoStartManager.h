#pragma once

#include "base/Signal.h"
#include "diagnostics/ConsoleSink.h"
#include "l10n/Localization.h"
#include "platform/LoginItem.h"
#include "platform/RunLoop.h"
#include "platform/SettingsPanes.h"

#include <memory>
#include <string>

namespace quorvane {

/// What the user reads when the login item could not be changed; beside a button to close.
struct AutoStartAlert {
    std::string message;
    std::string informativeText;
    std::string settingsButton;  ///< to `AutoStartManager::openLoginItemSettings`; may be empty
    friend bool operator==(const AutoStartAlert&, const AutoStartAlert&) = default;
};

/// Does the application start at login? What it is made on outlives it. Main thread only.
class AutoStartManager {
public:
    /// Reads the state.
    AutoStartManager(platform::LoginItem& loginItem, platform::SettingsPanes& settingsPanes, platform::RunLoop& runLoop,
                     ConsoleSink& console, const Localization& localization);

    [[nodiscard]] bool isAutoStartEnabled() const { return isAutoStartEnabled_; }
    void refreshStatus();
    void setAutoStart(bool value);
    void openLoginItemSettings();

    /// Sent after each reading, and shortly after a failure once more: a switch that the user has moved goes back then.
    Signal<> changed;
    Signal<const AutoStartAlert&> failed;

private:
    void noteFailure(const std::string& error);

    platform::LoginItem& loginItem_;
    platform::SettingsPanes& settingsPanes_;
    platform::RunLoop& runLoop_;
    ConsoleSink& console_;
    const Localization& localization_;
    bool isAutoStartEnabled_ = false;
    std::unique_ptr<platform::WorkItem> reflection_;
};

}  // namespace quorvane
