#include "shell/state/BillingCards.h"

#include "billing/MoneyText.h"

#include <fmt/format.h>

namespace quorvane::BillingCards {

std::string hoursText(double hours) {
    return fmt::format("{:.1f} h", hours);
}

std::string scopeCaption(const BillingReportRange& range, const BillingFilters& filters,
                         const Localization& localization) {
    std::string caption = rangeLabel(range, localization);
    if (filters.category != BillingCategoryFilter::all)
        caption += " · " + categoryLabel(filters.category, localization);
    return caption;
}

std::array<CheckoutStepCard, 3> checkoutSteps(const std::vector<BillingReportRow>& rows,
                                              const BillingReportRange& range, const BillingFilters& filters,
                                              const Localization& l) {
    const double reviewHours = BillingReportBuilder::totals(rows).reviewHours;
    const bool mustReview = reviewHours > 0;
    return {{{.index = 1,
              .title = l.text("checkout_step_scope"),
              .value = clientLabel(filters.client, l),
              .caption = scopeCaption(range, filters, l),
              .systemImage = "people"},
             {.index = 2,
              .title = l.text("checkout_step_review"),
              .value = hoursText(reviewHours),
              .caption = mustReview ? l.text("checkout_step_review_needed") : l.text("checkout_step_review_clear"),
              .systemImage = mustReview ? "review-mag" : "seal"},
             {.index = 3,
              .title = l.text("checkout_step_export"),
              .value = l.text("billing_export_pack"),
              .caption = l.text("checkout_step_export_caption"),
              .systemImage = "doc"}}};
}

std::array<BillingMetricCard, 3> metrics(const std::vector<BillingReportRow>& rows, const Localization& l) {
    const auto totals = BillingReportBuilder::totals(rows);
    double billableHours = 0;
    for (const BillingReportRow& row : rows)
        if (row.hourlyRate > 0) billableHours += row.hours;
    return {{{.title = l.text("billing_total_effort"),
              .value = hoursText(totals.hours),
              .caption = l.text("billing_project_count", static_cast<std::int64_t>(rows.size()))},
             {.title = l.text("billing_billable"),
              .value = hoursText(billableHours),
              .caption = l.text("billing_rate_configured")},
             {.title = l.text("billing_estimated_amount"),
              .value = moneyText(totals.amount, BillingReportBuilder::primaryCurrency(rows)),
              .caption = totals.reviewHours > 0 ? l.text("billing_review_hours_caption", hoursText(totals.reviewHours))
                                                : l.text("billing_amount_caption")}}};
}

BillingTableRow tableRow(const BillingReportRow& row, const std::string& colorName, const Localization& l) {
    const bool hasRate = row.hourlyRate != 0;
    const std::string notSet = l.text("not_set");
    return {.id = row.id,
            .tone = AppColorPalette::projectTone(colorName),
            .projectName = row.projectName,
            .clientName = row.clientName.empty() ? notSet : row.clientName,
            .hours = hoursText(row.hours),
            .reviewHours = hoursText(row.reviewHours),
            .hourlyRate = hasRate ? moneyText(row.hourlyRate, row.currencyCode) : notSet,
            .amount = hasRate ? moneyText(row.amount(), row.currencyCode) : notSet,
            .hasClient = !row.clientName.empty(),
            .needsReview = row.reviewHours > 0,
            .hasRate = hasRate};
}

}  // namespace quorvane::BillingCards
