#include "diagnostics/performance/PerformanceReportUploader.h"

#include "diagnostics/performance/PerformanceReportDelivery.h"
#include "diagnostics/performance/PerformanceReportGzip.h"
#include "diagnostics/performance/WholeRegularFile.h"

#include <fmt/format.h>
#include <stdexcept>
#include <utility>

namespace quorvane {
namespace {

using enum PerformanceReportSendOutcome;

/// The file's bytes; none if it can't be packed.
std::optional<std::string> packed(const PerformanceReport& report) {
    try {
        if (const auto json = performanceReportJson(report)) return PerformanceReportGzip::compress(*json);
    } catch (const std::runtime_error&) {  // a packer that fails is the same as numbers that can't be written
    }
    return std::nullopt;
}

}  // namespace

PerformanceReportUploader::PerformanceReportUploader(Parts parts)
    : parts_(std::move(parts)), spool_(parts_.spoolDirectory) {}

PerformanceReportUploader::~PerformanceReportUploader() {
    parts_.queue->stop();
}

void PerformanceReportUploader::submit(PerformanceReport report) {
    parts_.queue->post([this, report = std::move(report)] {
        keep(report);
        flush();
    });
}

void PerformanceReportUploader::flushPending() {
    parts_.queue->post([this] { flush(); });
}

void PerformanceReportUploader::discardPending() {
    parts_.queue->post([this] { spool_.discard(); });
}

void PerformanceReportUploader::keep(const PerformanceReport& report) {
    const auto bytes = packed(report);
    if (!bytes) {
        log("性能报告：编码失败 " + report.reportID, LogLevel::error);
        return;
    }
    if (const auto problem = spool_.store(report.reportID, *bytes))
        log(fmt::format("性能报告：落盘失败 {}：{}", report.reportID, *problem), LogLevel::warning);
}

void PerformanceReportUploader::flush() {
    flushesAgain_ = isFlushing_;
    if (isFlushing_) return;
    isFlushing_ = true;
    spool_.removeLeftovers();
    const auto files = spool_.pending();
    files_.assign(files.begin(), files.end());
    sendNext();
}

void PerformanceReportUploader::sendNext() {
    while (!files_.empty()) {
        auto bytes = wholeRegularFile(files_.front());
        if (!bytes) {
            PerformanceReportSpool::remove(files_.front());
            files_.pop_front();
            continue;
        }
        if (auto request = PerformanceReportDelivery::request(parts_.host, parts_.userAgent, std::move(*bytes))) {
            parts_.runLoop.post([weak = weak_.handle(), request = std::move(*request)] {
                if (auto* self = weak.get()) self->transmit(request);
            });
            return;
        }
        if (!settle(rejected)) return;
    }
    endFlush();
}

void PerformanceReportUploader::transmit(const platform::HttpRequest& request) {
    if (!client_) client_ = parts_.makeTransport();
    exchange_ = client_->send(request, [weak = weak_.handle()](const platform::HttpResult& result) {
        auto* const self = weak.get();
        if (self) self->parts_.queue->post([self, result] { self->noteResult(result); });
    });
}

void PerformanceReportUploader::noteResult(const platform::HttpResult& result) {
    auto outcome = retryLater;
    if (const auto* failure = std::get_if<platform::HttpFailure>(&result))
        log("性能报告：网络失败，稍后重试：" + failure->cause, LogLevel::warning);
    else
        outcome = PerformanceReportDelivery::outcome(std::get<platform::HttpResponse>(result).status);
    if (settle(outcome)) sendNext();
}

bool PerformanceReportUploader::settle(PerformanceReportSendOutcome outcome) {
    log(fmt::format("性能报告：{} 发送结果 {}", files_.front().filename().string(), rawValue(outcome)), LogLevel::info);
    if (outcome == retryLater) {
        endFlush();
        return false;
    }
    PerformanceReportSpool::remove(files_.front());
    files_.pop_front();
    return true;
}

void PerformanceReportUploader::endFlush() {
    files_.clear();
    isFlushing_ = false;
    if (std::exchange(flushesAgain_, false)) flush();
}

void PerformanceReportUploader::log(const std::string& message, LogLevel level) {
    parts_.logger.log(message, level, "PerfWatchdog");
}

}  // namespace quorvane
