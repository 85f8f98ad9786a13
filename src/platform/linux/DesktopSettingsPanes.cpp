#include "platform/linux/DesktopSettingsPanes.h"

#include "base/Text.h"

#include <QProcess>
#include <QStandardPaths>
#include <cstdlib>
#include <optional>
#include <string_view>

namespace quorvane::platform {
namespace {

/// The commands of one desktop; words are separated by blanks.
struct SettingsProgram {
    std::string_view desktop;  ///< in XDG_CURRENT_DESKTOP, in lower case
    const char* firstPage;
    const char* accessibility;
};

constexpr SettingsProgram settingsPrograms[] = {
    {"gnome", "gnome-control-center", "gnome-control-center universal-access"},
    {"unity", "unity-control-center", "unity-control-center universal-access"},
    {"budgie", "budgie-control-center", "budgie-control-center universal-access"},
    {"kde", "systemsettings", "systemsettings kcm_access"},
    {"xfce", "xfce4-settings-manager", "xfce4-accessibility-settings"},
    {"mate", "mate-control-center", "mate-at-properties"},
    {"x-cinnamon", "cinnamon-settings", "cinnamon-settings universal-access"},
    {"cinnamon", "cinnamon-settings", "cinnamon-settings universal-access"},
    {"lxqt", "lxqt-config", "lxqt-config"},
    {"pantheon", "io.elementary.settings", "io.elementary.settings"},
    {"deepin", "dde-control-center", "dde-control-center"},
};

std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

std::optional<QStringList> commandFor(std::string_view url) {
    const bool isAccessibility = url.ends_with("Privacy_Accessibility");
    if (!isAccessibility && !url.ends_with("Privacy_Automation")) return std::nullopt;
    for (const auto& name : text::split(text::lowercased(environment("XDG_CURRENT_DESKTOP")), ':'))
        for (const auto& program : settingsPrograms)
            if (program.desktop == name)
                return QString::fromLatin1(isAccessibility ? program.accessibility : program.firstPage)
                    .split(QLatin1Char(' '));
    return std::nullopt;
}

}  // namespace

void DesktopSettingsPanes::open(const std::string& url) {
    if (environment("DISPLAY").empty() && environment("WAYLAND_DISPLAY").empty()) return;
    auto command = commandFor(url);
    if (!command) return;
    const auto program = QStandardPaths::findExecutable(command->takeFirst());
    if (!program.isEmpty()) QProcess::startDetached(program, *command);
}

}  // namespace quorvane::platform
