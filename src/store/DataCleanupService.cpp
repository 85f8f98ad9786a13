#include "store/DataCleanupService.h"

namespace quorvane {

DataCleanupService::DataCleanupService(ModelContext& modelContext, platform::RunLoop& runLoop, ConsoleSink& console,
                                       LiveRecord liveRecord)
    : modelContext_(modelContext.weak()), runLoop_(runLoop), console_(console), liveRecord_(std::move(liveRecord)) {}

DataCleanupService::~DataCleanupService() {
    console_.line("DataCleanupService: deinit - 清理资源");
}

void DataCleanupService::performBackgroundCleanup() {
    if (isCleanupRunning_) return console_.line("DataCleanupService: 已有清理任务运行中，跳过本次触发");
    isCleanupRunning_ = true;
    runLoop_.post([weak = weak_.handle()] {
        if (auto* self = weak.get()) self->runInBackground();
    });
}

void DataCleanupService::runInBackground() {
    console_.line("DataCleanupService: 开始后台数据清理...");
    runToTheEnd(DataCleanupPasses::backgroundRun, runLoop_.now() - automaticCleanupLookback_);
    run(DataCleanupPasses::oldTrash);
    console_.line("DataCleanupService: 数据清理完成");
    isCleanupRunning_ = false;
}

void DataCleanupService::performSynchronousCleanup() {
    if (isCleanupRunning_) return console_.line("DataCleanupService: 已有清理任务运行中，跳过同步清理");
    isCleanupRunning_ = true;
    console_.line("DataCleanupService: 开始同步数据清理...");
    runToTheEnd(DataCleanupPasses::manualRun);
    console_.line("DataCleanupService: 同步数据清理完成");
    isCleanupRunning_ = false;
}

void DataCleanupService::endAllActiveRecords() {
    run(DataCleanupPasses::endingOfActiveRecords);
}

/// What one pass changes can make work for another: a record that goes leaves two others side by side.
void DataCleanupService::runToTheEnd(std::span<const DataCleanupPasses::Pass> passes, std::optional<Date> cutoff) {
    for (bool changed = true; changed;) {
        changed = false;
        for (const auto& pass : passes)
            changed = run(pass, cutoff) || changed;
    }
}

/// Runs the pass here, or later on the main thread when this is another one. Says whether it changed anything by now.
bool DataCleanupService::run(const DataCleanupPasses::Pass& pass, std::optional<Date> cutoff) {
    if (!runLoop_.isMainThread()) {
        runLoop_.post([&pass, cutoff, weak = weak_.handle()] {
            if (auto* self = weak.get()) self->run(pass, cutoff);
        });
        return false;
    }
    auto* context = modelContext_.get();
    if (context == nullptr) return false;
    if (!pass.title.empty()) console_.write(pass.title);
    try {
        return pass.run({.context = *context,
                         .console = console_,
                         .now = runLoop_.now(),
                         .cutoff = cutoff,
                         .live = liveRecord_ ? liveRecord_() : std::nullopt});
    } catch (const StoreError& error) {
        console_.line("{}{}", pass.failure, error.what());
        return false;
    }
}

}  // namespace quorvane
