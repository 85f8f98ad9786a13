#include "base/Json.h"
#include "scenarios/SimulatedDay.h"
#include "store/StoreDump.h"

#include <array>
#include <csignal>
#include <fmt/format.h>
#include <map>
#include <poll.h>
#include <random>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace quorvane {
namespace {

constexpr int runs = 200;
constexpr std::size_t enough = 200;  ///< records, for kills to have met some
constexpr unsigned seed = 20260304;

/// What was known to be saved: the dump row of each closed record by its id.
using Rows = std::map<std::string, std::string>;

Rows recordRows(const std::filesystem::path& file) {
    std::ostringstream out;
    Database database({.file = file, .allowsSave = false});
    StoreDump::write(database, [&](std::string_view piece, std::size_t) { out << piece; });
    Rows rows;
    std::istringstream lines(out.str());
    for (std::string line; std::getline(lines, line);) {
        const auto row = parseJson(line);
        if (row && row->at("entity") == "ActivityRecord") rows[row->at("id").get<std::string>()] = line;
    }
    return rows;
}

bool isOpen(const std::string& row) {
    return row.find("\"end_time\":null") != std::string::npos;
}

/// A tracker that works through simulated minutes as fast as it can, in a process of its own. Through the pipe it tells
/// which records were closed and saved. No two have the same application and none is short, so that the clean-up, which
/// runs as ever, finds nothing to merge.
class KilledRunTest : public SimulatedDayTest {
protected:
    /// Does it in a process of its own, which dies of it.
    static void inChild(const std::function<void()>& work) {
        const pid_t child = ::fork();
        if (child == 0) {
            work();
            ::raise(SIGKILL);
        }
        ::waitpid(child, nullptr, 0);
    }

    void beginAt(Date from, const std::string& front, ModelContext& context) {
        runLoop.setClock(from);
        desktop.setIdleReading(0s);
        desktop.setFrontmostSilently("org.example." + front, front);
        tracker->configure(context);
        tracker->start();
    }

    [[noreturn]] void recordUntilKilled(int pipe, int run, Date from) {
        runLoop.setClock(from);
        desktop.setIdleReading(0s);
        ModelContainer container({.file = store.file()});
        tracker->configure(container.mainContext());
        tracker->start();
        desktop.setFrontmostSilently("org.example.first", fmt::format("First {}", run));
        runLoop.playFor(60s);
        std::mt19937 random(seed + static_cast<unsigned>(run));
        for (int i = 0;; ++i) {
            const auto before = tracker->currentRecord();
            const std::string name = fmt::format("App {}-{}", run, i);
            desktop.bringToFront("org.example." + name, name);
            runLoop.playFor(Seconds{static_cast<double>(30 + random() % 200)});
            if (!before) continue;
            const std::string id = before->id().string() + "\n";
            if (::write(pipe, id.data(), id.size()) < 0) ::_exit(1);
        }
    }
};

TEST_F(KilledRunTest, AKillAtAnyMomentLosesNoClosedRecordAndTheNextStartClosesTheOneThatWasOpen) {
    store.close();
    std::mt19937 random(seed);
    Rows known;
    Date from = runLoop.now();
    for (int run = 0; run < runs || (known.size() <= enough && run < 10 * runs); ++run) {  // a busy machine needs more
        SCOPED_TRACE("run " + std::to_string(run));
        int ends[2];
        ASSERT_EQ(::pipe(ends), 0);
        from += 6h;
        const pid_t child = ::fork();
        if (child == 0) {
            ::close(ends[0]);
            recordUntilKilled(ends[1], run, from);
        }
        ::close(ends[1]);
        ::poll(nullptr, 0, static_cast<int>(random() % 12));
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        std::string reported;
        char buffer[4096];
        for (ssize_t got = 0; (got = ::read(ends[0], buffer, sizeof buffer)) > 0;)
            reported.append(buffer, static_cast<std::size_t>(got));
        ::close(ends[0]);

        if (run % 20 == 0) {
            Database database({.file = store.file()});
            database.query("PRAGMA integrity_check", {}, [](const Row& row) {
                EXPECT_EQ(row.text(0), "ok");
                return true;
            });
        }
        const Rows rows = recordRows(store.file());
        int open = 0;
        for (const auto& [id, row] : rows)
            open += isOpen(row) ? 1 : 0;
        ASSERT_LE(open, 1);
        for (const auto& [id, row] : known) {
            const auto found = rows.find(id);
            ASSERT_NE(found, rows.end()) << row;
            ASSERT_EQ(found->second, row);
        }
        std::istringstream ids(reported.substr(0, reported.rfind('\n') + 1));
        for (std::string id; std::getline(ids, id);) {
            ASSERT_TRUE(rows.contains(id)) << id;
            ASSERT_FALSE(isOpen(rows.at(id))) << id;
            known[id] = rows.at(id);  // what a kill left open may become a fragment, and go
        }
    }
    EXPECT_GT(known.size(), enough);

    store.reopen();
    runLoop.setClock(from + 6h);
    desktop.setIdleReading(0s);
    desktop.setFrontmostSilently("org.example.editor", "Editor");
    tracker->configure(store.context());
    tracker->start();
    runLoop.playFor(1s);
    int open = 0;
    for (const auto& [id, row] : recordRows(store.file()))
        open += isOpen(row) ? 1 : 0;
    EXPECT_EQ(open, 1);
    EXPECT_EQ(tracker->currentRecord()->appName(), "Editor");
}

TEST_F(KilledRunTest, ACrashAtAnyMomentLeavesTheDayRightToAMinuteHoweverLateTheNextStart) {
    store.close();
    constexpr std::array pauses{Seconds{3min}, Seconds{5h}, Seconds{63h}};
    Date from = runLoop.now();
    for (unsigned run = 0; run < runs; ++run) {
        SCOPED_TRACE("run " + std::to_string(run));
        from += 96h;
        std::mt19937 random(seed + run);
        std::vector<Date> switches;  // to App 0, App 1 ...
        const Date crash = from + Seconds{static_cast<double>(60 + random() % 9000)};
        for (Date next = from; next < crash; next += Seconds{static_cast<double>(30 + random() % 5000)})
            switches.push_back(next);
        inChild([&] {
            ModelContainer container({.file = store.file()});
            beginAt(from, "App 0", container.mainContext());
            for (std::size_t i = 1; i < switches.size(); ++i) {
                runLoop.playUntil(switches[i]);
                desktop.bringToFront(fmt::format("org.example.App {}", i), fmt::format("App {}", i));
            }
            runLoop.playUntil(crash);
        });
        const Date again = crash + pauses[run % pauses.size()];
        inChild([&] {
            ModelContainer container({.file = store.file()});
            beginAt(again, "Next", container.mainContext());
            runLoop.playFor(90s);
        });

        ModelContainer container({.file = store.file(), .allowsSave = false});
        const auto records = container.mainContext().fetch<ActivityRecord>(
            {.predicate = field(&ActivityRecord::startTime) >= from, .sort = {ascending(&ActivityRecord::startTime)}});
        ASSERT_GE(records.size(), switches.size());
        for (std::size_t i = 0; i < switches.size(); ++i) {
            const bool isLast = i + 1 == switches.size();
            const Date end = isLast ? crash : switches[i + 1];
            if (isLast && records.size() == switches.size()) {
                EXPECT_LE(end - switches[i], 71s) << "a fragment, for all that is known of it";
                break;
            }
            EXPECT_EQ(records[i]->appName(), fmt::format("App {}", i));
            EXPECT_LE(records[i]->startTime() - switches[i], 1s);
            EXPECT_LE(records[i]->endTime().value_or(again), end + 1s);
            EXPECT_GE(records[i]->endTime().value_or(again), end - (isLast ? 71s : 1s));
        }
        EXPECT_EQ(records.back()->appName(), "Next");
        EXPECT_LE(records.back()->startTime() - again, 1s);
    }
}

}  // namespace
}  // namespace quorvane
