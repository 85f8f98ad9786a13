#include "billing/BillingReportBuilder.h"

#include "base/Text.h"
#include "store/StoredNames.h"

#include <algorithm>
#include <map>
#include <set>

namespace quorvane::BillingReportBuilder {
namespace {

constexpr double surely = 0.9;  // records of less confidence need a look
constexpr std::size_t mostSummaries = 4;

/// What runs up for one project.
struct BillingAccumulator {
    const BillingProject* project = nullptr;
    Seconds seconds{};
    Seconds reviewSeconds{};
    std::int64_t itemCount = 0;
};

/// Nothing for an open record.
Seconds duration(const BillingRecord& record) {
    return record.endTime ? std::max(Seconds{0}, *record.endTime - record.startTime) : Seconds{0};
}

Seconds clippedDuration(const BillingAnnotation& annotation, const Scope& scope) {
    return std::max(Seconds{0}, std::min(scope.end, annotation.endTime) - std::max(scope.start, annotation.startTime));
}

/// What all lists ask of a record: project, filters and range.
bool isInScope(const BillingRecord& record, const Scope& scope) {
    return record.project && (!scope.filters.projectId || *scope.filters.projectId == record.project->id) &&
           matchesClient(*record.project, scope.filters.client) && matchesCategory(record, scope.filters.category) &&
           record.startTime >= scope.start && scope.isBeforeEnd(record.startTime);
}

BillingReportRow makeRow(const BillingAccumulator& total) {
    const BillingProject& project = *total.project;
    return {.id = project.id,
            .project = &project,
            .projectName = project.name,
            .clientName = project.clientName.value_or(""),
            .hours = total.seconds / 1h,
            .reviewHours = total.reviewSeconds / 1h,
            .recordCount = total.itemCount,
            .hourlyRate = project.hourlyRate,
            .currencyCode = project.currencyCode};
}

/// What runs up for one day. Sets keep names sorted and apart; seconds add up exactly where hours would not.
struct DayTotal {
    Seconds recorded{};
    Seconds toReview{};  ///< of `recorded`
    Seconds assigned{};
    double amount = 0;
    std::set<std::string_view> projectNames;
    std::set<std::string> activitySummaries;
};

/// The first instants of days; neighbours mostly share one, and asking the calendar is slow.
class DayStarts {
public:
    explicit DayStarts(const Calendar& calendar) : calendar_(calendar) {}

    Date of(Date date) {
        if (date < day_.start || date >= day_.end) day_ = calendar_.day(date);
        return day_.start;
    }

private:
    const Calendar& calendar_;
    DateInterval day_{};
};

void add(DayTotal& total, const BillingRecord& record) {
    const Seconds worked = duration(record);
    total.recorded += worked;
    if (needsReview(record)) total.toReview += worked;
    if (record.project) {
        total.amount += worked / 1h * record.project->hourlyRate;
        total.projectNames.insert(record.project->name);
    }
    const auto summary = record.appName.empty() ? record.category : record.appName;
    if (!summary.empty() && !total.activitySummaries.contains(std::string(summary)))
        total.activitySummaries.emplace(summary);
}

void add(DayTotal& total, const BillingAnnotation& annotation, const Scope& scope, const Localization& localization) {
    const Seconds assigned = clippedDuration(annotation, scope);
    total.assigned += assigned;
    if (!annotation.project) return;
    total.amount += assigned / 1h * annotation.project->hourlyRate;
    total.projectNames.insert(annotation.project->name);
    total.activitySummaries.insert(localization.text("billing_manual_annotation_summary", annotation.project->name));
}

void cut(std::set<std::string>& summaries) {
    while (summaries.size() > mostSummaries)
        summaries.erase(std::prev(summaries.end()));
}

}  // namespace

std::vector<std::string> clientNames(const std::deque<BillingProject>& projects) {
    std::set<std::string> names;
    for (const BillingProject& project : projects)
        if (auto name = text::trimmedWithNewlines(project.clientName.value_or("")); !name.empty())
            names.insert(std::move(name));
    return {names.begin(), names.end()};
}

bool matchesClient(const BillingProject& project, std::string_view filter) {
    if (filter == BillingClientFilter::all) return true;
    if (filter == BillingClientFilter::none) return text::trimmedWithNewlines(project.clientName.value_or("")).empty();
    return project.clientName == filter;
}

bool matchesCategory(const BillingRecord& record, std::string_view filter) {
    if (filter == BillingCategoryFilter::all) return true;
    const auto category = text::trimmedWithNewlines(record.category);
    return filter == BillingCategoryFilter::none ? category.empty() : category == filter;
}

bool needsReview(const BillingRecord& record) {
    return record.project &&
           (record.billingStatus == BillingStatus::review || record.confidence < surely || !record.endTime);
}

std::vector<BillingRecord> billableRecords(const std::vector<BillingRecord>& records, const Scope& scope) {
    std::vector<BillingRecord> kept;
    std::copy_if(records.begin(), records.end(), std::back_inserter(kept), [&](const BillingRecord& record) {
        return countsTowardBilling(record.billingStatus) && isInScope(record, scope);
    });
    return kept;
}

std::vector<BillingRecord> reviewRecords(const std::vector<BillingRecord>& records, const Scope& scope) {
    std::vector<BillingRecord> kept;
    std::copy_if(records.begin(), records.end(), std::back_inserter(kept), [&](const BillingRecord& record) {
        return record.billingStatus != BillingStatus::excluded && needsReview(record) && isInScope(record, scope);
    });
    std::stable_sort(kept.begin(), kept.end(), [](const BillingRecord& a, const BillingRecord& b) {
        return a.startTime != b.startTime ? a.startTime > b.startTime : a.id < b.id;
    });
    return kept;
}

std::vector<BillingAnnotation> matchingAnnotations(const std::vector<BillingAnnotation>& annotations,
                                                   const Scope& scope) {
    std::vector<BillingAnnotation> kept;
    if (scope.filters.category != BillingCategoryFilter::all) return kept;
    std::copy_if(annotations.begin(), annotations.end(), std::back_inserter(kept),
                 [&](const BillingAnnotation& annotation) {
                     const auto* project = annotation.project;
                     return project && (!scope.filters.projectId || *scope.filters.projectId == project->id) &&
                            matchesClient(*project, scope.filters.client) && annotation.endTime > scope.start &&
                            scope.isBeforeEnd(annotation.startTime);
                 });
    return kept;
}

std::vector<BillingReportRow> reportRows(const std::vector<BillingRecord>& records,
                                         const std::vector<BillingAnnotation>& annotations,
                                         const std::deque<BillingProject>& projects, const Scope& scope) {
    std::map<Uuid, const BillingProject*> known;
    for (const BillingProject& project : projects)
        known.try_emplace(project.id, &project);
    std::map<Uuid, BillingAccumulator> totals;
    for (const BillingRecord& record : billableRecords(records, scope)) {
        const auto project = known.find(record.project->id);
        if (project == known.end()) continue;
        auto& total = totals.try_emplace(project->first, BillingAccumulator{.project = project->second}).first->second;
        total.seconds += duration(record);
        if (needsReview(record)) total.reviewSeconds += duration(record);
        ++total.itemCount;
    }
    for (const BillingAnnotation& annotation : matchingAnnotations(annotations, scope)) {
        auto& total =
            totals.try_emplace(annotation.project->id, BillingAccumulator{.project = annotation.project}).first->second;
        total.seconds += clippedDuration(annotation, scope);
        ++total.itemCount;
    }
    std::vector<BillingReportRow> rows;
    rows.reserve(totals.size());
    for (const auto& [id, total] : totals)
        rows.push_back(makeRow(total));
    std::stable_sort(rows.begin(), rows.end(), [](const BillingReportRow& a, const BillingReportRow& b) {
        return a.amount() != b.amount() ? a.amount() > b.amount() : a.hours > b.hours;
    });
    return rows;
}

std::vector<BillingDayBreakdown> dayBreakdown(const std::vector<BillingRecord>& records,
                                              const std::vector<BillingAnnotation>& annotations, const Scope& scope,
                                              const Calendar& calendar, const Localization& localization) {
    std::map<Date, DayTotal> totals;
    DayStarts days(calendar);
    for (const BillingRecord& record : records)
        add(totals[days.of(record.startTime)], record);
    for (const BillingAnnotation& annotation : annotations)
        add(totals[days.of(annotation.startTime)], annotation, scope, localization);
    std::vector<BillingDayBreakdown> rows;
    for (auto& [day, total] : totals) {
        cut(total.activitySummaries);
        rows.push_back({.date = day,
                        .hours = total.recorded / 1h + total.assigned / 1h,
                        .reviewHours = total.toReview / 1h,
                        .amount = total.amount,
                        .projectNames = {total.projectNames.begin(), total.projectNames.end()},
                        .activitySummaries = {total.activitySummaries.begin(), total.activitySummaries.end()}});
    }
    return rows;
}

std::string activityText(const BillingDayBreakdown& day, const Localization& localization) {
    std::vector<std::string> shown;
    for (const std::string& summary : day.activitySummaries)
        shown.push_back(StoredNames::shownCategory(summary, localization));
    return text::joined(shown, "; ");
}

std::string primaryCurrency(const std::vector<BillingReportRow>& rows) {
    const auto row = std::find_if(rows.begin(), rows.end(), [](const auto& each) { return each.hourlyRate > 0; });
    return row == rows.end() ? "USD" : row->currencyCode;
}

Totals totals(const std::vector<BillingReportRow>& rows) {
    Totals sums;
    for (const BillingReportRow& row : rows) {
        sums.hours += row.hours;
        sums.reviewHours += row.reviewHours;
        sums.amount += row.amount();
    }
    return sums;
}

}  // namespace quorvane::BillingReportBuilder
