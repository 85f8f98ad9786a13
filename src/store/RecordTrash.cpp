#include "store/RecordTrash.h"

#include "store/JsonForm.h"

#include <fmt/format.h>

namespace quorvane::RecordTrash {
namespace {

using T = TrashedRecord;

/// A free record with the same values.
std::shared_ptr<ActivityRecord> copyOf(const ActivityRecord& record) {
    auto copy = std::make_shared<ActivityRecord>();
    for (const auto& attribute : ActivityRecord::description().attributes)
        if (attribute.kind != AttributeKind::reference) attribute.set(*copy, attribute.get(record));
    copy->project = record.project();
    return copy;
}

void put(ModelContext& context, const ActivityRecord& record, Pass pass, Date now) {
    auto trashed = std::make_shared<T>();
    JsonForm::RowIds projects;
    if (const auto project = record.project()) projects.emplace(project->objectId(), project->id());
    std::string row;
    JsonForm::appendObject(row, record, projects);
    trashed->recordId = record.id();
    trashed->removedAt = now;
    trashed->pass = std::string(rawValue(pass));
    trashed->record = std::move(row);
    context.insert(trashed);
}

}  // namespace

void take(ModelContext& context, const std::shared_ptr<ActivityRecord>& record, Pass pass, Date now) {
    if (record->isDeleted()) return;
    put(context, *record, pass, now);
    context.remove(record);
}

void cutEnd(ModelContext& context, ActivityRecord& record, Date end, Pass pass, Date now) {
    const auto cutOff = copyOf(record);
    cutOff->id = Uuid::random();
    cutOff->startTime = end;
    put(context, *cutOff, pass, now);
    record.endTime = end;
    record.updatedAt = now;
}

bool wasRestored(ModelContext& context, const Uuid& record) {
    return context.count<T>(field(&T::recordId) == record && field(&T::restoredAt).isPresent()) > 0;
}

std::vector<std::shared_ptr<TrashedRecord>> content(ModelContext& context) {
    return context.fetch<T>({.predicate = field(&T::restoredAt).isNone(), .sort = {descending(&T::removedAt)}});
}

std::shared_ptr<ActivityRecord> recordOf(ModelContext& context, const TrashedRecord& trashed) {
    JsonLine line;
    line.read(trashed.record());
    const auto& entity = ActivityRecord::description();
    const auto values = JsonForm::readObject(entity, line);
    auto record = std::make_shared<ActivityRecord>();
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (entity.attributes[i].kind != AttributeKind::reference) {
            entity.attributes[i].set(*record, values[i]);
        } else if (!isNull(values[i])) {
            const Uuid id = ValueTraits<Uuid>::fromSql(values[i]);
            const auto projects = context.fetch<Project>({.predicate = field(&Project::id) == id, .limit = 1});
            if (!projects.empty()) record->project = projects.front();
        }
    }
    return record;
}

std::shared_ptr<ActivityRecord> restore(ModelContext& context, const Uuid& record, Date now) {
    const auto found = context.fetch<T>({.predicate = field(&T::recordId) == record && field(&T::restoredAt).isNone(),
                                         .sort = {descending(&T::removedAt)},
                                         .limit = 1});
    if (found.empty()) throw Error(fmt::format("there is no record {} in the trash", record.string()));
    if (context.count<ActivityRecord>(field(&ActivityRecord::id) == record) > 0)
        throw Error(fmt::format("the record {} is there already", record.string()));
    auto restored = recordOf(context, *found.front());
    context.insert(restored);
    found.front()->restoredAt = now;
    return restored;
}

std::size_t empty(ModelContext& context, std::optional<Date> before) {
    auto predicate = field(&T::restoredAt).isNone();
    if (before) predicate = field(&T::removedAt) < *before && field(&T::restoredAt).isNone();
    const auto rows = context.fetch<T>({.predicate = predicate});
    for (const auto& row : rows)
        context.remove(row);
    return rows.size();
}

}  // namespace quorvane::RecordTrash
