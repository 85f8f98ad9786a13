#include "store/DataCleanupService.h"

namespace quorvane {

DataCleanupService::DataCleanupService(ModelContext& modelContext, platform::RunLoop& runLoop, ConsoleSink& console)
    : modelContext_(modelContext.weak()), runLoop_(runLoop), console_(console) {}

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
    const Date cutoff = runLoop_.now() - automaticCleanupLookback_;
    for (const auto& pass : DataCleanupPasses::manualRun)
        run(pass, cutoff);
    run(DataCleanupPasses::smartMerge, cutoff);
    console_.line("DataCleanupService: 数据清理完成");
    isCleanupRunning_ = false;
}

void DataCleanupService::performSynchronousCleanup() {
    if (isCleanupRunning_) return console_.line("DataCleanupService: 已有清理任务运行中，跳过同步清理");
    isCleanupRunning_ = true;
    console_.line("DataCleanupService: 开始同步数据清理...");
    for (const auto& pass : DataCleanupPasses::manualRun)
        run(pass);
    console_.line("DataCleanupService: 同步数据清理完成");
    isCleanupRunning_ = false;
}

void DataCleanupService::endAllActiveRecords() {
    run(DataCleanupPasses::endingOfActiveRecords);
}

/// Runs the pass here, or later on the main thread when this is another one.
void DataCleanupService::run(const DataCleanupPasses::Pass& pass, std::optional<Date> cutoff) {
    if (!runLoop_.isMainThread()) {
        runLoop_.post([&pass, cutoff, weak = weak_.handle()] {
            if (auto* self = weak.get()) self->run(pass, cutoff);
        });
        return;
    }
    auto* context = modelContext_.get();
    if (context == nullptr) return;
    console_.write(pass.title);
    try {
        pass.run({.context = *context, .console = console_, .now = runLoop_.now(), .cutoff = cutoff});
    } catch (const StoreError& error) {
        console_.line("{}{}", pass.failure, error.what());
    }
}

}  // namespace quorvane
