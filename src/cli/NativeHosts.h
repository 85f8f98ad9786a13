#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// How browsers learn about `quorvane-browser-host`: a manifest for each of them, in a folder of the user.
namespace quorvane::cli::NativeHosts {

/// The id that browsers of Chromium's family derive from the public key in the extension's manifest.
inline constexpr const char* chromiumExtensionId = "oinjoldeagfjhhmclcibbolnhbhomjpe";
inline constexpr const char* firefoxExtensionId = "tabs@quorvane.zelkor";

struct Browser {
    enum class Family { chromium, firefox };

    std::string name;  ///< "google-chrome", as people call its command
    Family family = Family::chromium;
    std::vector<std::filesystem::path> folders{};  ///< one of them is there once the browser has run
    std::filesystem::path manifest;                ///< where it looks for ours
    friend bool operator==(const Browser&, const Browser&) = default;
};

/// All browsers that we know, Firefox and its relatives last.
[[nodiscard]] std::vector<Browser> browsers();

/// A browser that runs shut off from the system and so can't start the host.
struct Sandboxed {
    std::string name;     ///< "org.mozilla.firefox"
    std::string package;  ///< "Flatpak"
};

/// Those that have run.
[[nodiscard]] std::vector<Sandboxed> sandboxedBrowsers();

/// The manifest's whole text.
[[nodiscard]] std::string manifestText(Browser::Family family, const std::filesystem::path& host);

/// What stands at a manifest's place; `host` is where the host is to be found.
enum class State { missing, right, wrong };
[[nodiscard]] State stateOf(const Browser& browser, const std::filesystem::path& host);

/// Is the manifest one of ours, also with another path? A damaged one is.
[[nodiscard]] bool isOurs(const Browser& browser);

/// What is installed with this program or built beside it; none where it is missing.
struct Installation {
    std::optional<std::filesystem::path> host;
    std::optional<std::filesystem::path> extension;  ///< a folder
    std::optional<std::filesystem::path> package;    ///< the same as one file for Firefox
};
[[nodiscard]] Installation installation();

/// Starts the host and gives it nothing to read. Why it can't run, in one line; none: it does.
[[nodiscard]] std::optional<std::string> problemOf(const std::filesystem::path& host);

}  // namespace quorvane::cli::NativeHosts
