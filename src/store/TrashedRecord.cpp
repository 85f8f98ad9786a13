#include "store/TrashedRecord.h"

#include "store/EntityDescription.h"

namespace quorvane {

const EntityDescription& TrashedRecord::description() {
    using T = TrashedRecord;
    static const EntityDescription description{
        .name = "TrashedRecord",
        .table = "record_trash",
        .attributes = {attribute<&T::recordId>("record_id"), attribute<&T::removedAt>("removed_at"),
                       attribute<&T::pass>("pass"), attribute<&T::record>("record"),
                       attribute<&T::restoredAt>("restored_at")},
        .indexes = {{"record_id"}, {"removed_at"}},
        .make = []() -> std::shared_ptr<Entity> { return std::make_shared<T>(); }};
    return description;
}

}  // namespace quorvane
