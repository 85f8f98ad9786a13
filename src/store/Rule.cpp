#include "store/Rule.h"

#include "store/EntityDescription.h"

namespace quorvane {

const EntityDescription& Rule::description() {
    static const EntityDescription description{
        .name = "Rule",
        .table = "rule",
        .attributes = {attribute<&Rule::id>("id"), attribute<&Rule::name>("name"),
                       attribute<&Rule::priority>("priority"), attribute<&Rule::isEnabled>("is_enabled"),
                       attribute<&Rule::type>("type"), attribute<&Rule::condition>("condition"),
                       attribute<&Rule::action>("action"), attribute<&Rule::createdAt>("created_at"),
                       attribute<&Rule::updatedAt>("updated_at")},
        .indexes = {{"id"}},
        .make = []() -> std::shared_ptr<Entity> { return std::make_shared<Rule>(); }};
    return description;
}

}  // namespace quorvane
