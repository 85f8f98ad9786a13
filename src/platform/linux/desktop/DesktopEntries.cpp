#include "platform/linux/desktop/DesktopEntries.h"

#include "base/Text.h"
#include "platform/linux/desktop/InstalledEntries.h"
#include "platform/linux/system/WholeFile.h"

#include <QFileSystemWatcher>
#include <QSet>
#include <QThread>
#include <algorithm>
#include <array>
#include <atomic>
#include <functional>
#include <string>
#include <system_error>

namespace quorvane::platform {
namespace {

namespace fs = std::filesystem;
using Matches = std::function<bool(const DesktopEntry&)>;

const DesktopEntry* firstMatch(const std::vector<DesktopEntry>& entries, const Matches& matches) {
    for (const bool isShown : {true, false})
        for (const auto& entry : entries)
            if (entry.isShown == isShown && matches(entry)) return &entry;
    return nullptr;
}

/// The id that a window property means: some applications give a path, some add the suffix.
std::string idFromProperty(const std::string& property) {
    constexpr std::string_view suffix = ".desktop";
    auto id = property.substr(property.rfind('/') + 1);
    if (id.ends_with(suffix)) id.resize(id.size() - suffix.size());
    return id;
}

const DesktopEntry* findById(const std::vector<DesktopEntry>& entries, const std::string& property) {
    if (property.empty()) return nullptr;
    return firstMatch(entries, [id = idFromProperty(property)](const DesktopEntry& entry) { return entry.id == id; });
}

std::string lastPart(const std::string& id) {
    return id.substr(id.rfind('.') + 1);
}

/// By WM_CLASS. The class goes before the instance, which command lines and profiles change.
const DesktopEntry* findByClass(const std::vector<DesktopEntry>& entries, const WindowProperties& window) {
    const std::array names{window.wmClass, window.instance};
    const std::array lowerNames{text::lowercased(window.wmClass), text::lowercased(window.instance)};
    using Key = std::string (*)(const DesktopEntry&);
    struct Rule {
        const std::array<std::string, 2>& names;
        Key key;
    };
    const Rule rules[] = {
        {names, [](const DesktopEntry& entry) { return entry.startupWmClass; }},
        {lowerNames, [](const DesktopEntry& entry) { return text::lowercased(entry.startupWmClass); }},
        {lowerNames, [](const DesktopEntry& entry) { return text::lowercased(entry.id); }},
        {lowerNames, [](const DesktopEntry& entry) { return text::lowercased(lastPart(entry.id)); }},
    };
    for (const auto& rule : rules)
        for (const auto& name : rule.names) {
            if (name.empty()) continue;
            const auto matches = [&](const DesktopEntry& entry) { return rule.key(entry) == name; };
            if (const auto* entry = firstMatch(entries, matches)) return entry;
        }
    return nullptr;
}

std::string environmentOf(pid_t pid, std::string_view name) {
    const auto bytes = wholeFile(fs::path("/proc") / std::to_string(pid) / "environ");
    for (const auto& line : text::split(bytes.value_or(""), '\0'))
        if (line.starts_with(name) && line.size() > name.size() && line[name.size()] == '=')
            return line.substr(name.size() + 1);
    return {};
}

/// By the launcher's note in the process's environment, which its children inherit: the second variable says for whom
/// it was meant.
const DesktopEntry* findByLauncher(const std::vector<DesktopEntry>& entries, pid_t pid) {
    if (environmentOf(pid, "GIO_LAUNCHED_DESKTOP_FILE_PID") != std::to_string(pid)) return nullptr;
    return findById(entries, environmentOf(pid, "GIO_LAUNCHED_DESKTOP_FILE"));
}

/// By the program that runs. It must be one that only one application of the menus uses, so no interpreter's.
const DesktopEntry* findByProgram(const std::vector<DesktopEntry>& entries, pid_t pid) {
    std::error_code error;
    const auto program = fs::read_symlink(fs::path("/proc") / std::to_string(pid) / "exe", error).filename().string();
    if (error || program.empty()) return nullptr;
    for (const std::string_view interpreter :
         {"java", "python", "perl", "ruby", "node", "electron", "wine", "bash", "sh"})
        if (program.starts_with(interpreter)) return nullptr;
    const DesktopEntry* found = nullptr;
    for (const auto& entry : entries) {
        if (!entry.isShown || entry.program != program) continue;
        if (found) return nullptr;
        found = &entry;
    }
    return found;
}

const DesktopEntry* findEntry(const std::vector<DesktopEntry>& entries, const WindowProperties& window) {
    if (const auto* entry = findById(entries, window.kdeDesktopFile)) return entry;
    if (const auto* entry = findById(entries, window.gtkApplicationId)) return entry;
    if (const auto* entry = findByClass(entries, window)) return entry;
    if (window.pid <= 0) return nullptr;
    if (const auto* entry = findByLauncher(entries, window.pid)) return entry;
    return findByProgram(entries, window.pid);
}

}  // namespace

struct DesktopEntries::Watch {
    QFileSystemWatcher watcher;
    std::atomic<bool> isStale = true;

    /// The watcher is the main thread's. What changed before it could follow, only another look at the files tells.
    void follow(const std::vector<fs::path>& directories) {
        QStringList paths;
        for (const auto& directory : directories)
            paths += QString::fromStdString(directory.string());
        QMetaObject::invokeMethod(&watcher, [this, paths, isLate = QThread::currentThread() != watcher.thread()] {
            const auto before = watcher.directories();
            if (isLate && QSet(before.begin(), before.end()) != QSet(paths.begin(), paths.end())) isStale = true;
            if (!before.isEmpty()) watcher.removePaths(before);
            if (!paths.isEmpty()) watcher.addPaths(paths);
        });
    }
};

DesktopEntries::DesktopEntries(std::vector<fs::path> dataDirectories)
    : dataDirectories_(std::move(dataDirectories)), watch_(std::make_unique<Watch>()) {
    QObject::connect(&watch_->watcher, &QFileSystemWatcher::directoryChanged, &watch_->watcher,
                     [watch = watch_.get()] { watch->isStale = true; });
}

DesktopEntries::~DesktopEntries() = default;

std::optional<DesktopEntry> DesktopEntries::find(const WindowProperties& window) {
    const std::lock_guard lock(mutex_);
    indexIfStale();
    const auto* entry = findEntry(entries_, window);
    return entry ? std::optional(*entry) : std::nullopt;
}

std::vector<DesktopEntry> DesktopEntries::all() {
    const std::lock_guard lock(mutex_);
    indexIfStale();
    return entries_;
}

void DesktopEntries::indexIfStale() {
    if (!watch_->isStale.exchange(false)) return;
    auto installed = installedEntries(dataDirectories_);
    entries_ = std::move(installed.entries);
    watch_->follow(installed.directories);
}

}  // namespace quorvane::platform
