#include "billing/BillingPack.h"

#include "base/DateText.h"
#include "base/Text.h"
#include "billing/FileNameTime.h"

#include <fmt/format.h>

namespace quorvane::BillingPack {
namespace {

using Lines = std::vector<std::string>;

constexpr std::size_t emailProjects = 5;
constexpr std::size_t postProjects = 3;

/// With so many decimals, rounded as C's "%.2f" does.
std::string decimals(double number, int count) {
    return fmt::format("{:.{}f}", number, count);
}

std::string money(const std::string& currency, double amount) {
    return currency + " " + decimals(amount, 2);
}

/// A value that can't break a table.
std::string cell(std::string_view text) {
    return text::joined(text::split(text, '|'), "\\|");
}

std::string tableLine(const Lines& cells) {
    return "| " + text::joined(cells, " | ") + " |";
}

std::string fact(const Localization& localization, TextKey name, const std::string& value) {
    return localization.text("billing_pack_fact", localization.text(name), value);
}

std::string projectLine(const BillingReportRow& row, const Localization& localization) {
    const bool hasRate = row.hourlyRate > 0;
    const std::string notSet = localization.text("not_set");
    return tableLine({cell(row.projectName), cell(row.clientName.empty() ? notSet : row.clientName),
                      decimals(row.hours, 2) + " h", decimals(row.reviewHours, 2) + " h",
                      hasRate ? money(row.currencyCode, row.hourlyRate) + "/h" : notSet,
                      hasRate ? money(row.currencyCode, row.amount()) : "-"});
}

std::string dayLine(const BillingDayBreakdown& day, const std::string& currency, const Localization& localization) {
    return tableLine({mediumDate(day.date), cell(text::joined(day.projectNames, ", ")), decimals(day.hours, 2) + " h",
                      decimals(day.reviewHours, 2) + " h", money(currency, day.amount),
                      cell(BillingReportBuilder::activityText(day, localization))});
}

void addSummary(Lines& lines, const std::vector<BillingReportRow>& rows, const BillingReportRange& range,
                const BillingFilters& filters, Date now, const Localization& l) {
    const auto totals = BillingReportBuilder::totals(rows);
    lines.insert(lines.end(),
                 {"# " + l.text("billing_pack_title"), "", "## " + l.text("billing_pack_summary"),
                  fact(l, "time_range", rangeLabel(range, l)), fact(l, "client", clientLabel(filters.client, l))});
    if (filters.category != BillingCategoryFilter::all)
        lines.push_back(fact(l, "category", categoryLabel(filters.category, l)));
    lines.insert(lines.end(),
                 {fact(l, "generated_at", numericDateShortTime(now)),
                  fact(l, "billing_total_effort", decimals(totals.hours, 2) + " h"),
                  fact(l, "billing_review", decimals(totals.reviewHours, 2) + " h"),
                  fact(l, "amount", money(BillingReportBuilder::primaryCurrency(rows), totals.amount)), ""});
}

void addProjects(Lines& lines, const std::vector<BillingReportRow>& rows, const Localization& l) {
    lines.insert(lines.end(), {"## " + l.text("billing_pack_project_summary"),
                               tableLine({l.text("project"), l.text("client"), l.text("duration"),
                                          l.text("billing_review"), l.text("hourly_rate"), l.text("amount")}),
                               "| --- | --- | ---: | ---: | ---: | ---: |"});
    for (const BillingReportRow& row : rows)
        lines.push_back(projectLine(row, l));
    lines.emplace_back();
}

void addReview(Lines& lines, double reviewHours, const Localization& l) {
    lines.insert(lines.end(), {"## " + l.text("billing_pack_review"),
                               "- " + (reviewHours > 0 ? l.text("billing_pack_review_needed", decimals(reviewHours, 2))
                                                       : l.text("billing_pack_review_clear")),
                               ""});
}

void addDays(Lines& lines, const std::vector<BillingDayBreakdown>& days, const std::string& currency,
             const Localization& l) {
    lines.insert(lines.end(),
                 {"## " + l.text("billing_pack_daily_breakdown"),
                  tableLine({l.text("date"), l.text("project"), l.text("duration"), l.text("billing_review"),
                             l.text("amount"), l.text("billing_pack_activity_summary")}),
                  "| --- | --- | ---: | ---: | ---: | --- |"});
    for (const BillingDayBreakdown& day : days)
        lines.push_back(dayLine(day, currency, l));
    lines.emplace_back();
}

/// The first rows, each as `write` has it, joined.
template <class Write>
std::string firstRows(const std::vector<BillingReportRow>& rows, std::size_t count, std::string_view separator,
                      Write write) {
    Lines texts;
    for (std::size_t i = 0; i < rows.size() && i < count; ++i)
        texts.push_back(write(rows[i]));
    return text::joined(texts, separator);
}

}  // namespace

std::string makeMarkdownReport(const std::vector<BillingReportRow>& rows, const std::vector<BillingDayBreakdown>& days,
                               const BillingReportRange& range, const BillingFilters& filters, Date now,
                               const Localization& l) {
    Lines lines;
    addSummary(lines, rows, range, filters, now, l);
    addProjects(lines, rows, l);
    addReview(lines, BillingReportBuilder::totals(rows).reviewHours, l);
    addDays(lines, days, BillingReportBuilder::primaryCurrency(rows), l);
    lines.insert(lines.end(), {"## " + l.text("billing_pack_privacy_note_title"), l.text("billing_pack_privacy_note"),
                               "", "---", l.text("billing_pack_brand_footer")});
    return text::joined(lines, "\n");
}

std::string makeEmailBody(const std::vector<BillingReportRow>& rows, const BillingReportRange& range,
                          const std::string& clientFilter, const Localization& l) {
    const auto totals = BillingReportBuilder::totals(rows);
    const std::string projects = firstRows(rows, emailProjects, "\n", [](const BillingReportRow& row) {
        return fmt::format("- {}: {} h, {}", row.projectName, decimals(row.hours, 2),
                           money(row.currencyCode, row.amount()));
    });
    const Lines lines{
        l.text("billing_email_greeting", clientLabel(clientFilter, l)),
        "",
        l.text("billing_email_intro"),
        "",
        l.text("billing_email_period", rangeLabel(range, l)),
        l.text("billing_email_total_hours", decimals(totals.hours, 2)),
        l.text("billing_email_total_amount", BillingReportBuilder::primaryCurrency(rows), decimals(totals.amount, 2)),
        totals.reviewHours > 0 ? l.text("billing_email_review_line", decimals(totals.reviewHours, 2))
                               : l.text("billing_email_review_clear"),
        "",
        l.text("billing_email_project_summary"),
        rows.empty() ? "- " + l.text("billing_empty_title") : projects,
        "",
        l.text("billing_email_attachment_note"),
        "",
        l.text("billing_email_closing")};
    return text::joined(lines, "\n");
}

std::string makeSocialPost(const std::vector<BillingReportRow>& rows, const BillingReportRange& range,
                           const Localization& l) {
    const auto totals = BillingReportBuilder::totals(rows);
    std::string projects = firstRows(rows, postProjects, " / ", [](const BillingReportRow& row) {
        return row.projectName + " " + decimals(row.hours, 1) + "h";
    });
    if (projects.empty()) projects = l.text("unknown_project");
    const std::string label = rangeLabel(range, l);
    const std::string hours = decimals(totals.hours, 1);
    if (!(totals.amount > 0)) return l.text("billing_social_post_without_amount", label, hours, projects);
    return l.text("billing_social_post_with_amount", label, hours, projects,
                  BillingReportBuilder::primaryCurrency(rows), decimals(totals.amount, 2));
}

std::string billingPackFileName(Date now) {
    return "Quorvane_Billing_Pack_" + fileNameTime(now) + ".md";
}

}  // namespace quorvane::BillingPack
