#pragma once

#include "base/Date.h"
#include "billing/BillingFilters.h"
#include "billing/BillingReportBuilder.h"
#include "billing/BillingReportRange.h"
#include "l10n/Localization.h"

#include <string>
#include <vector>

/// The texts that are made of a report. Dates are written as the user's locale does, words in the language of
/// `localization`, hours and money with two decimals, in the social post hours with one. Lines are joined by "\n", with
/// none after the last.
namespace quorvane::BillingPack {

/// The Markdown document: summary, projects, review, days. `now` is the moment of its making.
[[nodiscard]] std::string makeMarkdownReport(const std::vector<BillingReportRow>& rows,
                                             const std::vector<BillingDayBreakdown>& days,
                                             const BillingReportRange& range, const BillingFilters& filters, Date now,
                                             const Localization& localization);

/// The body of an e-mail to a client: totals and the first five projects.
[[nodiscard]] std::string makeEmailBody(const std::vector<BillingReportRow>& rows, const BillingReportRange& range,
                                        const std::string& clientFilter, const Localization& localization);

/// One sentence with the first three projects; it names no client.
[[nodiscard]] std::string makeSocialPost(const std::vector<BillingReportRow>& rows, const BillingReportRange& range,
                                         const Localization& localization);

/// The name that a save panel proposes: "Quorvane_Billing_Pack_2026-03-04_15-00-00.md".
[[nodiscard]] std::string billingPackFileName(Date now);

}  // namespace quorvane::BillingPack
