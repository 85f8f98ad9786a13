#include "base/Calendar.h"
#include "diagnostics/ConsoleSink.h"
#include "l10n/Localization.h"
#include "platform/linux/loop/QtRunLoop.h"
#include "platform/simulated/InMemoryUserDefaults.h"
#include "shell/chart/MonthView.h"
#include "shell/chart/WeekView.h"
#include "store/ActivityRecord.h"
#include "store/ModelContainer.h"

#include <QApplication>
#include <QImage>
#include <algorithm>
#include <cstdlib>
#include <fmt/format.h>
#include <fstream>
#include <malloc.h>
#include <string>
#include <sys/resource.h>
#include <vector>

// How long a week or month of a long history takes from the step to the picture, and what memory it leaves:
// history_bench STORE. `bench/month-of-ten-years` calls it, beside the query in the sqlite3 shell.
namespace quorvane::bench {
namespace {

constexpr int runs = 7;
constexpr Date far = dateFromSecondsSince1970(0);  ///< no record is so old

class SilentConsole : public ConsoleSink {
public:
    void write(std::string_view) override {}
};

/// In KiB, of this process: what is its own, as Qt's pages may be shared.
double anonymousMemory() {
    std::ifstream file("/proc/self/smaps_rollup");
    double size = 0;
    for (std::string word; file >> word;)
        if (word == "Pss_Anon:" && file >> size) break;
    return size;
}

/// Of all threads, in milliseconds: what is left of the time where nobody else wants the cores.
double processorTime() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto in = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
    };
    return in(usage.ru_utime) + in(usage.ru_stime);
}

struct Scene {
    explicit Scene(const char* file) : container({.file = file, .allowsSave = false}) {
        for (QWidget* view : {static_cast<QWidget*>(&week), static_cast<QWidget*>(&month)})
            view->resize(image.size());
        activity.load();
        wait();
    }

    /// Until what is chosen has been read and every widget has followed.
    void wait() {
        while (activity.state() == LiveRecords::State::reading)
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
        runLoop.runPosted();
    }
    /// A step to the month or week of the date, up to its picture.
    double milliseconds(QWidget& view, TimelineViewMode mode, Date date) {
        activity.chart().setViewMode(mode);
        activity.chart().selectDate(far);  // where nothing is
        view.show();
        wait();
        view.render(&image);
        const double used = processorTime();
        const Seconds start = runLoop.uptime();
        activity.chart().selectDate(date);
        wait();
        view.render(&image);
        const Seconds taken = runLoop.uptime() - start;
        processor = std::min(processor, processorTime() - used);
        count = activity.records().size();
        memory = anonymousMemory();
        view.hide();
        return taken / 1ms;
    }

    platform::QtRunLoop runLoop;
    SilentConsole console;
    Localization localization{"en"};
    platform::InMemoryUserDefaults defaults;
    ModelContainer container;
    CategoryTagManager categories{defaults, console};
    MyActivityView activity{container, runLoop, categories, console};
    WeekView week{activity, localization, console};
    MonthView month{activity, localization, console};
    QImage image{1062, 776, QImage::Format_ARGB32_Premultiplied};
    std::size_t count = 0;
    double memory = 0;
    double processor = 1e9;  ///< of the cheapest step
};

void measure(Scene& scene, const char* name, QWidget& view, TimelineViewMode mode, Date date) {
    std::vector<double> taken;
    scene.processor = 1e9;
    for (int run = 0; run < runs; ++run)
        taken.push_back(scene.milliseconds(view, mode, date));
    std::ranges::sort(taken);
    const double there = scene.memory;
    scene.activity.chart().openDay(far);
    scene.wait();
    malloc_trim(0);  // as the application does
    fmt::print("{:<14} {:>6} records  best {:5.1f} ms, median {:5.1f}, worst {:5.1f}, of processor {:5.1f};  {:5.1f} "
               "MiB there, {:5.1f} left\n",
               name, scene.count, taken.front(), taken[runs / 2], taken.back(), scene.processor, there / 1024.0,
               anonymousMemory() / 1024.0);
}

void run(const char* file) {
    Scene scene(file);
    auto& context = scene.container.mainContext();
    const auto start = &ActivityRecord::startTime;
    const Date first = context.fetch<ActivityRecord>({.sort = {ascending(start)}, .limit = 1}).front()->startTime();
    for (QWidget* view : {static_cast<QWidget*>(&scene.week), static_cast<QWidget*>(&scene.month)})
        scene.milliseconds(*view, view == &scene.week ? TimelineViewMode::week : TimelineViewMode::month, first);
    scene.activity.chart().openDay(far);
    scene.wait();
    malloc_trim(0);
    const Date last = context.fetch<ActivityRecord>({.sort = {descending(start)}, .limit = 1}).front()->startTime();
    fmt::print("{:<14} {:.1f} MiB\n", "before", anonymousMemory() / 1024.0);
    const std::pair<const char*, Date> months[] = {
        {"first month", first + 35 * 24h}, {"month between", first + (last - first) / 2}, {"last month", last - 24h}};
    for (const auto& [name, date] : months)
        measure(scene, name, scene.month, TimelineViewMode::month, date);
    measure(scene, "week between", scene.week, TimelineViewMode::week, months[1].second);
}

}  // namespace
}  // namespace quorvane::bench

int main(int argc, char** argv) {
    if (argc != 2) {
        fmt::print(stderr, "usage: history_bench STORE\n");
        return 2;
    }
    mallopt(M_MMAP_THRESHOLD, 1 << 20);  // as the application has it
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    const QApplication application(argc, argv);
    quorvane::bench::run(argv[1]);
    return 0;
}
