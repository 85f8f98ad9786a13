#include "cli/NativeHosts.h"

#include "base/Json.h"
#include "platform/linux/system/WholeFile.h"
#include "platform/linux/system/XdgPaths.h"

#include <cerrno>
#include <fcntl.h>
#include <fmt/format.h>
#include <iterator>
#include <spawn.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace quorvane::cli::NativeHosts {
namespace {

using std::filesystem::path;

constexpr const char* hostName = "org.zelkor.quorvane";

/// Below the folder of configurations, where each channel has its own.
struct Chromium {
    const char* name;
    const char* folder;
};
constexpr Chromium chromiums[] = {{"chromium", "chromium"},
                                  {"google-chrome", "google-chrome"},
                                  {"google-chrome-beta", "google-chrome-beta"},
                                  {"google-chrome-unstable", "google-chrome-unstable"},
                                  {"google-chrome-canary", "google-chrome-canary"},
                                  {"brave", "BraveSoftware/Brave-Browser"},
                                  {"brave-beta", "BraveSoftware/Brave-Browser-Beta"},
                                  {"brave-nightly", "BraveSoftware/Brave-Browser-Nightly"},
                                  {"edge", "microsoft-edge"},
                                  {"edge-beta", "microsoft-edge-beta"},
                                  {"edge-dev", "microsoft-edge-dev"},
                                  {"vivaldi", "vivaldi"},
                                  {"vivaldi-snapshot", "vivaldi-snapshot"},
                                  {"opera", "opera"},
                                  {"opera-beta", "opera-beta"},
                                  {"opera-developer", "opera-developer"}};

/// Firefox, with all its channels, and its relatives. Newer ones keep their profiles below the configuration and still
/// look for manifests in the hidden folder.
struct Gecko {
    const char* name;
    const char* hidden;
    const char* folder;
};
constexpr Gecko geckos[] = {{"firefox", ".mozilla", "mozilla"},
                            {"librewolf", ".librewolf", "librewolf"},
                            {"zen", ".zen", "zen"},
                            {"waterfox", ".waterfox", "waterfox"},
                            {"floorp", ".floorp", "floorp"}};

constexpr const char* flatpaks[] = {"org.chromium.Chromium", "io.github.ungoogled_software.ungoogled_chromium",
                                    "com.google.Chrome",     "com.google.ChromeDev",
                                    "com.brave.Browser",     "com.microsoft.Edge",
                                    "com.vivaldi.Vivaldi",   "com.opera.Opera",
                                    "org.mozilla.firefox",   "io.gitlab.librewolf-community",
                                    "app.zen_browser.zen",   "net.waterfox.waterfox",
                                    "one.ablaze.floorp"};
constexpr const char* snaps[] = {"chromium", "brave", "opera", "opera-beta", "opera-developer", "firefox"};

/// The first of these that is there.
std::optional<path> firstOf(std::initializer_list<path> candidates) {
    std::error_code error;
    for (const path& candidate : candidates)
        if (std::filesystem::exists(candidate, error)) return candidate.lexically_normal();
    return std::nullopt;
}

}  // namespace

std::vector<Browser> browsers() {
    const path config = platform::XdgPaths::configHome();
    const path home = platform::XdgPaths::home();
    const std::string file = std::string(hostName) + ".json";
    std::vector<Browser> found;
    for (const auto& [name, below] : chromiums)
        found.push_back(
            {.name = name, .folders = {config / below}, .manifest = config / below / "NativeMessagingHosts" / file});
    for (const auto& [name, hidden, below] : geckos)
        found.push_back({.name = name,
                         .family = Browser::Family::firefox,
                         .folders = {home / hidden, config / below},
                         .manifest = home / hidden / "native-messaging-hosts" / file});
    // Some relatives look for manifests where Firefox does.
    auto& ofFirefox = found[std::size(chromiums)].folders;
    for (std::size_t relative = std::size(chromiums) + 1; relative < found.size(); ++relative)
        ofFirefox.insert(ofFirefox.end(), found[relative].folders.begin(), found[relative].folders.end());
    return found;
}

std::vector<Sandboxed> sandboxedBrowsers() {
    std::vector<Sandboxed> found;
    const path home = platform::XdgPaths::home();
    std::error_code error;
    for (const char* id : flatpaks)
        if (std::filesystem::is_directory(home / ".var/app" / id, error))
            found.push_back({.name = id, .package = "Flatpak"});
    for (const char* name : snaps)
        if (std::filesystem::is_directory(home / "snap" / name, error))
            found.push_back({.name = name, .package = "Snap"});
    return found;
}

std::string manifestText(Browser::Family family, const path& host) {
    Json manifest{{"name", hostName},
                  {"description", "Tells Quorvane which page is in front"},
                  {"path", host.string()},
                  {"type", "stdio"}};
    switch (family) {
    case Browser::Family::chromium:
        manifest["allowed_origins"] = {fmt::format("chrome-extension://{}/", chromiumExtensionId)};
        break;
    case Browser::Family::firefox: manifest["allowed_extensions"] = {firefoxExtensionId}; break;
    }
    return prettyJsonText(manifest) + "\n";
}

State stateOf(const Browser& browser, const path& host) {
    std::error_code error;
    if (!std::filesystem::exists(std::filesystem::symlink_status(browser.manifest, error))) return State::missing;
    const auto there = parseJson(platform::wholeFile(browser.manifest).value_or(""));
    return there && *there == parseJson(manifestText(browser.family, host)) ? State::right : State::wrong;
}

bool isOurs(const Browser& browser) {
    const auto there = parseJson(platform::wholeFile(browser.manifest).value_or(""));
    return !there || !there->is_object() || there->value("name", Json(hostName)) == hostName;
}

Installation installation() {
    std::error_code error;
    const path folder = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
    const path shared = folder / "../share/quorvane";
    return {.host = firstOf({folder / "quorvane-browser-host", folder / "../libexec/quorvane/quorvane-browser-host"}),
            .extension = firstOf({shared / "browser-extension"}),
            .package = firstOf({shared / "tabs@quorvane.zelkor.xpi"})};
}

std::optional<std::string> problemOf(const path& host) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    std::string program = host.string();
    char* const arguments[] = {program.data(), nullptr};
    pid_t process = 0;
    const int error = ::posix_spawn(&process, program.c_str(), &actions, nullptr, arguments, environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) return std::generic_category().message(error);
    int status = 0;
    while (::waitpid(process, &status, 0) < 0)
        if (errno != EINTR) return std::generic_category().message(errno);
    if (WIFSIGNALED(status)) return fmt::format("a signal ended it ({})", WTERMSIG(status));
    if (WEXITSTATUS(status) != 0) return fmt::format("it ended with status {}", WEXITSTATUS(status));
    return std::nullopt;
}

}  // namespace quorvane::cli::NativeHosts
