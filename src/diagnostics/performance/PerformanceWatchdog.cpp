#include "diagnostics/performance/PerformanceWatchdog.h"

#include "base/Iso8601.h"
#include "base/TestHost.h"
#include "base/Text.h"
#include "base/Uuid.h"
#include "diagnostics/performance/PerformanceReportModules.h"
#include "diagnostics/performance/PerformanceReportRedaction.h"

#include <cmath>
#include <cstdint>
#include <fmt/format.h>
#include <utility>

namespace quorvane {
namespace {

constexpr const char* module = "PerfWatchdog";

double toTenth(double number) {
    return std::round(number * 10) / 10;
}

/// Towards zero. A clock that was set back by nearly an interval makes percentages beyond what an int holds.
std::int64_t whole(double number) {
    return static_cast<std::int64_t>(number);
}

}  // namespace

PerformanceWatchdog::PerformanceWatchdog(Parts parts)
    : parts_(std::move(parts)), preferences_(parts_.defaults), stackCapture_(parts_.sampler, parts_.logger),
      isEnabled_(preferences_.isEnabled()) {}

PerformanceWatchdog::~PerformanceWatchdog() {
    stop_.request_stop();
    // Each may hand work to the other: both end before anything that they use goes.
    parts_.queue->stop();
    parts_.captureQueue->stop();
}

void PerformanceWatchdog::start() {
    if (isUnderTestHost()) return;
    parts_.queue->post([this] { startTimer(); });
    if (isEnabled_)
        parts_.uploader.flushPending();
    else
        parts_.uploader.discardPending();
}

void PerformanceWatchdog::setEnabled(bool isEnabled) {
    isEnabled_ = isEnabled;
    preferences_.setEnabled(isEnabled);
    parts_.logger.log(isEnabled ? "性能报告开关：开启" : "性能报告开关：关闭", LogLevel::info, module);
    if (isEnabled)
        parts_.queue->post([this] { endRest(); });  // samples have to end a streak that was held meanwhile
    else
        parts_.uploader.discardPending();
}

void PerformanceWatchdog::startTimer() {
    if (detector_) return;
    detector_ = std::make_unique<CPUSustainedLoadDetector>(parts_.policy, parts_.runLoop.now());
    beginTicking();
}

void PerformanceWatchdog::beginTicking() {
    parts_.queue->every(parts_.policy.sampleInterval, leeway, [this] { tick(); });
}

void PerformanceWatchdog::tick() {
    const auto now = parts_.runLoop.now();
    const auto percent = clock_.sample(now, parts_.usage.cpuSeconds());
    if (!percent || isCapturing_) return;
    const bool isEnabled = isEnabled_;
    if (isEnabled) {
        if (const auto trigger = detector_->observe(*percent, now)) {
            beginCapture(*trigger);
            return;
        }
    }
    const bool awaitsMore = isEnabled && detector_->hasStreak();
    if (*percent <= quietPercent && !awaitsMore) rest();
}

/// Until the alarm there is nothing that a tick could see. A machine without alarms goes on ticking.
void PerformanceWatchdog::rest() {
    alarm_ = parts_.usage.onceUsed(wakingSeconds, [this] { parts_.queue->post([this] { endRest(); }); });
    if (alarm_) parts_.queue->endTimer();
}

/// The quiet time is not averaged with the load that has ended it: the clock begins anew, at once.
void PerformanceWatchdog::endRest() {
    if (!alarm_) return;
    alarm_.reset();
    clock_ = {};
    tick();
    beginTicking();
}

void PerformanceWatchdog::beginCapture(const Trigger& trigger) {
    isCapturing_ = true;
    parts_.logger.log(fmt::format("性能报告：CPU 持续 {} 秒超过 {}%（峰值 {}%），开始抓栈",
                                  whole(trigger.sustainedSeconds.count()), whole(parts_.policy.thresholdPercent),
                                  whole(trigger.peakPercent)),
                      LogLevel::warning, module);
    parts_.captureQueue->post([this, trigger] { capture(trigger); });
}

void PerformanceWatchdog::capture(const Trigger& trigger) {
    auto stacks = stackCapture_.capture(captureSeconds, stop_.get_token());
    if (!stacks) {
        endCapture();
        return;
    }
    stacks =
        PerformanceReportRedaction::redact(PerformanceReportModules::withoutFolders(*stacks), parts_.homeDirectory);
    stacks = PerformanceReportRedaction::truncate(*stacks, PerformanceReportEnvironment::mostCallStackBytes);
    parts_.runLoop.post([weak = weak_.handle(), trigger, stacks = std::move(*stacks)]() mutable {
        if (auto* self = weak.get()) self->report(trigger, std::move(stacks));
    });
}

void PerformanceWatchdog::report(const Trigger& trigger, std::string stacks) {
    // The user may have thought better of it meanwhile.
    if (isEnabled_) parts_.uploader.submit(makeReport(trigger, std::move(stacks)));
    endCapture();
}

PerformanceReport PerformanceWatchdog::makeReport(const Trigger& trigger, std::string stacks) {
    namespace Environment = PerformanceReportEnvironment;
    const auto surroundings = parts_.surroundings();
    return {.appID = std::string(Environment::applicationID),
            .reportID = text::lowercased(Uuid::random().string()),
            .installID = preferences_.installId(),
            .appVersion = Environment::appVersion(parts_.application),
            .build = Environment::build(parts_.application),
            .osVersion = parts_.system.version,
            .arch = parts_.system.architecture,
            .locale = Environment::locale(surroundings),
            .capturedAt = iso8601Seconds(parts_.runLoop.now()),
            .activeSurface = Environment::activeSurface(surroundings),
            .thresholdPercent = parts_.policy.thresholdPercent,
            .sustainedSeconds = toTenth(trigger.sustainedSeconds.count()),
            .peakCPUPercent = toTenth(trigger.peakPercent),
            .averageCPUPercent = toTenth(trigger.averagePercent),
            .sampleDurationSeconds = captureSeconds,
            .callStacksFormat = parts_.sampler.tool().format,
            .callStacks = std::move(stacks)};
}

/// From any thread. What the capture itself has burnt is never measured: the next tick only seeds the new clock.
void PerformanceWatchdog::endCapture() {
    parts_.queue->post([this] {
        isCapturing_ = false;
        clock_ = {};
    });
}

}  // namespace quorvane
