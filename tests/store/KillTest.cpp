#include "store/ActivityRecord.h"
#include "store/ModelContainer.h"
#include "support/Matchers.h"
#include "support/TemporaryFolder.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <array>
#include <csignal>
#include <ctime>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <optional>
#include <poll.h>
#include <random>
#include <sys/timerfd.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quorvane {
namespace {

using Record = ActivityRecord;

/// What the child says of a record after the save that closed it has returned. Small enough to be written at once.
struct Report {
    std::array<std::uint8_t, 16> id;
    std::int64_t start;
    std::int64_t end;
    std::int64_t number;
};

/// Tracks as fast as it can and never ends by itself: opens a record, touches it now and then, closes it, and so on.
[[noreturn]] void trackForever(const std::filesystem::path& file, int reports) {
    try {
        ModelContainer container({.file = file});
        ModelContext& context = container.mainContext();
        for (const auto& left : context.fetch<Record>({.predicate = field(&Record::endTime).isNone()}))
            left->endTime = left->startTime() + 1s;
        context.save();
        const auto stored = static_cast<std::int64_t>(context.count<Record>());
        for (std::int64_t number = stored;; ++number) {
            const Date start = dateFromMicroseconds(1772442000000000 + number * 60000000);
            const auto record = std::make_shared<Record>(Record::Values{.startTime = start, .appName = "Editor"});
            context.insert(record);
            context.save();
            for (std::int64_t beat = number % 4; beat > 0; --beat) {
                record->windowTitle =
                    "beat " + std::to_string(beat) + std::string(static_cast<std::size_t>(number % 700), 'x');
                record->updatedAt = start + static_cast<double>(beat) * 1s;
                context.save();
            }
            record->endTime = start + 59s;
            record->windowTitle = std::to_string(number);
            context.save();
            const Report report{record->id().bytes(), microsecondsSince1970(start), microsecondsSince1970(start + 59s),
                                number};
            if (::write(reports, &report, sizeof report) != sizeof report) ::_exit(1);
        }
    } catch (const std::exception& error) {
        const std::string text = std::string(error.what()) + '\n';
        (void)!::write(STDERR_FILENO, text.data(), text.size());
        ::_exit(2);
    }
}

class KillTest : public testing::Test {
protected:
    /// Runs the child for so long, kills it, and keeps what it reported. Says how it ended.
    int trackAndKill(std::chrono::microseconds life) {
        std::array<int, 2> reports{};
        if (::pipe(reports.data()) != 0) return -1;
        const int timer = ::timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC);
        const pid_t child = ::fork();
        if (child == 0) {
            ::close(reports[0]);
            trackForever(folder / "store.sqlite", reports[1]);
        }
        ::close(reports[1]);
        const itimerspec due{.it_interval = {}, .it_value = {.tv_sec = 0, .tv_nsec = life.count() * 1000}};
        ::timerfd_settime(timer, 0, &due, nullptr);
        readReports(reports[0], timer);
        ::kill(child, SIGKILL);
        readReports(reports[0], std::nullopt);
        int status = 0;
        ::waitpid(child, &status, 0);
        ::close(reports[0]);
        ::close(timer);
        return status;
    }

    /// Reads until the timer is due; without one, until the last writer is gone.
    void readReports(int reports, std::optional<int> timer) {
        for (;;) {
            std::array<pollfd, 2> sources{pollfd{.fd = reports, .events = POLLIN},
                                          pollfd{.fd = timer.value_or(-1), .events = POLLIN}};
            ::poll(sources.data(), sources.size(), -1);
            if (sources[1].revents != 0) return;
            Report report{};
            if (::read(reports, &report, sizeof report) != sizeof report) return;
            closed[Uuid(report.id)] = report;
        }
    }

    /// The file is sound, and holds every closed record as it was reported and at most one open one.
    void check() const {
        {
            SQLite::Database database((folder / "store.sqlite").string(), SQLite::OPEN_READONLY);
            ASSERT_EQ(database.execAndGet("PRAGMA integrity_check").getString(), "ok");
        }
        ModelContainer container({.file = folder / "store.sqlite"});
        ModelContext& context = container.mainContext();
        ASSERT_LE(context.count(field(&Record::endTime).isNone()), 1U);
        std::size_t found = 0;
        context.scan<Record>({}, {"id", "start_time", "end_time", "window_title"}, [&](const Row& row) {
            const auto report = closed.find(ValueTraits<Uuid>::fromSql(row.value(0)));
            if (report == closed.end()) return true;
            ++found;
            EXPECT_EQ(row.integer(1), report->second.start);
            EXPECT_EQ(row.integer(2), report->second.end);
            EXPECT_EQ(row.text(3), std::to_string(report->second.number));
            return true;
        });
        ASSERT_EQ(found, closed.size());
    }

    TemporaryFolder folder;
    std::map<Uuid, Report> closed;
};

TEST_F(KillTest, AKilledProgramLosesNothingThatItHadSaved) {
    constexpr unsigned seed = 20260302;
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937 random(seed);
    std::uniform_int_distribution life(500, 25000);  // microseconds; opening the store takes about a thousand
    for (int round = 0; round < 200; ++round) {
        SCOPED_TRACE(testing::Message() << "round " << round);
        const int status = trackAndKill(std::chrono::microseconds(life(random)));
        ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << status;
        check();
        if (HasFatalFailure() || HasFailure()) return;
    }
    EXPECT_GT(closed.size(), 1000U) << "the child hardly got to work";
    RecordProperty("records", static_cast<int>(closed.size()));
}

TEST_F(KillTest, AProgramThatIsKilledWhileItMakesTheStoreLeavesOneThatOpens) {
    constexpr unsigned seed = 31415;
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937 random(seed);
    std::uniform_int_distribution life(50, 12000);  // microseconds
    for (int round = 0; round < 60; ++round) {
        SCOPED_TRACE(testing::Message() << "round " << round);
        closed.clear();
        for (const char* suffix : {"", "-wal", "-shm", "-journal"})
            std::filesystem::remove(folder / ("store.sqlite" + std::string(suffix)));
        const int status = trackAndKill(std::chrono::microseconds(life(random)));
        ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << status;
        { const ModelContainer opened({.file = folder / "store.sqlite"}); }
        check();
        if (HasFatalFailure() || HasFailure()) return;
    }
}

}  // namespace
}  // namespace quorvane
