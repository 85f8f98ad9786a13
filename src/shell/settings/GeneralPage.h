#pragma once

#include "shell/settings/SettingsPage.h"
#include "shell/state/AutoStartManager.h"
#include "shell/state/SettingsView.h"

namespace quorvane {

/// Appearance, the login item and the language. The login item changes at once, all else in `settings` alone.
class GeneralPage : public SettingsPage {
public:
    GeneralPage(SettingsView& settings, AutoStartManager& autoStart, const Localization& localization);

private:
    void addLoginItem(AutoStartManager& autoStart);
    void addLanguage(SettingsView& settings);
};

}  // namespace quorvane
