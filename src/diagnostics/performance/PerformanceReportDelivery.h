#pragma once

#include "diagnostics/performance/PerformanceReportSendOutcome.h"
#include "platform/HttpClient.h"

#include <optional>
#include <string>
#include <string_view>

/// How reports travel.
namespace quorvane::PerformanceReportDelivery {

inline constexpr Seconds timeout = 60s;

/// A packed report on its way to the maker's host, which may have a port ("telemetry.example.org:8443"). None if there
/// is no host, or if what is given is none.
[[nodiscard]] std::optional<platform::HttpRequest> request(std::string_view host, std::string_view userAgent,
                                                           std::string bytes);

/// By the server's answer; 0 stands for one that was none of HTTP.
[[nodiscard]] PerformanceReportSendOutcome outcome(int status);

}  // namespace quorvane::PerformanceReportDelivery
