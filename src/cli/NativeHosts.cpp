#include "cli/NativeHosts.h"

#include "base/Json.h"
#include "platform/linux/system/WholeFile.h"
#include "platform/linux/system/XdgPaths.h"

#include <cerrno>
#include <fcntl.h>
#include <fmt/format.h>
#include <spawn.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace quorvane::cli::NativeHosts {
namespace {

using std::filesystem::path;

constexpr const char* hostName = "org.zelkor.quorvane";

/// The first of these that is there.
std::optional<path> firstOf(std::initializer_list<path> candidates) {
    std::error_code error;
    for (const path& candidate : candidates)
        if (std::filesystem::exists(candidate, error)) return candidate.lexically_normal();
    return std::nullopt;
}

}  // namespace

std::vector<Browser> browsers() {
    struct Row {
        const char* name;
        const char* folder;
    };
    constexpr Row chromiums[] = {{"chromium", "chromium"},
                                 {"google-chrome", "google-chrome"},
                                 {"brave", "BraveSoftware/Brave-Browser"},
                                 {"edge", "microsoft-edge"},
                                 {"vivaldi", "vivaldi"},
                                 {"opera", "opera"}};
    const std::string file = std::string(hostName) + ".json";
    std::vector<Browser> found;
    for (const auto& [name, below] : chromiums) {
        const path folder = platform::XdgPaths::configHome() / below;
        found.push_back({.name = name, .folder = folder, .manifest = folder / "NativeMessagingHosts" / file});
    }
    const path mozilla = platform::XdgPaths::home() / ".mozilla";
    // Newer ones keep their profiles below the configuration and still look for manifests in the old folder.
    std::error_code error;
    const bool hasOldFolder = std::filesystem::exists(mozilla, error);
    found.push_back({.name = "firefox",
                     .family = Browser::Family::firefox,
                     .folder = hasOldFolder ? mozilla : platform::XdgPaths::configHome() / "mozilla",
                     .manifest = mozilla / "native-messaging-hosts" / file});
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
