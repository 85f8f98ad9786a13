#include "diagnostics/AppLogger.h"

#include "diagnostics/DiagnosticReport.h"
#include "diagnostics/LogPrivacySanitizer.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace quorvane {
namespace {

AppLogger* sharedLogger = nullptr;

platform::SystemLogType systemLogType(LogLevel level) {
    switch (level) {
    case LogLevel::debug: return platform::SystemLogType::debug;
    case LogLevel::info: return platform::SystemLogType::standard;
    case LogLevel::warning:
    case LogLevel::error: return platform::SystemLogType::error;
    }
    return platform::SystemLogType::standard;
}

}  // namespace

AppLogger::AppLogger(platform::RunLoop& runLoop, platform::SystemLog& systemLog, ConsoleSink& console,
                     ApplicationInfo application)
    : runLoop_(runLoop), systemLog_(systemLog), console_(console), application_(std::move(application)) {
    runLoop_.post([weak = weak_.handle()] {
        if (auto* self = weak.get()) self->addLogEntry("AppLogger 已初始化", LogLevel::info, "AppLogger");
    });
}

AppLogger& AppLogger::shared() {
    assert(sharedLogger != nullptr);
    return *sharedLogger;
}

void AppLogger::setShared(AppLogger* logger) {
    sharedLogger = logger;
}

void AppLogger::log(std::string_view message, LogLevel level, std::string_view module) {
    const LogEntry entry{.id = Uuid::random(),
                         .timestamp = runLoop_.now(),
                         .level = level,
                         .module = std::string(module),
                         .message = LogPrivacySanitizer::sanitize(message)};
    const std::string line = entry.formattedLog();
    console_.write(line);
    systemLog_.write(systemLogType(level), line);
    runLoop_.post([weak = weak_.handle(), message = entry.message, level, module = entry.module] {
        if (auto* self = weak.get()) self->addLogEntry(message, level, module);
    });
}

void AppLogger::addLogEntry(std::string message, LogLevel level, std::string module) {
    assert(runLoop_.isMainThread());
    logs_.push_back({Uuid::random(), runLoop_.now(), level, std::move(module), std::move(message)});
    if (logs_.size() > maxLogCount) logs_.pop_front();
    logsChanged.send();
}

std::vector<LogEntry> AppLogger::recentLogs(int count) const {
    assert(count >= 0);
    const auto taken = std::min<std::ptrdiff_t>(count, static_cast<std::ptrdiff_t>(logs_.size()));
    return {logs_.end() - taken, logs_.end()};
}

std::vector<LogEntry> AppLogger::logsOfLevel(LogLevel level) const {
    return filteredLogs(logs_, level, "");
}

std::vector<LogEntry> AppLogger::searchLogs(std::string_view keyword) const {
    return filteredLogs(logs_, std::nullopt, keyword);
}

LogStatistics AppLogger::logStatistics() const {
    return statistics(logs_);
}

void AppLogger::clearLogs() {
    log("清空所有日志", LogLevel::info, "AppLogger");
    logs_.clear();
    logsChanged.send();
}

std::string AppLogger::exportDiagnosticReport() const {
    return diagnosticReport(logs_, application_, runLoop_.now());
}

}  // namespace quorvane
