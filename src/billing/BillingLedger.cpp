#include "billing/BillingLedger.h"

#include "billing/BillingReportBuilder.h"
#include "store/ActivityRecord.h"
#include "store/ModelContext.h"
#include "store/Project.h"
#include "store/ProjectTimeAnnotation.h"

#include <algorithm>

namespace quorvane {
namespace {

bool isWanted(const BillingProject& project, const BillingFilters& filters) {
    return (!filters.projectId || *filters.projectId == project.id) &&
           BillingReportBuilder::matchesClient(project, filters.client);
}

}  // namespace

BillingLedger BillingLedger::load(ModelContext& context, Date start, Date end, const BillingFilters& filters,
                                  std::optional<Date> recordsSince) {
    BillingLedger ledger;
    const Date recordStart = std::max(start, recordsSince.value_or(start));
    std::unordered_map<std::int64_t, const BillingProject*> wanted;  // by row
    for (const auto& stored : context.fetch<Project>()) {
        const BillingProject& project =
            ledger.projects_.emplace_back(BillingProject{.id = stored->id(),
                                                         .name = stored->name(),
                                                         .clientName = stored->clientName(),
                                                         .hourlyRate = stored->hourlyRate(),
                                                         .currencyCode = stored->currencyCode()});
        if (!isWanted(project, filters)) continue;
        wanted.emplace(stored->objectId(), &project);
        // Project by project, as their index leads straight to a project's part of the range.
        ledger.loadRecords(context, recordStart, end, *stored, project);
    }
    std::sort(ledger.records_.begin(), ledger.records_.end(), [](const BillingRecord& a, const BillingRecord& b) {
        return a.startTime != b.startTime ? a.startTime > b.startTime : a.id < b.id;
    });
    ledger.loadAnnotations(context, start, end, wanted);
    return ledger;
}

void BillingLedger::loadRecords(ModelContext& context, Date start, Date end, const Project& stored,
                                const BillingProject& project) {
    const auto begin = field(&ActivityRecord::startTime);
    const auto predicate = refersTo(&ActivityRecord::project, stored) && begin >= start && begin <= end;
    if (context.hasChanges()) {  // then rows don't tell all
        for (const auto& record : context.fetch<ActivityRecord>({.predicate = predicate}))
            records_.push_back({.id = record->id(),
                                .startTime = record->startTime(),
                                .endTime = record->endTime(),
                                .appName = kept(record->appName().value_or("")),
                                .category = kept(record->category().value_or("")),
                                .billingStatus = record->billingStatusValue(),
                                .confidence = record->confidence(),
                                .project = &project});
        return;
    }
    const auto text = [this](const Row& row, int column) {
        return row.isNull(column) ? std::string_view() : kept(row.text(column));
    };
    context.scan<ActivityRecord>(
        {.predicate = predicate},
        {"id", "start_time", "end_time", "app_name", "category", "billing_status", "confidence"}, [&](const Row& row) {
            records_.push_back(
                {.id = ValueTraits<Uuid>::fromSql(row.value(0)),
                 .startTime = dateFromMicroseconds(row.integer(1)),
                 .endTime = row.isNull(2) ? std::nullopt : std::optional(dateFromMicroseconds(row.integer(2))),
                 .appName = text(row, 3),
                 .category = text(row, 4),
                 .billingStatus = fromRawValue<BillingStatus>(row.text(5)).value_or(BillingStatus::review),
                 .confidence = row.real(6),
                 .project = &project});
            return true;
        });
}

void BillingLedger::loadAnnotations(ModelContext& context, Date start, Date end,
                                    const std::unordered_map<std::int64_t, const BillingProject*>& projects) {
    const auto reachesIn =
        field(&ProjectTimeAnnotation::endTime) > start && field(&ProjectTimeAnnotation::startTime).unindexed() <= end;
    const auto add = [&](const Uuid& id, Date begin, Date finish, std::int64_t row) {
        if (const auto project = projects.find(row); project != projects.end())
            annotations_.push_back({.id = id, .startTime = begin, .endTime = finish, .project = project->second});
    };
    if (context.hasChanges()) {
        for (const auto& annotation : context.fetch<ProjectTimeAnnotation>({.predicate = reachesIn}))
            if (const auto project = annotation->project())
                add(annotation->id(), annotation->startTime(), annotation->endTime(), project->objectId());
        return;
    }
    context.scan<ProjectTimeAnnotation>(
        {.predicate = reachesIn}, {"id", "start_time", "end_time", "project_id"}, [&](const Row& row) {
            if (!row.isNull(3))
                add(ValueTraits<Uuid>::fromSql(row.value(0)), dateFromMicroseconds(row.integer(1)),
                    dateFromMicroseconds(row.integer(2)), row.integer(3));
            return true;
        });
}

std::string_view BillingLedger::kept(std::string_view text) {
    return *texts_.emplace(text).first;
}

}  // namespace quorvane
