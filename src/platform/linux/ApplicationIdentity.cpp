#include "platform/linux/ApplicationIdentity.h"

#include "base/Text.h"
#include "platform/linux/WholeFile.h"

#include <utility>

namespace quorvane::platform {
namespace {

std::optional<std::string> processName(pid_t pid) {
    if (pid <= 0) return std::nullopt;
    const auto line = wholeFile("/proc/" + std::to_string(pid) + "/comm");
    if (!line) return std::nullopt;
    auto name = text::trimmedWithNewlines(text::validUtf8(*line));
    return name.empty() ? std::nullopt : std::optional(std::move(name));
}

}  // namespace

ApplicationIdentity::ApplicationIdentity(DesktopEntries& entries, IdentityTable table)
    : entries_(entries), table_(std::move(table)) {}

ForegroundApplication ApplicationIdentity::identify(const WindowProperties& window) const {
    if (const auto* entry = entries_.find(window))
        return {.bundleIdentifier = table_.bundleIdentifier(entry->id).value_or(entry->id),
                .localizedName = entry->name.empty() ? entry->id : entry->name};
    const auto& name = window.wmClass.empty() ? window.instance : window.wmClass;
    if (name.empty()) return {.bundleIdentifier = std::nullopt, .localizedName = processName(window.pid)};
    return {.bundleIdentifier = table_.bundleIdentifier(name).value_or(text::lowercased(name)), .localizedName = name};
}

}  // namespace quorvane::platform
