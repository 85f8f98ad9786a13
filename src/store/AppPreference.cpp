#include "store/AppPreference.h"

#include "store/EntityDescription.h"

namespace quorvane {

const EntityDescription& AppPreference::description() {
    using P = AppPreference;
    static const EntityDescription description{
        .name = "AppPreference",
        .table = "app_preference",
        .attributes = {attribute<&P::id>("id"), attribute<&P::idleThresholdSeconds>("idle_threshold_seconds"),
                       attribute<&P::minActivitySeconds>("min_activity_seconds"),
                       attribute<&P::collectWindowTitle>("collect_window_title"),
                       attribute<&P::collectDocumentPath>("collect_document_path"),
                       attribute<&P::collectURL>("collect_url"), attribute<&P::askAfterLongIdle>("ask_after_long_idle"),
                       attribute<&P::iCloudContainerUrl>("i_cloud_container_url"),
                       attribute<&P::createdAt>("created_at"), attribute<&P::updatedAt>("updated_at")},
        .indexes = {{"id"}},
        .make = []() -> std::shared_ptr<Entity> { return std::make_shared<P>(); }};
    return description;
}

}  // namespace quorvane
