#include "platform/linux/desktop/DesktopSettingsPanes.h"

#include "base/Environment.h"
#include "base/Text.h"

#include <QProcess>
#include <QStandardPaths>
#include <string_view>
#include <vector>

namespace quorvane::platform {
namespace {

/// The commands of one desktop; words are separated by blanks.
struct SettingsProgram {
    std::string_view desktop;  ///< in XDG_CURRENT_DESKTOP, in lower case
    const char* firstPage;
    const char* accessibility;
    const char* loginItems;
};

constexpr SettingsProgram settingsPrograms[] = {
    {"gnome", "gnome-control-center", "gnome-control-center universal-access", "gnome-tweaks"},
    {"unity", "unity-control-center", "unity-control-center universal-access", "gnome-session-properties"},
    {"budgie", "budgie-control-center", "budgie-control-center universal-access", "budgie-desktop-settings"},
    {"kde", "systemsettings", "systemsettings kcm_access", "systemsettings kcm_autostart"},
    {"xfce", "xfce4-settings-manager", "xfce4-accessibility-settings", "xfce4-session-settings"},
    {"mate", "mate-control-center", "mate-at-properties", "mate-session-properties"},
    {"x-cinnamon", "cinnamon-settings", "cinnamon-settings universal-access", "cinnamon-settings startup"},
    {"cinnamon", "cinnamon-settings", "cinnamon-settings universal-access", "cinnamon-settings startup"},
    {"lxqt", "lxqt-config", "lxqt-config", "lxqt-config-session"},
    {"pantheon", "io.elementary.settings", "io.elementary.settings", "io.elementary.settings"},
    {"deepin", "dde-control-center", "dde-control-center", "dde-control-center"},
};

/// The commands for the pane, the better one first.
std::vector<const char*> commandsFor(const SettingsProgram& program, std::string_view url) {
    if (url.ends_with("Privacy_Accessibility")) return {program.accessibility};
    if (url.ends_with("Privacy_Automation")) return {program.firstPage};
    if (url.ends_with("LoginItems-Settings.extension")) return {program.loginItems, program.firstPage};
    return {};
}

const SettingsProgram* presentProgram() {
    for (const auto& name : text::split(text::lowercased(environment("XDG_CURRENT_DESKTOP")), ':'))
        for (const auto& program : settingsPrograms)
            if (program.desktop == name) return &program;
    return nullptr;
}

/// The installed program for the pane, and behind it what it is given; empty where there is none.
QStringList commandFor(std::string_view url) {
    if (environment("DISPLAY").empty() && environment("WAYLAND_DISPLAY").empty()) return {};
    const auto* const program = presentProgram();
    if (program == nullptr) return {};
    for (const char* const command : commandsFor(*program, url)) {
        QStringList words = QString::fromLatin1(command).split(QLatin1Char(' '));
        words.front() = QStandardPaths::findExecutable(words.front());
        if (!words.front().isEmpty()) return words;
    }
    return {};
}

}  // namespace

bool DesktopSettingsPanes::canOpen(const std::string& url) const {
    return !commandFor(url).isEmpty();
}

void DesktopSettingsPanes::open(const std::string& url) {
    auto words = commandFor(url);
    if (words.isEmpty()) return;
    const auto executable = words.takeFirst();
    QProcess::startDetached(executable, words);
}

}  // namespace quorvane::platform
