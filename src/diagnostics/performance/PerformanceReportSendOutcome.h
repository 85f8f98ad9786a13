#pragma once

#include "base/RawValue.h"

namespace quorvane {

/// What became of a report that was sent: `delivered` and `rejected` are final.
enum class PerformanceReportSendOutcome { delivered, rejected, retryLater };

template <>
struct RawValues<PerformanceReportSendOutcome> {
    static constexpr RawValueTable<PerformanceReportSendOutcome, 3> table{
        {{PerformanceReportSendOutcome::delivered, "delivered"},
         {PerformanceReportSendOutcome::rejected, "rejected"},
         {PerformanceReportSendOutcome::retryLater, "retryLater"}}};
};

}  // namespace quorvane
