#include "store/Absence.h"

#include "store/EntityDescription.h"

namespace quorvane {

const EntityDescription& Absence::description() {
    using A = Absence;
    static const EntityDescription description{
        .name = "Absence",
        .table = "absence",
        .attributes = {attribute<&A::startTime>("start_time"), attribute<&A::endTime>("end_time"),
                       attribute<&A::isLeftEmpty>("is_left_empty")},
        .indexes = {{"start_time"}},
        .make = []() -> std::shared_ptr<Entity> { return std::make_shared<A>(); }};
    return description;
}

}  // namespace quorvane
