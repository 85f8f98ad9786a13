#pragma once

#include "base/Weak.h"
#include "diagnostics/AppLogger.h"
#include "diagnostics/performance/PerformanceReport.h"
#include "diagnostics/performance/PerformanceReportSendOutcome.h"
#include "diagnostics/performance/PerformanceReportSpool.h"
#include "platform/HttpClient.h"
#include "platform/RunLoop.h"
#include "platform/SerialQueue.h"

#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace quorvane {

/// Packs reports, keeps them on disk and sends them, one at a time and the oldest first. There is no timer: what could
/// not be sent waits for the next flush. Every failure is a line in the log. Without a host every report is rejected at
/// once, so that nothing waits. Operations are from any thread and take effect one after another on its queue; it is
/// made and destroyed on the main thread, where requests begin and end.
class PerformanceReportUploader {
public:
    struct Parts {
        platform::RunLoop& runLoop;
        AppLogger& logger;
        std::unique_ptr<platform::SerialQueue> queue;
        std::function<std::unique_ptr<platform::HttpClient>()> makeTransport;  ///< called before the first request
        std::optional<std::filesystem::path> spoolDirectory;
        std::string host;       ///< `Deployment::telemetryHost`
        std::string userAgent;  ///< `PerformanceReportEnvironment::userAgent`
    };
    explicit PerformanceReportUploader(Parts parts);
    PerformanceReportUploader(const PerformanceReportUploader&) = delete;
    PerformanceReportUploader& operator=(const PerformanceReportUploader&) = delete;
    ~PerformanceReportUploader();  ///< What is being sent stays on disk.

    /// Keeps the report and flushes.
    void submit(PerformanceReport report);

    /// Sends what waits, until the network or the server wants a pause. While a flush runs the next waits for its end.
    void flushPending();

    /// Deletes all that waits; what is being sent already is not called back.
    void discardPending();

    /// How many reports wait on disk at this moment.
    [[nodiscard]] std::size_t pendingCount() const { return spool_.pending().size(); }

private:
    void keep(const PerformanceReport& report);
    void flush();
    void sendNext();
    void transmit(const platform::HttpRequest& request);
    void noteResult(const platform::HttpResult& result);
    /// Says how the file at the front fared; false if the flush ends with that.
    [[nodiscard]] bool settle(PerformanceReportSendOutcome outcome);
    void endFlush();
    void log(const std::string& message, LogLevel level);

    Parts parts_;
    PerformanceReportSpool spool_;
    std::deque<std::filesystem::path> files_;  ///< of the flush that runs; the one being sent is the first
    bool isFlushing_ = false;
    bool flushesAgain_ = false;
    std::unique_ptr<platform::HttpClient> client_;       ///< main thread
    std::unique_ptr<platform::HttpExchange> exchange_;   ///< main thread
    WeakSource<PerformanceReportUploader> weak_{*this};  ///< for what comes back to the main thread
};

}  // namespace quorvane
