#include "StoreGenerator.h"
#include "billing/BillingPack.h"
#include "billing/BillingReport.h"
#include "store/ModelContainer.h"

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <filesystem>

// What reports and their documents cost over a year of 365,000 records with 50 projects.
namespace quorvane::bench {
namespace {

const std::filesystem::path& yearStore() {
    static const auto file = [] {
        const char* chosen = std::getenv("QUORVANE_BENCH_DIR");
        const auto folder =
            chosen ? std::filesystem::path(chosen) : std::filesystem::temp_directory_path() / "quorvane-bench";
        std::filesystem::create_directories(folder);
        auto store = folder / "store-365000.sqlite";
        if (!std::filesystem::exists(store)) {
            generateStore(store.string() + ".new", {.records = 365'000});
            std::filesystem::rename(store.string() + ".new", store);
        }
        return store;
    }();
    return file;
}

BillingReport makeReport(ModelContext& context, BillingReportRangeKind kind) {
    const Calendar calendar("en_US", "Europe/Berlin");
    const Localization localization("en");
    return makeBillingReport(context, {.kind = kind}, {}, StorePlan{}.end, calendar, localization);
}

void report(benchmark::State& state, BillingReportRangeKind kind) {
    ModelContainer container({.file = yearStore()});
    std::size_t records = 0;
    for (auto _ : state)
        records = makeReport(container.mainContext(), kind).billable.size();
    state.counters["records"] = static_cast<double>(records);
}

void documents(benchmark::State& state) {
    ModelContainer container({.file = yearStore()});
    const auto report = makeReport(container.mainContext(), BillingReportRangeKind::quarter);
    const Localization localization("en");
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            BillingPack::makeMarkdownReport(report.rows, report.days, report.range, {}, report.now, localization));
        benchmark::DoNotOptimize(
            BillingPack::makeEmailBody(report.rows, report.range, std::string(BillingClientFilter::all), localization));
        benchmark::DoNotOptimize(BillingPack::makeSocialPost(report.rows, report.range, localization));
    }
    state.counters["rows"] = static_cast<double>(report.rows.size());
    state.counters["days"] = static_cast<double>(report.days.size());
}

BENCHMARK_CAPTURE(report, month, BillingReportRangeKind::month)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(report, quarter, BillingReportRangeKind::quarter)->Unit(benchmark::kMillisecond);
BENCHMARK(documents)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quorvane::bench

BENCHMARK_MAIN();
