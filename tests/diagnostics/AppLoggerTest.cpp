#include "diagnostics/AppLogger.h"

#include "support/LoggingTest.h"
#include "support/Mapped.h"

#include <fmt/format.h>
#include <map>
#include <thread>

namespace quorvane {
namespace {

using platform::SystemLogType;

class AppLoggerTest : public LoggingTest {
protected:
    AppLoggerTest() : LoggingTest("2026-03-02T09:00:00.5Z", {.shortVersion = "1.2.0", .build = "345"}) {}

    [[nodiscard]] auto messages() const { return mapped(logger.logs(), &LogEntry::message); }
};

TEST_F(AppLoggerTest, TheListBeginsWithTheStartUpLineThatGoesNowhereElse) {
    (void)AppLogger(loop, systemLog, console, {});  // what is on its way to one that is gone is dropped
    EXPECT_THAT(logger.logs(), IsEmpty());
    loop.runPosted();
    ASSERT_THAT(logger.logs(), SizeIs(1));
    EXPECT_EQ(logger.logs().front().formattedLog(), "[2026-03-02 09:00:00.500] [INFO] [AppLogger] AppLogger 已初始化");
    EXPECT_THAT(console.lines(), IsEmpty());
    EXPECT_THAT(systemLog.lines(), IsEmpty());
}

TEST_F(AppLoggerTest, ALineReachesAllThreePlacesSanitised) {
    logger.log("from https://example.org/x", LogLevel::debug, "Sync");
    logger.log("token: x", LogLevel::info, "Sync");
    logger.log("warned", LogLevel::warning, "Sync");
    logger.log("failed", LogLevel::error, "Sync");
    using Line = platform::RecordingSystemLog::Line;
    EXPECT_THAT(systemLog.lines(),
                ElementsAre(Line{SystemLogType::debug, "[2026-03-02 09:00:00.500] [DEBUG] [Sync] from [redacted-url]"},
                            Line{SystemLogType::standard, "[2026-03-02 09:00:00.500] [INFO] [Sync] token=[redacted]"},
                            Line{SystemLogType::error, "[2026-03-02 09:00:00.500] [WARNING] [Sync] warned"},
                            Line{SystemLogType::error, "[2026-03-02 09:00:00.500] [ERROR] [Sync] failed"}));
    EXPECT_EQ(console.lines(), mapped(systemLog.lines(), &Line::text));

    loop.playFor(1s);
    EXPECT_THAT(messages(),
                ElementsAre("AppLogger 已初始化", "from [redacted-url]", "token=[redacted]", "warned", "failed"));
    EXPECT_EQ(logger.logStatistics(), (LogStatistics{.total = 5, .debug = 1, .info = 2, .warning = 1, .error = 1}));
}

TEST_F(AppLoggerTest, TheListKeepsTheNewestThousandOldestFirst) {
    loop.runPosted();
    for (int i = 1; i <= 1000; ++i)
        logger.addLogEntry(fmt::format("line {}", i), LogLevel::info, "M");
    ASSERT_THAT(logger.logs(), SizeIs(1000));
    EXPECT_EQ(logger.logs().front().message, "line 1");
    using testing::Field;
    EXPECT_THAT(logger.recentLogs(2),
                ElementsAre(Field(&LogEntry::message, "line 999"), Field(&LogEntry::message, "line 1000")));
    EXPECT_THAT(logger.recentLogs(1001), SizeIs(1000));
}

TEST_F(AppLoggerTest, AClearedListHoldsTheLineThatSaysSo) {
    loop.runPosted();
    int changes = 0;
    const auto watching = logger.logsChanged.subscribe([&] { ++changes; });
    logger.clearLogs();
    EXPECT_THAT(logger.logs(), IsEmpty());
    loop.runPosted();
    EXPECT_THAT(messages(), ElementsAre("清空所有日志"));
    EXPECT_EQ(changes, 2);
    EXPECT_THAT(console.lines(), ElementsAre("[2026-03-02 09:00:00.500] [INFO] [AppLogger] 清空所有日志"));
}

TEST_F(AppLoggerTest, ManyThreadsMayLogAtOnceAndEachKeepsItsOrder) {
    std::vector<std::thread> running;
    for (int t = 0; t < 4; ++t)
        running.emplace_back([this, t] {
            for (int i = 0; i < 200; ++i)
                logger.log(fmt::format("{} a{}@b.cc", i, i), LogLevel::info, fmt::format("T{}", t));
        });
    for (std::thread& thread : running)
        thread.join();
    loop.runPosted();

    EXPECT_THAT(console.lines(), SizeIs(800));
    EXPECT_THAT(systemLog.lines(), SizeIs(800));
    std::map<std::string, int> next;
    for (const LogEntry& entry : logger.logs()) {
        if (entry.module == "AppLogger") continue;
        EXPECT_EQ(entry.message, fmt::format("{} [redacted-email]", next[entry.module]++));
    }
    EXPECT_THAT(next, ElementsAre(Pair("T0", 200), Pair("T1", 200), Pair("T2", 200), Pair("T3", 200)));
}

}  // namespace
}  // namespace quorvane
