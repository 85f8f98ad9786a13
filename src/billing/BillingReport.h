#pragma once

#include "base/Calendar.h"
#include "billing/BillingReportBuilder.h"
#include "billing/BillingReportRange.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvane {

class ModelContext;

/// A whole report, read and computed at one moment.
struct BillingReport {
    BillingReportRange range;
    Date now;
    BillingReportBuilder::Scope scope;
    BillingLedger ledger;  ///< owns what the lists below lead to
    std::vector<BillingReportRow> rows;
    std::vector<BillingDayBreakdown> days;
    std::vector<BillingRecord> billable;  ///< newest first
    std::vector<BillingRecord> review;    ///< newest first
    std::vector<std::string> clients;     ///< of all projects, for a picker
};

/// Reads what the range holds and computes the report; records that begin before `recordsSince` are left out. Throws
/// `StoreError`.
[[nodiscard]] BillingReport makeBillingReport(ModelContext& context, const BillingReportRange& range,
                                              const BillingFilters& filters, Date now, const Calendar& calendar,
                                              const Localization& localization,
                                              std::optional<Date> recordsSince = std::nullopt);

}  // namespace quorvane
