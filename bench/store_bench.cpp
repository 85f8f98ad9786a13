#include "StoreGenerator.h"
#include "capture/FrontWindowTitle.h"
#include "platform/Clock.h"
#include "platform/simulated/SimulatedDesktop.h"
#include "store/ActivityRecord.h"
#include "store/DataCleanupService.h"
#include "store/ModelContainer.h"
#include "store/OverlapDetectionService.h"
#include "tracking/ActivityTracker.h"

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <filesystem>
#include <fmt/format.h>

// What opening, ticking and saving cost, beside the size of the history. Stores are made once in the folder that
// QUORVANE_BENCH_DIR names (default: the temporary folder) and kept for the next run.
namespace quorvane::bench {
namespace {

class SilentConsole : public ConsoleSink {
public:
    void write(std::string_view) override {}
};

std::filesystem::path benchFolder() {
    const char* chosen = std::getenv("QUORVANE_BENCH_DIR");
    return chosen ? std::filesystem::path(chosen) : std::filesystem::temp_directory_path() / "quorvane-bench";
}

std::filesystem::path storeWith(std::int64_t records) {
    std::filesystem::create_directories(benchFolder());
    auto file = benchFolder() / fmt::format("store-{}.sqlite", records);
    if (!std::filesystem::exists(file)) {
        const auto unfinished = file.string() + ".new";
        std::filesystem::remove(unfinished);
        if (records == 0)
            Database({.file = unfinished});
        else
            generateStore(unfinished, {.records = records});
        std::filesystem::rename(unfinished, file);
    }
    return file;
}

/// A user at work on a simulated desktop, an hour after the newest record of the store.
struct Scene {
    explicit Scene(ModelContext& context) {
        desktop.setFrontmostSilently("org.example.editor", "Editor");
        desktop.setWindowTitle("chapter one - Editor");
        desktop.setIdleReading(0s);
        tracker.configure(context);
    }

    SilentConsole console;
    platform::SimulatedRunLoop runLoop{StorePlan{}.end + 1h};
    platform::ClockOverride clock{[this] { return runLoop.now(); }};
    platform::SimulatedDesktop desktop{runLoop};
    FrontWindowTitle windowInfo{desktop.foreground()};
    KeyboardMonitor keyboard{runLoop, desktop.keys(), desktop.settingsPanes(), console};
    MouseMonitor mouse{runLoop, desktop.pointer(), console};
    ActivityTracker tracker{runLoop, desktop, keyboard, mouse, {.windowInfo = windowInfo}, console};
};

void openStore(benchmark::State& state) {
    const auto file = storeWith(state.range(0));
    for (auto _ : state) {
        ModelContainer container({.file = file});
        benchmark::DoNotOptimize(&container);
    }
}

/// Opening and first tick, with the record that it opens; the check of all records at the hand-over is left out.
void openAndFirstTick(benchmark::State& state) {
    const auto file = storeWith(state.range(0));
    for (auto _ : state) {
        ModelContainer container({.file = file});
        state.PauseTiming();
        auto scene = std::make_unique<Scene>(container.mainContext());
        scene->runLoop.runPosted();
        state.ResumeTiming();
        scene->tracker.tick();
        state.PauseTiming();
        container.mainContext().remove(scene->tracker.currentRecord());
        container.mainContext().save();
        scene.reset();
        state.ResumeTiming();
    }
}

void openRecord(benchmark::State& state) {
    ModelContainer container({.file = storeWith(state.range(0))});
    auto& context = container.mainContext();
    for (auto _ : state) {
        const auto record = std::make_shared<ActivityRecord>(ActivityRecord::Values{
            .appBundleId = "org.example.editor", .appName = "Editor", .windowTitle = "chapter one"});
        context.insert(record);
        context.save();
        state.PauseTiming();
        context.remove(record);
        context.save();
        state.ResumeTiming();
    }
}

/// The save that keeps an open record alive once a minute.
void heartbeat(benchmark::State& state) {
    ModelContainer container({.file = storeWith(state.range(0))});
    auto& context = container.mainContext();
    const auto record = std::make_shared<ActivityRecord>();
    context.insert(record);
    context.save();
    for (auto _ : state) {
        record->updatedAt = record->updatedAt() + 60s;
        context.save();
    }
    context.remove(record);
    context.save();
}

void overlapQuestion(benchmark::State& state) {
    ModelContainer container({.file = storeWith(state.range(0))});
    SilentConsole console;
    platform::SimulatedRunLoop runLoop{StorePlan{}.end + 1h};
    OverlapDetectionService service(container.mainContext(), runLoop, console);
    for (auto _ : state)
        benchmark::DoNotOptimize(service.hasOverlap(runLoop.now() - 10s, runLoop.now()));
}

/// The clean-up of every five minutes, on a history in which there is nothing left to clean.
void backgroundCleanup(benchmark::State& state) {
    ModelContainer container({.file = storeWith(state.range(0))});
    SilentConsole console;
    platform::SimulatedRunLoop runLoop{StorePlan{}.end + 1h};
    const platform::ClockOverride clock([&] { return runLoop.now(); });
    DataCleanupService service(container.mainContext(), runLoop, console);
    const auto run = [&] {
        service.performBackgroundCleanup();
        runLoop.runPosted();
    };
    run();
    for (auto _ : state)
        run();
}

/// An hour of simulated work with a switch of applications each minute: what the tracker itself costs.
void trackedHour(benchmark::State& state) {
    ModelContainer container({.file = storeWith(state.range(0))});
    for (auto _ : state) {
        Scene scene(container.mainContext());
        scene.runLoop.runPosted();
        scene.tracker.start();
        for (int minute = 0; minute < 60; ++minute) {
            scene.desktop.bringToFront(minute % 2 ? "org.example.mail" : "org.example.editor",
                                       minute % 2 ? "Mail" : "Editor");
            scene.runLoop.playFor(60s);
        }
        scene.tracker.stop();
        scene.runLoop.runPosted();
        state.PauseTiming();
        auto& context = container.mainContext();
        for (const auto& record :
             context.fetch<ActivityRecord>({.predicate = field(&ActivityRecord::startTime) > StorePlan{}.end + 30min}))
            context.remove(record);
        context.save();
        state.ResumeTiming();
    }
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    for (const std::int64_t records : {0, 10'000, 365'000})
        benchmark->Arg(records);
    // Ten busy years take a gigabyte of disk: only on request.
    if (std::getenv("QUORVANE_BENCH_LARGE")) benchmark->Arg(3'650'000);
    benchmark->Unit(benchmark::kMicrosecond);
}

BENCHMARK(openStore)->Apply(sizes);
BENCHMARK(openAndFirstTick)->Apply(sizes)->Iterations(20);
BENCHMARK(openRecord)->Apply(sizes);
BENCHMARK(heartbeat)->Apply(sizes);
BENCHMARK(overlapQuestion)->Apply(sizes);
BENCHMARK(backgroundCleanup)->Apply(sizes)->Unit(benchmark::kMillisecond);
BENCHMARK(trackedHour)->Apply(sizes)->Iterations(3)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quorvane::bench

BENCHMARK_MAIN();
