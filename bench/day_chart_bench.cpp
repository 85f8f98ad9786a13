#include "l10n/Localization.h"
#include "platform/Clock.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "platform/simulated/SimulatedSession.h"
#include "shell/chart/DayChartParts.h"
#include "shell/chart/DayChartView.h"
#include "shell/look/Theme.h"
#include "store/ModelContainer.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QScrollBar>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <fmt/format.h>
#include <memory>
#include <vector>

// What a frame of the day chart costs with 2,000 blocks at 510x760, and what the same rectangles cost painted plainly.
namespace quorvane::bench {
namespace {

constexpr Date midnight{Seconds{1772409600.0}};  // 2026-03-02T00:00:00Z
constexpr int blockCount = 2000;
constexpr QSize frameSize{510 + DayChartView::besideChart, 760};

class SilentConsole : public ConsoleSink {
public:
    void write(std::string_view) override {}
};

/// A chart of a day of `blockCount` records of a minute, of 50 applications, each beginning as another is there.
class Scene {
public:
    Scene() {
        std::vector<TimelineRecordSnapshot> records;
        records.reserve(blockCount);
        for (int i = 0; i < blockCount; ++i) {
            const Date start = midnight + i * (24h / static_cast<double>(blockCount));
            records.push_back({.id = Uuid::random(),
                               .startTime = start,
                               .endTime = start + 61s,
                               .bundleId = fmt::format("org.example.application{}", i * 7 % 50),
                               .appName = fmt::format("Application {}", i * 7 % 50),
                               .windowTitle = "Quarterly figures, second draft"});
        }
        chart.setRecords(records, {midnight, midnight + 24h});
        chart.appear();
        runLoop.runPosted();
        view.resize(frameSize);
        view.show();
        QApplication::processEvents();
    }
    void paint() { view.viewport()->render(&image, {}, {}, QWidget::DrawChildren); }

    QTemporaryDir folder;
    platform::SimulatedRunLoop runLoop{midnight + 12h};
    platform::ClockOverride clock{[this] { return runLoop.now(); }};
    SilentConsole console;
    ModelContainer container{ModelConfiguration{.file = folder.filePath("store.sqlite").toStdString()}};
    Localization localization{"en"};
    DayTimelineChart chart{container.mainContext(), runLoop, console};
    platform::SimulatedApplicationIcons icons;
    DayChartView view{chart, runLoop, icons, localization};
    QImage image{frameSize, QImage::Format_ARGB32_Premultiplied};
};

std::unique_ptr<Scene> madeScene;  // dies with the application

Scene& scene() {
    if (!madeScene) madeScene = std::make_unique<Scene>();
    return *madeScene;
}

void coldFrame(benchmark::State& state) {
    scene().view.verticalScrollBar()->setValue(600);
    for (auto _ : state) {
        scene().view.parts().tiles.clear();
        scene().paint();
    }
    state.counters["blocks"] = static_cast<double>(scene().chart.processedRecords().size());
}

void warmFrame(benchmark::State& state) {
    auto* scrollBar = scene().view.verticalScrollBar();
    scrollBar->setValue(600);
    int step = 3;
    for (auto _ : state) {
        if (scrollBar->value() + step > scrollBar->maximum() || scrollBar->value() + step < 0) step = -step;
        scrollBar->setValue(scrollBar->value() + step);
        scene().paint();
    }
}

/// The same blocks without text, edges and cache.
void plainFrame(benchmark::State& state) {
    const auto& blocks = scene().view.parts().scene.blocks;
    const QRectF shown(0, 600, frameSize.width(), frameSize.height());
    for (auto _ : state) {
        QPainter painter(&scene().image);
        painter.translate(0, -shown.top());
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        for (const DayChartBlock& block : blocks) {
            if (!block.frame.intersects(shown)) continue;
            painter.setBrush(block.color);
            painter.drawRoundedRect(block.frame, 4, 4);
        }
    }
}

/// What the chart does after a change that leaves everything as it was.
void unchanged(benchmark::State& state) {
    for (auto _ : state)
        scene().view.parts().refresh();
}

BENCHMARK(coldFrame)->Unit(benchmark::kMillisecond);
BENCHMARK(warmFrame)->Unit(benchmark::kMillisecond);
BENCHMARK(plainFrame)->Unit(benchmark::kMillisecond);
BENCHMARK(unchanged)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quorvane::bench

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    setenv("TZ", "UTC", 1);
    QApplication application(argc, argv);
    quorvane::applyTheme(quorvane::Theme::light());
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    quorvane::bench::madeScene.reset();
    return 0;
}
