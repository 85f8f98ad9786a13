#include "shell/state/LogViewerState.h"

#include <utility>

namespace quorvane {
namespace {

template <class TextOf>
std::string joined(std::span<const LogEntry> entries, const TextOf& textOf) {
    std::string lines;
    std::string_view separator;
    for (const LogEntry& entry : entries) {
        lines += separator;
        lines += textOf(entry);
        separator = "\n";
    }
    return lines;
}

}  // namespace

LogViewerState::LogViewerState(AppLogger& logger, const Localization& localization)
    : logger_(logger), localization_(localization),
      logsChanged_(logger.logsChanged.subscribe([this] { entriesChanged.send(); })) {}

void LogViewerState::setSearchText(std::string text) {
    if (text == searchText_) return;
    searchText_ = std::move(text);
    entriesChanged.send();
}

void LogViewerState::setSelectedLevel(std::optional<LogLevel> level) {
    if (level == selectedLevel_) return;
    selectedLevel_ = level;
    entriesChanged.send();
}

void LogViewerState::setAutoScroll(bool isOn) {
    if (isOn == autoScroll_) return;
    autoScroll_ = isOn;
    autoScrollChanged.send();
}

std::vector<LogEntry> LogViewerState::displayedLogs() const {
    return filteredLogs(logger_.logs(), selectedLevel_, searchText_);
}

std::string LogViewerState::statusCaption(std::size_t displayed) const {
    return localization_.text("log_status_caption", displayed, logger_.logs().size());
}

bool LogViewerState::isNarrowed(std::size_t displayed) const {
    return displayed != logger_.logs().size();
}

void LogViewerState::askToClear() {
    showingClearConfirmation_ = true;
}

void LogViewerState::cancelClear() {
    showingClearConfirmation_ = false;
}

void LogViewerState::confirmClear() {
    showingClearConfirmation_ = false;
    logger_.clearLogs();
}

std::string LogViewerState::messages(std::span<const LogEntry> entries) {
    return joined(entries, [](const LogEntry& entry) -> const std::string& { return entry.message; });
}

std::string LogViewerState::formattedLogs(std::span<const LogEntry> entries) {
    return joined(entries, [](const LogEntry& entry) { return entry.formattedLog(); });
}

}  // namespace quorvane
