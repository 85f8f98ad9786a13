#include "billing/BillingReport.h"

namespace quorvane {

BillingReport makeBillingReport(ModelContext& context, const BillingReportRange& range, const BillingFilters& filters,
                                Date now, const Calendar& calendar, const Localization& localization,
                                std::optional<Date> recordsSince) {
    using namespace BillingReportBuilder;
    const Scope scope{rangeStart(range, now, calendar), rangeEnd(range, now, calendar), filters, isEndInside(range)};
    BillingLedger ledger = BillingLedger::load(context, scope.start, scope.end, filters, recordsSince);
    const auto& records = ledger.records();
    const auto& annotations = ledger.annotations();
    auto rows = reportRows(records, annotations, ledger.projects(), scope);
    auto billable = billableRecords(records, scope);
    auto days = dayBreakdown(billable, matchingAnnotations(annotations, scope), scope, calendar, localization);
    auto review = reviewRecords(records, scope);
    auto clients = clientNames(ledger.projects());
    return {.range = range,
            .now = now,
            .scope = scope,
            .ledger = std::move(ledger),
            .rows = std::move(rows),
            .days = std::move(days),
            .billable = std::move(billable),
            .review = std::move(review),
            .clients = std::move(clients)};
}

}  // namespace quorvane
