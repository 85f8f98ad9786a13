#include "base/DateText.h"
#include "base/Iso8601.h"
#include "base/Json.h"
#include "base/TerminalText.h"
#include "base/Text.h"
#include "billing/BillingPack.h"
#include "billing/BillingReport.h"
#include "cli/Arguments.h"
#include "cli/CommandContext.h"
#include "cli/Commands.h"
#include "cli/Output.h"
#include "cli/TextTable.h"
#include "platform/Clock.h"
#include "store/ModelContext.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

namespace quorvane::cli {
namespace {

enum class ReportFormat { text, json, markdown, email, social };

}  // namespace
}  // namespace quorvane::cli

template <>
struct quorvane::RawValues<quorvane::cli::ReportFormat> {
    using Format = cli::ReportFormat;
    static constexpr RawValueTable<Format, 5> table{{{Format::text, "text"},
                                                     {Format::json, "json"},
                                                     {Format::markdown, "markdown"},
                                                     {Format::email, "email"},
                                                     {Format::social, "social"}}};
};

namespace quorvane::cli {
namespace {

struct ReportOptions {
    BillingReportRangeKind kind = BillingReportRangeKind::month;
    std::optional<CivilDate> from;
    std::optional<CivilDate> to;
    BillingFilters filters;
    std::optional<ReportFormat> format;
};

BillingReportRange rangeOf(const ReportOptions& options, const Calendar& calendar) {
    const bool isCustom = options.kind == BillingReportRangeKind::custom;
    if (isCustom != (options.from && options.to) || (!isCustom && (options.from || options.to)))
        throw CommandError(ExitStatus::wrongUsage, "--from and --to belong to --range custom, which wants both");
    if (!isCustom) return {.kind = options.kind};
    const auto range =
        BillingReportRange::fromKind(options.kind, calendar.date(*options.from), calendar.date(*options.to));
    if (range.customEnd < range.customStart) throw CommandError(ExitStatus::wrongUsage, "--from is after --to");
    return range;
}

Json ids(const std::vector<BillingRecord>& records) {
    Json list = Json::array();
    for (const BillingRecord& record : records)
        list.push_back(record.id.string());
    return list;
}

Json rowsJson(const BillingReport& report) {
    Json rows = Json::array();
    for (const BillingReportRow& row : report.rows)
        rows.push_back({{"id", row.id.string()},
                        {"project_name", row.projectName},
                        {"client_name", row.clientName},
                        {"hours", row.hours},
                        {"review_hours", row.reviewHours},
                        {"record_count", row.recordCount},
                        {"hourly_rate", row.hourlyRate},
                        {"currency_code", row.currencyCode},
                        {"amount", row.amount()}});
    return rows;
}

Json daysJson(const BillingReport& report) {
    Json days = Json::array();
    for (const BillingDayBreakdown& day : report.days)
        days.push_back({{"date", localDateText(day.date, "yyyy-MM-dd")},
                        {"hours", day.hours},
                        {"review_hours", day.reviewHours},
                        {"amount", day.amount},
                        {"project_names", day.projectNames},
                        {"activity_summaries", day.activitySummaries}});
    return days;
}

std::string jsonOf(const BillingReport& report, const Localization& localization) {
    const auto totals = BillingReportBuilder::totals(report.rows);
    const Json json{{"range",
                     {{"kind", std::string(rawValue(report.range.kind))},
                      {"start", iso8601Microseconds(report.scope.start)},
                      {"end", iso8601Microseconds(report.scope.end)},
                      {"label", rangeLabel(report.range, localization)}}},
                    {"rows", rowsJson(report)},
                    {"days", daysJson(report)},
                    {"billable", ids(report.billable)},
                    {"review", ids(report.review)},
                    {"totals",
                     {{"hours", totals.hours},
                      {"review_hours", totals.reviewHours},
                      {"amount", totals.amount},
                      {"currency", BillingReportBuilder::primaryCurrency(report.rows)}}},
                    {"clients", report.clients}};
    return jsonText(json) + "\n";
}

/// Hours with a mark where somebody still has to look at a part of them.
std::string hoursText(double hours, double reviewHours) {
    return fmt::format("{:.2f}{}", hours, reviewHours > 0 ? "*" : " ");
}

void writeProjects(const BillingReport& report, const Localization& l, Output& output) {
    TextTable table({{.title = l.text("project"), .maxWidth = 40, .minWidth = 8},
                     {.title = l.text("client"), .maxWidth = 30, .minWidth = 6},
                     {.title = l.text("duration") + " ", .maxWidth = 14, .isNumber = true},
                     {.title = l.text("billing_review"), .maxWidth = 14, .isNumber = true},
                     {.title = l.text("hourly_rate"), .maxWidth = 18, .isNumber = true},
                     {.title = l.text("amount"), .maxWidth = 20, .isNumber = true}},
                    terminalWidth(), [&](std::string_view line) { output.write(line); });
    for (const BillingReportRow& row : report.rows)
        table.add({harmlessLine(row.projectName), harmlessLine(row.clientName), hoursText(row.hours, row.reviewHours),
                   fmt::format("{:.2f}", row.reviewHours),
                   row.hourlyRate > 0 ? fmt::format("{} {:.2f}", harmlessLine(row.currencyCode), row.hourlyRate) : "",
                   row.hourlyRate > 0 ? fmt::format("{} {:.2f}", harmlessLine(row.currencyCode), row.amount()) : "-"});
    const auto totals = BillingReportBuilder::totals(report.rows);
    const auto currency = harmlessLine(BillingReportBuilder::primaryCurrency(report.rows));
    table.add({l.text("billing_total_effort"), "", hoursText(totals.hours, totals.reviewHours),
               fmt::format("{:.2f}", totals.reviewHours), "", fmt::format("{} {:.2f}", currency, totals.amount)});
    table.finish();
}

void writeDays(const BillingReport& report, const Localization& l, Output& output) {
    TextTable table({{.title = l.text("date"), .maxWidth = 20},
                     {.title = l.text("duration") + " ", .maxWidth = 14, .isNumber = true},
                     {.title = l.text("billing_review"), .maxWidth = 14, .isNumber = true},
                     {.title = l.text("amount"), .maxWidth = 20, .isNumber = true},
                     {.title = l.text("project"), .maxWidth = 50, .minWidth = 8},
                     {.title = l.text("billing_pack_activity_summary"), .maxWidth = 60, .minWidth = 8}},
                    terminalWidth(), [&](std::string_view line) { output.write(line); });
    for (const BillingDayBreakdown& day : report.days)
        table.add({mediumDate(day.date), hoursText(day.hours, day.reviewHours), fmt::format("{:.2f}", day.reviewHours),
                   fmt::format("{:.2f}", day.amount), harmlessLine(text::joined(day.projectNames, ", ")),
                   harmlessLine(BillingReportBuilder::activityText(day, l))});
    table.finish();
}

void writeText(const BillingReport& report, const Localization& l, Output& output) {
    const auto totals = BillingReportBuilder::totals(report.rows);
    const bool isCustom = report.range.kind == BillingReportRangeKind::custom;
    output.write(fmt::format("{}: {} — {}\n", label(report.range.kind, l), mediumDate(report.scope.start),
                             mediumDate(isCustom ? report.range.customEnd : report.scope.end)));
    output.write(fmt::format("{}: {}\n", l.text("client"), harmlessLine(clientLabel(report.scope.filters.client, l))));
    if (report.scope.filters.category != BillingCategoryFilter::all)
        output.write(
            fmt::format("{}: {}\n", l.text("category"), harmlessLine(categoryLabel(report.scope.filters.category, l))));
    output.write("\n");
    if (report.rows.empty()) return output.write(l.text("billing_empty_title") + "\n");
    writeProjects(report, l, output);
    output.write("\n");
    writeDays(report, l, output);
    output.write(totals.reviewHours > 0
                     ? "\n* " + l.text("billing_pack_review_needed", fmt::format("{:.2f}", totals.reviewHours)) + "\n"
                     : "\n" + l.text("billing_pack_review_clear") + "\n");
}

void writeReport(const BillingReport& report, ReportFormat format, const Localization& localization, Output& output) {
    const auto& filters = report.scope.filters;
    switch (format) {
    case ReportFormat::text: return writeText(report, localization, output);
    case ReportFormat::json: return output.write(jsonOf(report, localization));
    case ReportFormat::markdown:
        return output.write(
            BillingPack::makeMarkdownReport(report.rows, report.days, report.range, filters, report.now, localization) +
            "\n");
    case ReportFormat::email:
        return output.write(BillingPack::makeEmailBody(report.rows, report.range, filters.client, localization) + "\n");
    case ReportFormat::social:
        return output.write(BillingPack::makeSocialPost(report.rows, report.range, localization) + "\n");
    }
}

void report(const CommandContext& context, const ReportOptions& options) {
    if (context.json && options.format && options.format != ReportFormat::json)
        throw CommandError(ExitStatus::wrongUsage, "--json and --format ask for different forms");
    const auto format = options.format.value_or(context.json ? ReportFormat::json : ReportFormat::text);
    const auto calendar = Calendar::current();
    const auto range = rangeOf(options, calendar);
    const auto localization = Localization::fromEnvironment();
    ModelContext store(context.open(StoreAccess::read));
    Output output;
    writeReport(makeBillingReport(store, range, options.filters, platform::currentDate(), calendar, localization),
                format, localization, output);
    output.finish();
}

void addFilterOptions(CLI::App& command, BillingFilters& filters) {
    command
        .add_option_function<std::string>(
            "--project", [&filters](const std::string& text) { filters.projectId = readUuid("--project", text); },
            "Only this project")
        ->type_name("UUID");
    auto* client = command.add_option("--client", filters.client, "Only projects of this client")->type_name("NAME");
    command
        .add_flag_callback(
            "--no-client", [&filters] { filters.client = BillingClientFilter::none; }, "Only projects without a client")
        ->excludes(client);
    auto* category = addTextOption(command, "--category", "NAME", "Only records of this category",
                                   [&filters](const std::string& text) { filters.category = readCategory(text); });
    command
        .add_flag_callback(
            "--no-category", [&filters] { filters.category = BillingCategoryFilter::none; },
            "Only records without a category")
        ->excludes(category);
}

}  // namespace

void addReportCommand(CLI::App& app, CommandContext& context) {
    auto* command = app.add_subcommand("report", "Hours and amounts of a range, by project and by day");
    const auto options = std::make_shared<ReportOptions>();
    command
        ->add_option_function<std::string>(
            "--range",
            [options](const std::string& text) { options->kind = readCase<BillingReportRangeKind>("--range", text); },
            "week, month (the default), quarter or custom")
        ->type_name("RANGE");
    addDateOption(*command, "--from", options->from, "First day of a custom range");
    addDateOption(*command, "--to", options->to, "Last day of a custom range");
    addFilterOptions(*command, options->filters);
    command
        ->add_option_function<std::string>(
            "--format",
            [options](const std::string& text) { options->format = readCase<ReportFormat>("--format", text); },
            "text (the default), json, markdown, email or social")
        ->type_name("FORMAT");
    command->callback([&context, options] { context.command = [&context, options] { report(context, *options); }; });
}

}  // namespace quorvane::cli
