#include "diagnostics/performance/PerformanceReportDelivery.h"

#include "base/Url.h"

#include <fmt/format.h>
#include <utility>

namespace quorvane::PerformanceReportDelivery {
namespace {

constexpr std::string_view path = "/api/v1/public/telemetry/perf-reports";
constexpr int tooManyRequests = 429;
constexpr std::size_t longestAnswer = 1 << 20;  // nobody reads it; only its status counts

std::optional<std::string> url(std::string_view host) {
    auto made = fmt::format("https://{}{}", host, path);
    const auto parts = urlParts(made);
    // Read back, the path shows whether the host was nothing but a host; a user before it is none of ours.
    const bool isHost =
        parts && !parts->host.empty() && parts->path == path && host.find('@') == std::string_view::npos;
    return isHost ? std::optional(std::move(made)) : std::nullopt;
}

}  // namespace

std::optional<platform::HttpRequest> request(std::string_view host, std::string_view userAgent, std::string bytes) {
    auto address = url(host);
    if (!address) return std::nullopt;
    return platform::HttpRequest{.method = "POST",
                                 .url = std::move(*address),
                                 .headers = {{"Content-Type", "application/json"},
                                             {"Content-Encoding", "gzip"},
                                             {"User-Agent", std::string(userAgent)}},
                                 .body = std::move(bytes),
                                 .maximumBytes = longestAnswer,
                                 .timeout = timeout};
}

PerformanceReportSendOutcome outcome(int status) {
    using enum PerformanceReportSendOutcome;
    if (status >= 200 && status <= 299) return delivered;
    return status >= 400 && status <= 499 && status != tooManyRequests ? rejected : retryLater;
}

}  // namespace quorvane::PerformanceReportDelivery
