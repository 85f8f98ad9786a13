#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane::platform {

/// What a desktop file says about an application, as far as it helps to recognise the application's windows.
struct DesktopEntry {
    std::string id;                           ///< "org.gnome.gedit", from the file's name; not in the file itself
    std::string name;                         ///< in the user's language where the file has it
    std::string startupWmClass;               ///< may be empty
    std::string program;                      ///< base name of what it runs; may be empty
    std::string icon;                         ///< its name in the theme, or a path; may be empty
    bool isShown = true;                      ///< appears in menus
    std::string executable;                   ///< what it runs, as far as that is an absolute path; may be empty
    bool isForKde = true;                     ///< counts in KDE Plasma
    std::vector<std::string> kwinInterfaces;  ///< what it asks KWin for
    friend bool operator==(const DesktopEntry&, const DesktopEntry&) = default;
};

/// Reads a desktop file. None if it describes no application or says that the application is gone (`Hidden`).
/// `locales` are the keys in brackets to look for, the best first: see `desktopEntryLocales`.
[[nodiscard]] std::optional<DesktopEntry> parseDesktopEntry(std::string_view text,
                                                            const std::vector<std::string>& locales);

/// The user's language for messages, by the first set of LC_ALL, LC_MESSAGES, LANG, in the forms that desktop files
/// use: "de_AT.UTF-8@euro" gives de_AT@euro, de_AT, de@euro, de. Empty for "C".
[[nodiscard]] std::vector<std::string> desktopEntryLocales();

}  // namespace quorvane::platform
