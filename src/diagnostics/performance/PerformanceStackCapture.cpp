#include "diagnostics/performance/PerformanceStackCapture.h"

#include "base/Text.h"
#include "base/Uuid.h"
#include "diagnostics/performance/WholeRegularFile.h"

#include <fmt/format.h>
#include <system_error>
#include <utility>
#include <variant>

namespace quorvane {
namespace {

/// False if it is not done within the time, or if it is to stop.
bool waitFor(platform::StackSampling& sampling, Seconds patience, const std::stop_token& stop) {
    for (Seconds waited{}; waited < patience; waited += PerformanceStackCapture::pollInterval) {
        if (stop.stop_requested()) return false;
        if (sampling.hasEndedWithin(PerformanceStackCapture::pollInterval)) return true;
    }
    return false;
}

}  // namespace

std::filesystem::path PerformanceStackCapture::temporaryFolder() {
    std::error_code error;
    auto folder = std::filesystem::temp_directory_path(error);
    return error ? std::filesystem::path("/tmp") : folder;  // TMPDIR may name what is not there
}

PerformanceStackCapture::PerformanceStackCapture(platform::StackSampler& sampler, AppLogger& logger,
                                                 std::filesystem::path folder)
    : sampler_(sampler), logger_(logger), folder_(std::move(folder)) {}

std::optional<std::string> PerformanceStackCapture::capture(int seconds, const std::stop_token& stop) {
    if (!sampler_.isInstalled()) {
        warn(fmt::format("找不到 {}，跳过抓栈", sampler_.tool().path));
        return std::nullopt;
    }
    const auto output = folder_ / fmt::format("quorvane-perf-{}.txt", Uuid::random().string());
    auto stacks = sample(seconds, output, stop);
    std::error_code ignored;
    std::filesystem::remove(output, ignored);
    return stacks;
}

std::optional<std::string> PerformanceStackCapture::sample(int seconds, const std::filesystem::path& output,
                                                           const std::stop_token& stop) {
    const auto& name = sampler_.tool().name;
    const auto started = sampler_.start(seconds, output);
    if (const auto* problem = std::get_if<std::string>(&started)) {
        warn(fmt::format("启动 {} 失败：{}", name, *problem));
        return std::nullopt;
    }
    auto& sampling = *std::get<std::unique_ptr<platform::StackSampling>>(started);
    if (!waitFor(sampling, Seconds(seconds) + patience, stop)) {
        sampling.terminate();
        if (!stop.stop_requested()) warn(fmt::format("{} 超时未结束，已终止", name));
        return std::nullopt;
    }
    if (sampling.exitStatus() == 0) {
        auto text = wholeRegularFile(output);
        if (text && !text->empty() && text::validUtf8(*text) == *text) return text;
    }
    warn(fmt::format("{} 退出码 {}，未拿到调用栈（沙盒构建下属预期）", name, sampling.exitStatus()));
    return std::nullopt;
}

void PerformanceStackCapture::warn(const std::string& message) {
    logger_.log("性能报告：" + message, LogLevel::warning, "PerfWatchdog");
}

}  // namespace quorvane
