#include "base/AtomicFile.h"
#include "base/Json.h"
#include "base/TerminalText.h"
#include "cli/CommandContext.h"
#include "cli/CommandGroup.h"
#include "cli/Commands.h"
#include "cli/NativeHosts.h"
#include "cli/Output.h"
#include "platform/linux/system/XdgPaths.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <fmt/format.h>

namespace quorvane::cli {
namespace {

using NativeHosts::Browser;
using NativeHosts::Installation;
using NativeHosts::State;

bool isThere(const Browser& browser) {
    std::error_code error;
    return std::any_of(browser.folders.begin(), browser.folders.end(),
                       [&](const auto& folder) { return std::filesystem::is_directory(folder, error); });
}

void print(const std::string& text) {
    Output output;
    output.write(text);
    output.finish();
}

/// A path as a shell reads it.
std::string quoted(const std::filesystem::path& path) {
    std::string text = "'";
    for (const char character : path.string())
        text += character == '\'' ? std::string("'\\''") : std::string(1, character);
    return text + "'";
}

/// What is left to do in the browsers themselves.
std::string nextSteps(const Installation& installation) {
    std::string text;
    if (installation.extension)
        text += fmt::format(
            "\nChromium and its relatives: open the page chrome://extensions, switch \"Developer mode\" on, press\n"
            "\"Load unpacked\" and choose the folder {}\n"
            "On Debian's Chromium, for all users and without that page:\n"
            "  sudo cp -rT {} /usr/share/chromium/extensions/quorvane\n",
            harmlessLine(installation.extension->string()), harmlessLine(quoted(*installation.extension)));
    if (installation.package)
        text += fmt::format(
            "\nFirefox takes the extension from a folder of the system only; on Debian's Firefox ESR:\n"
            "  sudo install -Dm644 {} "
            "'/usr/share/mozilla/extensions/{{ec8030f7-c20a-464f-9b0e-13a3a9e97384}}/tabs@quorvane.zelkor.xpi'\n"
            "Firefox Developer Edition, Nightly and relatives that let you: set xpinstall.signatures.required to "
            "false\n"
            "in about:config, and open that file with about:addons, \"Install Add-on From File\".\n",
            harmlessLine(quoted(*installation.package)));
    return text + "\nThen start the browser again.\n";
}

/// What to do where the extension can't be had.
constexpr const char* otherWay =
    "\nWhere the extension can't be installed, the accessibility tree tells the page: switch accessibility on in the\n"
    "settings of your desktop, or with\n"
    "  gsettings set org.gnome.desktop.interface toolkit-accessibility true\n"
    "and start the browser again, Chromium and its relatives with --force-renderer-accessibility.\n";

/// A line for each browser that can't take part.
std::string sandboxNotes() {
    std::string text;
    for (const auto& [name, package] : NativeHosts::sandboxedBrowsers())
        text += fmt::format("{} ({}): shut off from the system, it can't start the host\n", name, package);
    return text;
}

void write(const Browser& browser, const std::filesystem::path& host) {
    if (!platform::XdgPaths::createPrivately(browser.manifest.parent_path()))
        throw CommandError(ExitStatus::failed,
                           fmt::format("cannot make the folder {}", browser.manifest.parent_path().string()));
    writeFileAtomically(browser.manifest, NativeHosts::manifestText(browser.family, host));
}

void install(bool all) {
    const Installation installation = NativeHosts::installation();
    if (!installation.host) throw CommandError(ExitStatus::failed, "quorvane-browser-host is not installed");
    std::string text;
    for (const Browser& browser : NativeHosts::browsers()) {
        if (!all && !isThere(browser)) continue;
        write(browser, *installation.host);
        text += fmt::format("{}: {}\n", browser.name, harmlessLine(browser.manifest.string()));
    }
    const std::string sandboxed = sandboxNotes();
    if (text.empty() && sandboxed.empty())
        throw CommandError(ExitStatus::failed, "there is no folder of any browser that is known; --all makes them");
    print((text.empty() ? sandboxed : text + sandboxed + nextSteps(installation)) + otherWay);
}

void remove() {
    std::string text;
    for (const Browser& browser : NativeHosts::browsers()) {
        if (NativeHosts::stateOf(browser, {}) == State::missing || !NativeHosts::isOurs(browser)) continue;
        std::error_code error;
        if (!std::filesystem::remove(browser.manifest, error))
            throw CommandError(ExitStatus::failed,
                               fmt::format("cannot remove {}: {}", browser.manifest.string(), error.message()));
        text += fmt::format("{}: {} is gone\n", browser.name, harmlessLine(browser.manifest.string()));
    }
    print(text);
}

struct Findings {
    struct Row {
        Browser browser;
        bool isThere = false;
        State state = State::missing;
    };

    Installation installation;
    std::optional<std::string> hostProblem;
    std::vector<Row> rows;
};

Findings examine() {
    Findings findings{.installation = NativeHosts::installation()};
    const auto& host = findings.installation.host;
    findings.hostProblem = host ? NativeHosts::problemOf(*host) : "it is not installed";
    for (const Browser& browser : NativeHosts::browsers())
        findings.rows.push_back({.browser = browser,
                                 .isThere = isThere(browser),
                                 .state = NativeHosts::stateOf(browser, host.value_or(""))});
    return findings;
}

const char* wordFor(State state) {
    switch (state) {
    case State::missing: return "missing";
    case State::right: return "right";
    case State::wrong: return "wrong";
    }
    return "";
}

Json pathOrNull(const std::optional<std::filesystem::path>& path) {
    return path ? Json(path->string()) : Json(nullptr);
}

std::string jsonOf(const Findings& findings) {
    Json browsers = Json::array();
    for (const auto& [browser, isThere, state] : findings.rows)
        browsers.push_back({{"browser", browser.name},
                            {"found", isThere},
                            {"manifest", browser.manifest.string()},
                            {"state", wordFor(state)}});
    const Json host = {{"file", pathOrNull(findings.installation.host)},
                       {"runs", !findings.hostProblem},
                       {"problem", findings.hostProblem ? Json(*findings.hostProblem) : Json(nullptr)}};
    Json sandboxed = Json::array();
    for (const auto& [name, package] : NativeHosts::sandboxedBrowsers())
        sandboxed.push_back({{"browser", name}, {"package", package}});
    return jsonText({{"host", host},
                     {"extension", pathOrNull(findings.installation.extension)},
                     {"extension_id", NativeHosts::chromiumExtensionId},
                     {"browsers", std::move(browsers)},
                     {"sandboxed", std::move(sandboxed)}}) +
           "\n";
}

std::string textOf(const Findings& findings) {
    const auto add = [](const std::string& name, const std::string& text) {
        return fmt::format("{:<23}{}\n", name, harmlessLine(text));
    };
    const auto& [host, extension, package] = findings.installation;
    const std::string file = host ? host->string() : "quorvane-browser-host";
    std::string text = add("host", findings.hostProblem ? fmt::format("{} can't run: {}", file, *findings.hostProblem)
                                                        : file + " can run");
    text += add("extension", extension ? extension->string() : "it is not installed");
    for (const auto& [browser, isThere, state] : findings.rows) {
        const std::string place = browser.manifest.string();
        switch (state) {
        case State::missing:
            text += add(browser.name, isThere ? place + " is missing" : "no folder of this browser");
            break;
        case State::right: text += add(browser.name, place + " is right"); break;
        case State::wrong:
            text += add(browser.name, place + " leads elsewhere or is damaged; install writes it anew");
            break;
        }
    }
    return text + sandboxNotes();
}

void status(const CommandContext& context) {
    const Findings findings = examine();
    print(context.json ? jsonOf(findings) : textOf(findings));
}

}  // namespace

void addBrowserCommand(CLI::App& app, CommandContext& context) {
    auto* group = addGroup(app, "browser", "Let browsers tell Quorvane which page is in front");
    const auto all = std::make_shared<bool>(false);
    auto* installing =
        addMember(*group, context, "install", "Tell your browsers where Quorvane's host is", [all] { install(*all); });
    installing->add_flag("--all", *all, "Also browsers that have no folder yet");
    addMember(*group, context, "remove", "Take that back", remove);
    addMember(*group, context, "status", "Tell which browsers know the host and whether it can run",
              [&context] { status(context); });
}

}  // namespace quorvane::cli
