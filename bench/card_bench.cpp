#include "shell/cards/ShareImageGenerator.h"

#include <QGuiApplication>
#include <benchmark/benchmark.h>
#include <fmt/format.h>

// What a share card costs in each style, with a full day, and what it costs to fill so many pixels plainly.
namespace quorvane::bench {
namespace {

constexpr int applicationCount = 12;
constexpr Date day{Seconds{1773316800.0}};  // 2026-03-12T12:00:00Z

ShareImageConfig fullDay(CardStyle style) {
    ShareImageChoice choice{.style = style,
                            .message = "Your focus today would make a Swiss watchmaker look distracted.",
                            .reason = "You coded with an editor for 2.7 hours today",
                            .totalHours = 9.5,
                            .date = day};
    for (int i = 0; i < applicationCount; ++i)
        choice.appStats.push_back({.id = Uuid({static_cast<std::uint8_t>(i + 1)}),
                                   .appName = fmt::format("Application {}", i),
                                   .hours = 2.0 / (i + 1),
                                   .percentage = 20.0 / (i + 1)});
    return shareImageConfig(choice);
}

void card(benchmark::State& state) {
    const auto style = static_cast<CardStyle>(state.range(0));
    state.SetLabel(std::string(rawValue(style)));
    const ShareImageConfig config = fullDay(style);
    const Localization localization("en");
    const ShareImageGenerator generator(localization, "https://www.example.org");
    for (auto _ : state)
        benchmark::DoNotOptimize(generator.generateShareImage(config));
}
BENCHMARK(card)->DenseRange(0, static_cast<int>(RawValues<CardStyle>::table.size()) - 1)->Unit(benchmark::kMillisecond);

void plainFill(benchmark::State& state) {
    for (auto _ : state) {
        ShareImage image{.width = 600, .height = 900, .pixels = std::vector<std::uint32_t>(600 * 900, 0xFFFFFFFF)};
        benchmark::DoNotOptimize(image);
    }
}
BENCHMARK(plainFill)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quorvane::bench

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
