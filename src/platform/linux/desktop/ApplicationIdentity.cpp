#include "platform/linux/desktop/ApplicationIdentity.h"

#include "base/Text.h"
#include "platform/linux/system/WholeFile.h"

#include <filesystem>
#include <system_error>
#include <utility>

namespace quorvane::platform {
namespace {

/// The program that runs; where that is hidden from us, the name of the process, of which there are 15 bytes.
std::optional<std::string> processName(pid_t pid) {
    if (pid <= 0) return std::nullopt;
    const auto process = std::filesystem::path("/proc") / std::to_string(pid);
    std::error_code error;
    auto name = std::filesystem::read_symlink(process / "exe", error).filename().string();
    if (name.empty()) name = text::trimmedWithNewlines(wholeFile(process / "comm").value_or(""));
    return name.empty() ? std::nullopt : std::optional(text::validUtf8(name));
}

}  // namespace

ApplicationIdentity::ApplicationIdentity(DesktopEntries& entries, IdentityTable table)
    : entries_(entries), table_(std::move(table)) {}

ForegroundApplication ApplicationIdentity::identify(const WindowProperties& window) const {
    if (const auto entry = entries_.find(window))
        return {.bundleIdentifier = identifierOf(*entry, window),
                .localizedName = entry->name.empty() ? entry->id : entry->name};
    const auto& name = window.wmClass.empty() ? window.instance : window.wmClass;
    if (name.empty()) return {.bundleIdentifier = std::nullopt, .localizedName = processName(window.pid)};
    auto known = knownIdentifier(text::lowercased(window.wmClass));
    if (!known) known = knownIdentifier(text::lowercased(window.instance));
    return {.bundleIdentifier = known.value_or(text::lowercased(name)), .localizedName = name};
}

/// Desktop files of AppImages and of installers have ids that nobody else gives; the class of the windows is still the
/// usual one. Only a file that names a class which nobody knows is of an application of its own, as a web page's is
/// that a browser shows in windows of its own class. The instance says nothing here: users change it.
std::string ApplicationIdentity::identifierOf(const DesktopEntry& entry, const WindowProperties& window) const {
    if (auto known = knownIdentifier(entry.id)) return *std::move(known);
    const auto& wmClass = entry.startupWmClass.empty() ? window.wmClass : entry.startupWmClass;
    return knownIdentifier(text::lowercased(wmClass)).value_or(entry.id);
}

/// A name of which the table says only how its documents are asked for is an identifier itself.
std::optional<std::string> ApplicationIdentity::knownIdentifier(const std::string& name) const {
    if (auto identifier = table_.bundleIdentifier(name)) return identifier;
    return table_.documentModel(name) ? std::optional(name) : std::nullopt;
}

std::string ApplicationIdentity::bundleIdentifier(const std::string& desktopId) const {
    return table_.bundleIdentifier(desktopId).value_or(desktopId);
}

std::optional<std::string> ApplicationIdentity::icon(const std::string& bundleIdentifier) const {
    std::optional<std::string> found;
    for (auto& entry : entries_.all()) {
        if (entry.icon.empty() || identifierOf(entry, {}) != bundleIdentifier) continue;
        if (entry.isShown) return std::move(entry.icon);
        if (!found) found = std::move(entry.icon);
    }
    return found;
}

std::vector<std::string> ApplicationIdentity::names(const ForegroundApplication& application) const {
    const auto identifier = application.bundleIdentifier.value_or("");
    auto names = table_.names(identifier);
    for (const auto& name :
         {identifier, identifier.substr(identifier.rfind('.') + 1), application.localizedName.value_or("")})
        if (name.size() > 1) names.push_back(text::lowercased(name));
    return names;
}

std::string ApplicationIdentity::documentModel(const std::string& bundleIdentifier) const {
    return table_.documentModel(bundleIdentifier).value_or(bundleIdentifier);
}

}  // namespace quorvane::platform
