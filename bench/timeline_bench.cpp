#include "diagnostics/ConsoleSink.h"
#include "platform/RunLoop.h"
#include "store/ModelContainer.h"
#include "timeline/DayTimelineChart.h"
#include "timeline/MonthTimeline.h"
#include "timeline/TimelineProcessing.h"
#include "timeline/WeekTimeline.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <filesystem>
#include <fmt/format.h>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

// What a day of the timeline costs, on the main thread and in the background, and what week and month cost on it.
namespace quorvane::bench {
namespace {

using Snapshots = std::vector<TimelineRecordSnapshot>;

constexpr Date midnight{Seconds{1772409600.0}};  // 2026-03-02T00:00:00Z
constexpr Date now = midnight + 7 * 24h;

const Calendar& calendar() {
    static const Calendar berlin("de_DE", "Europe/Berlin");
    return berlin;
}

/// Days of `count` records each: of one to three minutes, each beginning before the one before it ends, of 50
/// applications, one in four a page.
Snapshots makeDays(int days, std::int64_t count) {
    Snapshots records;
    for (std::int64_t i = 0; i < days * count; ++i) {
        const Date start = midnight - 1h + i * (24h / static_cast<double>(count));
        const auto app = i * 7 % 50;
        records.push_back({.id = Uuid::random(),
                           .startTime = start,
                           .endTime = start + 60s + i % 121 * 1s,
                           .bundleId = fmt::format("org.example.application{}", app),
                           .appName = fmt::format("Application {}", app),
                           .windowTitle = "Ångström & Söhne: quarterly figures, second draft",
                           .documentPath = "/home/anna/projects/harbour/figures/quarter-2.ods",
                           .category = "工作",
                           .tags = "client,harbour"});
        if (i % 4 == 0) records.back().url = fmt::format("https://docs{}.example.com/spreadsheets/d/1a2b3c", i % 30);
    }
    return records;
}

/// In the store's order, or newest first.
void snapshots(benchmark::State& state, bool isReversed) {
    auto day = makeDays(1, state.range(0));
    if (isReversed) std::reverse(day.begin(), day.end());
    std::size_t found = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto given = day;
        state.ResumeTiming();
        auto taken = TimelineProcessing::snapshotsOfDay(std::move(given), midnight + 12h, now, calendar());
        found = taken.size();
        state.PauseTiming();
        taken.clear();
        state.ResumeTiming();
    }
    state.counters["records"] = static_cast<double>(found);
}

void background(benchmark::State& state) {
    const auto day = makeDays(1, state.range(0));
    std::size_t blocks = 0;
    for (auto _ : state)
        blocks = TimelineProcessing::process(day, now, calendar()).size();
    state.counters["blocks"] = static_cast<double>(blocks);
}

void itemsAndLayout(benchmark::State& state) {
    const auto blocks = TimelineProcessing::process(makeDays(1, state.range(0)), now, calendar());
    for (auto _ : state) {
        state.PauseTiming();
        auto given = blocks;
        state.ResumeTiming();
        auto items = TimelineProcessing::makeItems(std::move(given));
        TimelineProcessing::layOut(items, HourLayout(TimelineProcessing::activityHours(items), 180));
        benchmark::DoNotOptimize(items);
        state.PauseTiming();
        items.clear();
        state.ResumeTiming();
    }
}

/// What a new zoom costs.
void layOutAgain(benchmark::State& state) {
    auto items =
        TimelineProcessing::makeItems(TimelineProcessing::process(makeDays(1, state.range(0)), now, calendar()));
    const HourLayout layout(TimelineProcessing::activityHours(items), 180);
    for (auto _ : state)
        TimelineProcessing::layOut(items, layout);
}

/// Records that all last the whole day: each in a lane of its own.
void placeWhereAllOverlap(benchmark::State& state) {
    auto day = makeDays(1, state.range(0));
    for (auto& record : day)
        record.endTime = record.startTime + 24h;
    for (auto _ : state)
        benchmark::DoNotOptimize(TimelineProcessing::placeSnapshots(day, now, calendar()));
}

/// Days of 1,000 records up to now, newest first: of half a minute to six minutes, so that one in six is an item.
Snapshots makeOverview(std::int64_t days) {
    Snapshots records = makeDays(static_cast<int>(days), 1000);
    const auto back = (now - midnight) - static_cast<double>(days) * 24h;
    for (std::size_t i = 0; i < records.size(); ++i) {
        records[i].startTime += back;
        records[i].endTime = records[i].startTime + 30s + static_cast<double>(i * 37 % 330) * 1s;
    }
    std::reverse(records.begin(), records.end());
    return records;
}

void week(benchmark::State& state) {
    const auto records = makeOverview(state.range(0));
    const auto monday = Calendar::mondayFirst(calendar());
    StreamConsole console(stderr);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            WeekTimeline::columns(midnight + 60h, {.records = records, .now = now}, console, monday));
}

void month(benchmark::State& state) {
    const auto records = makeOverview(state.range(0));
    const auto monday = Calendar::mondayFirst(calendar());
    StreamConsole console(stderr);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            MonthTimeline::grid(midnight + 60h, {.records = records, .now = now}, console, calendar(), monday));
}

/// A run loop whose worker runs when it is told to, so that it can be left out of a measurement.
class ManualRunLoop final : public platform::RunLoop {
public:
    [[nodiscard]] Date now() const override { return midnight + 23h; }
    [[nodiscard]] Seconds uptime() const override { return 0s; }
    [[nodiscard]] std::unique_ptr<platform::Timer> every(Seconds, std::function<void()>) override { return nullptr; }
    [[nodiscard]] std::unique_ptr<platform::WorkItem> after(Seconds, std::function<void()>) override { return nullptr; }
    void post(std::function<void()> work) override { posted_.push_back(std::move(work)); }
    void background(std::function<void()> work) override { waiting_.push_back(std::move(work)); }
    [[nodiscard]] bool isMainThread() const override { return true; }

    void runWorker() { run(waiting_); }
    void runPosted() { run(posted_); }

private:
    static void run(std::vector<std::function<void()>>& queue) {
        for (const auto& work : std::exchange(queue, {}))
            work();
    }
    std::vector<std::function<void()>> posted_;
    std::vector<std::function<void()>> waiting_;
};

/// The chart's own thread on a day of so many records: copies before the worker's part, caches after it.
void chartsMainThread(benchmark::State& state) {
    const auto file = std::filesystem::temp_directory_path() / "quorvane-timeline-bench.sqlite";
    std::filesystem::remove(file);
    ModelContainer container({.file = file});
    StreamConsole console(stderr);
    ManualRunLoop runLoop;
    DayTimelineChart chart(container.mainContext(), runLoop, console);
    auto records = makeDays(1, state.range(0));
    for (auto& record : records) {
        record.startTime += 1h;
        record.endTime = *record.endTime + 1h;
    }
    chart.appear();
    for (auto _ : state) {
        chart.setRecords(records, {midnight - 24h, midnight + 48h});
        state.PauseTiming();
        runLoop.runWorker();
        state.ResumeTiming();
        runLoop.runPosted();
    }
    state.counters["blocks"] = static_cast<double>(chart.processedRecords().size());
    std::filesystem::remove(file);
}

void hourForY(benchmark::State& state) {
    const HourLayout layout({8, 9, 10, 11, 13, 14, 15, 16, 17}, 180);
    double y = 0;
    for (auto _ : state) {
        y = y > 1800 ? 0 : y + 0.7;
        benchmark::DoNotOptimize(layout.hourForY(y));
    }
}

BENCHMARK_CAPTURE(snapshots, sorted, false)->Arg(5000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(snapshots, reversed, true)->Arg(5000)->Unit(benchmark::kMillisecond);
BENCHMARK(itemsAndLayout)->Arg(5000)->Unit(benchmark::kMillisecond);
BENCHMARK(layOutAgain)->Arg(5000)->Unit(benchmark::kMillisecond);
BENCHMARK(background)->Arg(500)->Arg(5000)->Unit(benchmark::kMillisecond);
BENCHMARK(placeWhereAllOverlap)->Arg(500)->Arg(1000)->Arg(2000)->Arg(5000)->Unit(benchmark::kMillisecond);
BENCHMARK(week)->Arg(7)->Arg(365)->Unit(benchmark::kMillisecond);
BENCHMARK(month)->Arg(7)->Arg(365)->Unit(benchmark::kMillisecond);
BENCHMARK(chartsMainThread)->Arg(5000)->Unit(benchmark::kMillisecond);
BENCHMARK(hourForY);

}  // namespace
}  // namespace quorvane::bench

BENCHMARK_MAIN();
