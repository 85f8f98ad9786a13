#pragma once

#include "base/Calendar.h"
#include "billing/BillingFilters.h"
#include "billing/BillingLedger.h"
#include "l10n/Localization.h"

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

namespace quorvane {

/// One project's line of a report.
struct BillingReportRow {
    Uuid id;  ///< the project's
    const BillingProject* project = nullptr;
    std::string projectName;
    std::string clientName;  ///< empty when the project has none
    double hours = 0;
    double reviewHours = 0;        ///< of `hours`, those that somebody should look at; they are billed all the same
    std::int64_t recordCount = 0;  ///< records and annotations, open ones included
    double hourlyRate = 0;
    std::string currencyCode;

    [[nodiscard]] double amount() const { return hours * hourlyRate; }
};

/// One day's line of a report.
struct BillingDayBreakdown {
    Date date;  ///< the first instant of the day
    double hours = 0;
    double reviewHours = 0;
    double amount = 0;                           ///< in whatever currencies the projects have
    std::vector<std::string> projectNames;       ///< sorted, each once
    std::vector<std::string> activitySummaries;  ///< sorted, each once, at most 4
    friend bool operator==(const BillingDayBreakdown&, const BillingDayBreakdown&) = default;
};

/// The arithmetic of billing. Nothing here rounds, and nothing writes: documents format, and the store stays as it is.
/// Time that both a record and an annotation cover counts twice.
namespace BillingReportBuilder {

/// What a report looks at: instants from `start` to `end`, and filters.
struct Scope {
    Date start;
    Date end;
    BillingFilters filters;
    bool isEndInside = true;  ///< else what begins at `end` belongs to the next range

    [[nodiscard]] bool isBeforeEnd(Date date) const { return isEndInside ? date <= end : date < end; }
};

/// The clients of the projects without blanks around them, sorted, each once.
[[nodiscard]] std::vector<std::string> clientNames(const std::deque<BillingProject>& projects);

[[nodiscard]] bool matchesClient(const BillingProject& project, std::string_view filter);
[[nodiscard]] bool matchesCategory(const BillingRecord& record, std::string_view filter);

/// Does somebody have to look at it: not reviewed yet, unsure, or open? Never without a project.
[[nodiscard]] bool needsReview(const BillingRecord& record);

/// The records that earn money, in the order given. A record belongs to the range by its start and counts in full.
[[nodiscard]] std::vector<BillingRecord> billableRecords(const std::vector<BillingRecord>& records, const Scope& scope);

/// The records that need a look, newest first; also ones that earn nothing, but no excluded ones.
[[nodiscard]] std::vector<BillingRecord> reviewRecords(const std::vector<BillingRecord>& records, const Scope& scope);

/// The annotations that reach into the range; none under a category filter, as they have no category.
[[nodiscard]] std::vector<BillingAnnotation> matchingAnnotations(const std::vector<BillingAnnotation>& annotations,
                                                                 const Scope& scope);

/// One row for each project with time, the highest amount first, then the most hours, then the smaller id. Records of
/// a project that isn't among `projects` have no row.
[[nodiscard]] std::vector<BillingReportRow> reportRows(const std::vector<BillingRecord>& records,
                                                       const std::vector<BillingAnnotation>& annotations,
                                                       const std::deque<BillingProject>& projects, const Scope& scope);

/// One row for each day on which a record or an annotation begins, oldest first; for lists that are filtered already.
/// Of an annotation counts what lies in the range, on the day of its start, which may lie before the range.
[[nodiscard]] std::vector<BillingDayBreakdown> dayBreakdown(const std::vector<BillingRecord>& records,
                                                            const std::vector<BillingAnnotation>& annotations,
                                                            const Scope& scope, const Calendar& calendar,
                                                            const Localization& localization);

/// What was done on the day, in one line of the user's language.
[[nodiscard]] std::string activityText(const BillingDayBreakdown& day, const Localization& localization);

/// The currency of the first row with a rate; "USD" if there is none. Totals bear it, whatever currencies they mix.
[[nodiscard]] std::string primaryCurrency(const std::vector<BillingReportRow>& rows);

/// Sums over the rows, currencies mixed.
struct Totals {
    double hours = 0;
    double reviewHours = 0;
    double amount = 0;
};
[[nodiscard]] Totals totals(const std::vector<BillingReportRow>& rows);

}  // namespace BillingReportBuilder
}  // namespace quorvane
