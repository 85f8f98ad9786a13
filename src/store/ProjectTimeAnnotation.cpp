#include "store/ProjectTimeAnnotation.h"

#include "store/EntityDescription.h"

namespace quorvane {

const EntityDescription& ProjectTimeAnnotation::description() {
    using A = ProjectTimeAnnotation;
    static const EntityDescription description{
        .name = "ProjectTimeAnnotation",
        .table = "project_time_annotation",
        .attributes = {attribute<&A::id>("id"), attribute<&A::startTime>("start_time"),
                       attribute<&A::endTime>("end_time"), attribute<&A::project>("project_id"),
                       attribute<&A::createdAt>("created_at"), attribute<&A::updatedAt>("updated_at")},
        .indexes = {{"id"}, {"start_time"}, {"end_time"}, {"project", "start_time"}},
        .make = []() -> std::shared_ptr<Entity> { return std::make_shared<A>(); }};
    return description;
}

}  // namespace quorvane
