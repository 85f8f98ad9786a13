#include "platform/linux/gnome/GnomeExtension.h"

#include "base/AtomicFile.h"
#include "base/Environment.h"
#include "base/Json.h"
#include "base/Text.h"
#include "platform/linux/gnome/ExtensionSettings.h"
#include "platform/linux/gnome/GnomeShell.h"
#include "platform/linux/system/WholeFile.h"
#include "platform/linux/system/XdgPaths.h"

#include <algorithm>
#include <array>
#include <system_error>
#include <vector>

namespace quorvane::platform::GnomeExtension {
namespace {

namespace fs = std::filesystem;

constexpr Seconds patienceForShell = 1.5s;
constexpr Seconds patienceForSettings = 3s;
constexpr std::array files{"extension.js", "metadata.json"};

fs::path folderIn(const fs::path& data) {
    return data / "gnome-shell/extensions" / uuid;
}

fs::path usersFolder() {
    return folderIn(XdgPaths::dataHome());
}

/// Does the folder hold an extension?
bool isThere(const fs::path& folder) {
    std::error_code error;
    return fs::exists(folder / "metadata.json", error);
}

fs::path folderOfSystem() {
    for (const auto& data : XdgPaths::dataDirectories())
        if (data != XdgPaths::dataHome() && isThere(folderIn(data))) return folderIn(data);
    return {};
}

/// The folders of the forms that this program brings, each named after the first shell that understands it.
std::vector<fs::path> forms() {
    std::error_code error;
    const auto program = fs::read_symlink("/proc/self/exe", error);
    const auto shared = (program.parent_path() / "../share/quorvane/gnome-extension").lexically_normal();
    std::vector<fs::path> found;
    for (const char* form : {"42", "45"})
        if (isThere(shared / form)) found.push_back(shared / form);
    return found;
}

bool areEqual(const fs::path& one, const fs::path& other) {
    return std::ranges::all_of(files, [&](const char* file) {
        const auto content = wholeFile(one / file);
        return content && content == wholeFile(other / file);
    });
}

std::vector<std::string> shellsOf(const fs::path& form) {
    std::vector<std::string> shells;
    const auto metadata = parseJson(wholeFile(form / "metadata.json").value_or(""));
    if (metadata && metadata->contains("shell-version"))
        for (const auto& shell : metadata->at("shell-version"))
            if (shell.is_string()) shells.push_back(shell.get<std::string>());
    return shells;
}

fs::path formFor(const GnomeShell& shell) {
    const auto version = shell.version();
    if (!version) throw Error("GNOME Shell is not installed, or does not say its version");
    const auto all = forms();
    if (all.empty()) throw Error("the extension for GNOME Shell is missing beside this program; install Quorvane anew");
    const std::string major = version->substr(0, version->find('.'));
    for (const auto& form : all) {
        const auto shells = shellsOf(form);
        if (std::ranges::find(shells, major) != shells.end()) return form;
    }
    throw Error("the extension is made for GNOME Shell " + shellsOf(all.front()).front() + " to " +
                shellsOf(all.back()).back() + ", and this is " + *version);
}

void write(const fs::path& form, const fs::path& folder) {
    if (!XdgPaths::createPrivately(folder)) throw Error("cannot make the folder " + folder.string());
    for (const char* file : files) {
        const auto content = wholeFile(form / file);
        if (!content) throw Error("cannot read " + (form / file).string());
        try {
            writeFileAtomically(folder / file, *content);
        } catch (const FileError& error) {
            throw Error(error.what());
        }
    }
}

/// Why the shell does not run an extension that it knows and that is turned on.
std::string reasonOf(const GnomeShell::Extension& known, const Deadline& deadline) {
    if (known.state == GnomeShell::failed) return "GNOME Shell reports an error: " + known.error;
    if (known.state == GnomeShell::outOfDate) return "it is made for other versions of GNOME Shell";
    if (!ExtensionSettings::areOn(deadline)) return "extensions are switched off altogether in GNOME";
    return "GNOME Shell does not run it at this moment, as while the screen is locked";
}

Status examine(const GnomeShell& shell, const Deadline& deadline) {
    Status status;
    status.isOfSystem = !isThere(usersFolder());
    status.folder = status.isOfSystem ? folderOfSystem() : usersFolder();
    if (status.folder.empty()) return {};
    status.isOutdated =
        std::ranges::none_of(forms(), [&](const fs::path& form) { return areEqual(form, status.folder); });
    const auto known = shell.extension(uuid);
    if (known && (known->state == GnomeShell::active || known->state == GnomeShell::activating)) {
        status.state = State::on;
    } else if (!ExtensionSettings::isEnabled(uuid, deadline)) {
        status.state = State::off;
    } else if (known && known->state != GnomeShell::unknown) {
        status.state = State::stopped;
        status.reason = reasonOf(*known, deadline);
    } else if (!known && shell.isThere()) {
        status.state = State::stopped;
        status.reason = "GNOME Shell does not answer";
    } else {
        status.state = State::afterLogin;
    }
    return status;
}

Status installed(const GnomeShell& shell, const Deadline& deadline) {
    bool isWritten = false;
    if (folderOfSystem().empty()) {
        const auto form = formFor(shell);
        isWritten = !areEqual(form, usersFolder());
        if (isWritten) write(form, usersFolder());
    }
    shell.enable(uuid);
    ExtensionSettings::enable(uuid, deadline);
    auto status = examine(shell, deadline);
    status.isRenewed = isWritten && status.state == State::on;
    return status;
}

Status removed(const GnomeShell& shell, const Deadline& deadline) {
    shell.disable(uuid);
    if (isThere(usersFolder())) shell.uninstall(uuid);
    std::error_code error;
    fs::remove_all(usersFolder(), error);
    if (error) throw Error("cannot remove " + usersFolder().string() + ": " + error.message());
    ExtensionSettings::forget(uuid, deadline);
    return examine(shell, deadline);
}

Status afterwards(Status (*what)(const GnomeShell&, const Deadline&)) {
    const GnomeShell shell{Deadline(patienceForShell)};
    try {
        return what(shell, Deadline(patienceForSettings));
    } catch (const ExtensionSettings::Error& error) {
        throw Error(std::string("the settings of GNOME can't be read or written: ") + error.what());
    }
}

}  // namespace

bool isGnome() {
    const GnomeShell shell{Deadline(patienceForShell)};
    if (shell.hasBus()) return shell.isThere();
    // Relatives without this shell have the name in their lists, too.
    const auto names = text::split(text::lowercased(environment("XDG_CURRENT_DESKTOP")), ':');
    return std::ranges::find(names, "gnome") != names.end();
}

Status status() {
    return afterwards(examine);
}

bool awaitsLogin() {
    const auto socket = fs::path(environment("XDG_RUNTIME_DIR")) / environment("WAYLAND_DISPLAY");
    std::error_code error;
    const auto begin = fs::last_write_time(socket, error);
    const auto written = error ? begin : fs::last_write_time(usersFolder() / "metadata.json", error);
    return !error && written > begin;
}

Status install() {
    return afterwards(installed);
}

Status remove() {
    return afterwards(removed);
}

}  // namespace quorvane::platform::GnomeExtension
