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
        return {.bundleIdentifier = bundleIdentifier(entry->id),
                .localizedName = entry->name.empty() ? entry->id : entry->name};
    const auto& name = window.wmClass.empty() ? window.instance : window.wmClass;
    if (name.empty()) return {.bundleIdentifier = std::nullopt, .localizedName = processName(window.pid)};
    return {.bundleIdentifier = table_.bundleIdentifier(name).value_or(text::lowercased(name)), .localizedName = name};
}

std::string ApplicationIdentity::bundleIdentifier(const std::string& desktopId) const {
    return table_.bundleIdentifier(desktopId).value_or(desktopId);
}

std::string ApplicationIdentity::documentModel(const std::string& bundleIdentifier) const {
    return table_.documentModel(bundleIdentifier).value_or(bundleIdentifier);
}

}  // namespace quorvane::platform
