#include "diagnostics/LogEntry.h"

#include "base/Iso8601.h"
#include "support/Mapped.h"
#include "support/Matching.h"

#include <cstdlib>
#include <fmt/format.h>

namespace quorvane {
namespace {

LogEntry entry(LogLevel level, std::string module, std::string message) {
    return {.level = level, .module = std::move(module), .message = std::move(message)};
}

TEST(LogEntryTest, TheLineShowsLocalTimeInMillisecondsWhateverTheLanguage) {
    ::setenv("TZ", "America/New_York", 1);
    ::setenv("LC_ALL", "ar_EG.UTF-8", 1);
    auto logged = entry(LogLevel::info, "Settings", "saved");
    logged.timestamp = *parseIso8601("2026-11-01T06:30:00.999999Z");
    EXPECT_EQ(logged.formattedLog(), "[2026-11-01 01:30:00.999] [INFO] [Settings] saved");
    ::setenv("TZ", "UTC", 1);
    ::setenv("LC_ALL", "en_US.UTF-8", 1);
}

TEST(LogEntryTest, NoMillisecondIsLostToBinaryFractions) {
    auto logged = entry(LogLevel::debug, "M", "m");
    for (int millisecond = 0; millisecond < 1000; ++millisecond) {
        logged.timestamp = dateFromMicroseconds(1'772'442'000'000'000 + millisecond * 1000);
        ASSERT_EQ(logged.formattedLog(), fmt::format("[2026-03-02 09:00:00.{:03}] [DEBUG] [M] m", millisecond));
    }
}

TEST(LogEntryTest, AFilterTakesLevelAndTextTogether) {
    const LogEntries logs = {entry(LogLevel::info, "AppLogger", "started"), entry(LogLevel::error, "Store", "ÜBER all"),
                             entry(LogLevel::info, "Store", "opened"), entry(LogLevel::error, "Sync", "stored")};
    const std::tuple<std::optional<LogLevel>, const char*, std::vector<std::string>> rows[] = {
        {LogLevel::error, "", {"ÜBER all", "stored"}},
        {std::nullopt, "über", {"ÜBER all"}},                       // beyond ASCII
        {std::nullopt, "store", {"ÜBER all", "opened", "stored"}},  // message or module
        {LogLevel::info, "Store", {"opened"}}};
    for (const auto& [level, text, expected] : rows)
        EXPECT_EQ(mapped(filteredLogs(logs, level, text), &LogEntry::message), expected) << text;
}

}  // namespace
}  // namespace quorvane
