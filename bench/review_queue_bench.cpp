#include "l10n/Localization.h"
#include "platform/Clock.h"
#include "shell/billing/BillingReviewQueueSheet.h"
#include "shell/look/Motion.h"
#include "shell/look/Sheet.h"
#include "shell/look/Theme.h"
#include "store/ModelContainer.h"

#include <QApplication>
#include <QImage>
#include <QListView>
#include <QScrollBar>
#include <QStringListModel>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <fmt/format.h>
#include <memory>
#include <vector>

// What the review queue costs with 5,000 records: opening it, a frame while it scrolls, a decision about all; beside a
// plain list of the same texts.
namespace quorvane::bench {
namespace {

constexpr Date midnight{Seconds{1772409600.0}};  // 2026-03-02T00:00:00Z
constexpr int recordCount = 5000;
constexpr QSize windowSize{1280, 832};

class Scene {
public:
    Scene() {
        auto& context = container.mainContext();
        const auto project = std::make_shared<Project>();
        project->name = "Harbour rebrand";
        context.insert(project);
        for (int i = 0; i < recordCount; ++i) {
            const auto record = std::make_shared<ActivityRecord>(
                ActivityRecord::Values{.startTime = midnight + i * 60s,
                                       .endTime = midnight + i * 60s + 50s,
                                       .appName = "Firefox",
                                       .windowTitle = fmt::format("Quarterly figures, draft {}", i)});
            record->project = project;
            record->confidence = 0.6;
            context.insert(record);
            records.push_back(record);
        }
        context.save();
        projects = {project};
        window.resize(windowSize);
        window.show();
        QApplication::processEvents();
    }
    Sheet& open() {
        return BillingReviewQueueSheet::open(
            window, std::make_unique<BillingReviewQueueView>(container.mainContext(), records, projects, localization),
            localization);
    }
    void paint() { window.render(&image); }

    QTemporaryDir folder;
    ModelContainer container{ModelConfiguration{.file = folder.filePath("store.sqlite").toStdString()}};
    Localization localization{"en"};
    std::vector<std::shared_ptr<ActivityRecord>> records;
    std::vector<std::shared_ptr<Project>> projects;
    QWidget window;
    QImage image{windowSize, QImage::Format_ARGB32_Premultiplied};
};

std::unique_ptr<Scene> madeScene;  // dies with the application

Scene& scene() {
    if (!madeScene) madeScene = std::make_unique<Scene>();
    return *madeScene;
}

void closeAll(Sheet& sheet) {
    sheet.close();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();
}

void scroll(benchmark::State& state, QAbstractScrollArea& area, QWidget& painted, QImage& image) {
    auto& bar = *area.verticalScrollBar();
    int step = 40;
    for (auto _ : state) {
        if (bar.value() + step > bar.maximum() || bar.value() + step < 0) step = -step;
        bar.setValue(bar.value() + step);
        painted.render(&image);
    }
}

void opening(benchmark::State& state) {
    for (auto _ : state) {
        Sheet& sheet = scene().open();
        scene().paint();
        state.PauseTiming();
        closeAll(sheet);
        state.ResumeTiming();
    }
}

void scrolling(benchmark::State& state) {
    Sheet& sheet = scene().open();
    auto* const list = sheet.findChild<QAbstractItemView*>();
    scroll(state, *list, *list->viewport(), scene().image);
    closeAll(sheet);
}

/// The same titles in the toolkit's own list, a line each.
void scrollingPlainList(benchmark::State& state) {
    scene();
    QStringList texts;
    for (int i = 0; i < recordCount; ++i)
        texts.append(QStringLiteral("Quarterly figures, draft %1").arg(i));
    QStringListModel model(texts);
    QListView list;
    list.setModel(&model);
    list.setUniformItemSizes(true);
    list.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    list.resize(940, 520);
    list.show();
    QApplication::processEvents();
    scroll(state, list, *list.viewport(), scene().image);
}

void decidingAboutAll(benchmark::State& state) {
    BillingReviewQueueView queue(scene().container.mainContext(), scene().records, scene().projects,
                                 scene().localization);
    for (auto _ : state) {
        queue.markAllBillable();
        state.PauseTiming();
        queue.excludeAll();
        state.ResumeTiming();
    }
}

BENCHMARK(opening)->Unit(benchmark::kMillisecond);
BENCHMARK(scrolling)->Unit(benchmark::kMillisecond);
BENCHMARK(scrollingPlainList)->Unit(benchmark::kMillisecond);
BENCHMARK(decidingAboutAll)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quorvane::bench

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    setenv("TZ", "UTC", 1);
    QApplication application(argc, argv);
    quorvane::applyTheme(quorvane::Theme::light());
    quorvane::Motion::setAllowed(false);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    quorvane::bench::madeScene.reset();
    return 0;
}
