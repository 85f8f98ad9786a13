#include "platform/linux/kde/PlasmaGrant.h"

#include "base/AtomicFile.h"
#include "platform/linux/desktop/DesktopFileText.h"
#include "platform/linux/desktop/InstalledEntries.h"
#include "platform/linux/system/XdgPaths.h"

#include <algorithm>
#include <fmt/format.h>

namespace quorvane::platform {
namespace {

constexpr const char* plasmaInterface = "org_kde_plasma_window_management";

constexpr const char* grantEntry = R"([Desktop Entry]
Type=Application
Version=1.4
Name=Quorvane
Comment=Lets KDE Plasma tell Quorvane which window is in front
Exec={}
Icon=org.zelkor.Quorvane
Terminal=false
NoDisplay=true
X-KDE-Wayland-Interfaces={}
)";

std::filesystem::path resolved(const std::filesystem::path& path) {
    std::error_code error;
    auto target = std::filesystem::canonical(path, error);
    return error ? path : target;
}

std::string grantId(const std::filesystem::path& program) {
    return "com.quorvane.windows." + program.filename().string();
}

bool asks(const DesktopEntry& entry) {
    const auto& interfaces = entry.kwinInterfaces;
    return std::find(interfaces.begin(), interfaces.end(), plasmaInterface) != interfaces.end();
}

/// The entries among which KWin chooses.
std::vector<DesktopEntry> entriesOf(const std::filesystem::path& program) {
    auto entries = installedEntries(XdgPaths::dataDirectories()).entries;
    std::erase_if(entries, [&](const DesktopEntry& entry) {
        return !entry.isForKde || entry.executable.empty() || resolved(entry.executable) != program;
    });
    return entries;
}

/// Another's entry that says nothing, so that KWin may take it.
std::optional<std::string> silentEntry(const std::vector<DesktopEntry>& entries, const std::string& ownId) {
    for (const auto& entry : entries)
        if (!asks(entry) && entry.id != ownId)
            return fmt::format("the desktop file {}.desktop, which runs {}, lacks the line "
                               "X-KDE-Wayland-Interfaces={}",
                               entry.id, entry.executable, plasmaInterface);
    return std::nullopt;
}

}  // namespace

PlasmaGrant::PlasmaGrant(const std::filesystem::path& program) : program_(resolved(program)) {}

std::vector<PlasmaGrant> PlasmaGrant::ofThisInstallation() {
    std::vector<PlasmaGrant> grants;
    const auto folder = resolved("/proc/self/exe").parent_path();
    for (const char* name : {"quorvane", "quorvane-cli"})
        if (std::error_code ignored; std::filesystem::exists(folder / name, ignored))
            grants.emplace_back(folder / name);
    return grants;
}

std::filesystem::path PlasmaGrant::file() const {
    return XdgPaths::dataHome() / "applications" / (grantId(program_) + ".desktop");
}

std::string PlasmaGrant::problem() const {
    const auto entries = entriesOf(program_);
    if (std::none_of(entries.begin(), entries.end(), asks))
        return fmt::format("no desktop file that runs {} asks KWin for the windows", program_.string());
    return silentEntry(entries, grantId(program_)).value_or("");
}

std::optional<std::string> PlasmaGrant::install() const {
    const auto entries = entriesOf(program_);
    if (auto silent = silentEntry(entries, grantId(program_))) return silent;
    if (std::any_of(entries.begin(), entries.end(), asks)) return std::nullopt;
    const auto folder = file().parent_path();
    if (!XdgPaths::createPrivately(folder)) return fmt::format("the folder {} can't be made", folder.string());
    try {
        writeFileAtomically(file(), fmt::format(grantEntry, desktopArgument(program_.string()), plasmaInterface));
    } catch (const FileError& error) {
        return error.what();
    }
    return std::nullopt;
}

std::optional<std::string> PlasmaGrant::remove() const {
    std::error_code error;
    std::filesystem::remove(file(), error);
    if (error) return fmt::format("{} can't be removed: {}", file().string(), error.message());
    return std::nullopt;
}

}  // namespace quorvane::platform
