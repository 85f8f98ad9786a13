#pragma once

#include "base/Signal.h"
#include "diagnostics/AppLogger.h"
#include "diagnostics/LogEntry.h"
#include "l10n/Localization.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace quorvane {

/// What the log window holds: which entries of the log it shows, and whether it follows the newest. The entries
/// themselves stay with the logger. Main thread only.
class LogViewerState {
public:
    LogViewerState(AppLogger& logger, const Localization& localization);

    [[nodiscard]] const std::string& searchText() const { return searchText_; }
    void setSearchText(std::string text);
    /// None means every level.
    [[nodiscard]] std::optional<LogLevel> selectedLevel() const { return selectedLevel_; }
    void setSelectedLevel(std::optional<LogLevel> level);
    /// Does the list scroll to the newest entry when others come?
    [[nodiscard]] bool autoScroll() const { return autoScroll_; }
    void setAutoScroll(bool isOn);

    /// The entries that pass level and search, oldest first.
    [[nodiscard]] std::vector<LogEntry> displayedLogs() const;
    /// "12 of 318 entries", for this many of `displayedLogs`.
    [[nodiscard]] std::string statusCaption(std::size_t displayed) const;
    /// Are there entries that don't show?
    [[nodiscard]] bool isNarrowed(std::size_t displayed) const;

    /// Clearing is asked for first, then confirmed or not.
    [[nodiscard]] bool showingClearConfirmation() const { return showingClearConfirmation_; }
    void askToClear();
    void cancelClear();
    void confirmClear();

    /// What a copy of these entries holds, an entry a line: the messages alone, or the whole lines.
    [[nodiscard]] static std::string messages(std::span<const LogEntry> entries);
    [[nodiscard]] static std::string formattedLogs(std::span<const LogEntry> entries);

    Signal<> entriesChanged;  ///< of `displayedLogs`: another filter, or other entries in the log
    Signal<> autoScrollChanged;

private:
    AppLogger& logger_;
    const Localization& localization_;
    std::string searchText_;
    std::optional<LogLevel> selectedLevel_;
    bool showingClearConfirmation_ = false;
    bool autoScroll_ = true;
    Subscription logsChanged_;
};

}  // namespace quorvane
