#include "store/ActivityShare.h"

#include "store/EntityDescription.h"

namespace quorvane {

const EntityDescription& ActivityShare::description() {
    using S = ActivityShare;
    static const EntityDescription description{
        .name = "ActivityShare",
        .table = "activity_share",
        .attributes = {attribute<&S::id>("id"), attribute<&S::shareToken>("share_token"), attribute<&S::title>("title"),
                       attribute<&S::isActive>("is_active"), attribute<&S::createdAt>("created_at"),
                       attribute<&S::expiresAt>("expires_at"), attribute<&S::projectIds>("project_ids"),
                       attribute<&S::cloudKitRecordID>("cloud_kit_record_id")},
        .indexes = {{"id"}},
        .make = []() -> std::shared_ptr<Entity> { return std::make_shared<S>(); }};
    return description;
}

}  // namespace quorvane
