#pragma once

#include "platform/linux/desktop/DesktopEntry.h"
#include "platform/linux/desktop/WindowProperties.h"

#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace quorvane::platform {

/// The applications that desktop files describe, and which of them a window belongs to. Follows the directories: what
/// is installed or removed counts from the next question on. Made and destroyed on the main thread; questions come from
/// any.
class DesktopEntries {
public:
    /// `dataDirectories` are the parents of "applications", the more important first: a file hides those of the same id
    /// further down.
    explicit DesktopEntries(std::vector<std::filesystem::path> dataDirectories);
    DesktopEntries(const DesktopEntries&) = delete;
    DesktopEntries& operator=(const DesktopEntries&) = delete;
    ~DesktopEntries();

    /// The entry of the window's application.
    [[nodiscard]] std::optional<DesktopEntry> find(const WindowProperties& window);

    /// All of them, in no particular order.
    [[nodiscard]] std::vector<DesktopEntry> all();

private:
    struct Watch;

    void indexIfStale();

    std::vector<std::filesystem::path> dataDirectories_;
    std::mutex mutex_;  ///< guards `entries_`
    std::vector<DesktopEntry> entries_;
    std::unique_ptr<Watch> watch_;
};

}  // namespace quorvane::platform
