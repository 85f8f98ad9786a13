#include "store/Project.h"

#include "store/ActivityRecord.h"
#include "store/EntityDescription.h"
#include "store/ModelContext.h"
#include "store/ProjectTimeAnnotation.h"

namespace quorvane {

const EntityDescription& Project::description() {
    static const EntityDescription description{
        .name = "Project",
        .table = "project",
        .attributes = {attribute<&Project::id>("id"), attribute<&Project::name>("name"),
                       attribute<&Project::color>("color"), attribute<&Project::clientName>("client_name"),
                       attribute<&Project::hourlyRate>("hourly_rate"),
                       attribute<&Project::currencyCode>("currency_code"), attribute<&Project::createdAt>("created_at"),
                       attribute<&Project::updatedAt>("updated_at"), attribute<&Project::isArchived>("is_archived"),
                       attribute<&Project::cloudKitRecordID>("cloud_kit_record_id")},
        .indexes = {{"id"}},
        .make = []() -> std::shared_ptr<Entity> { return std::make_shared<Project>(); }};
    return description;
}

std::vector<std::shared_ptr<ActivityRecord>> Project::activities() const {
    if (context() == nullptr) return {};
    return context()->fetch<ActivityRecord>(
        {.predicate = refersTo(&ActivityRecord::project, *this), .sort = {ascending(&ActivityRecord::startTime)}});
}

std::vector<std::shared_ptr<ProjectTimeAnnotation>> Project::timeAnnotations() const {
    if (context() == nullptr) return {};
    return context()->fetch<ProjectTimeAnnotation>({.predicate = refersTo(&ProjectTimeAnnotation::project, *this),
                                                    .sort = {ascending(&ProjectTimeAnnotation::startTime)}});
}

}  // namespace quorvane
