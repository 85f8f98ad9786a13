#include "cloud/ShareRecord.h"

#include "cloud/CloudKitDataStrategy.h"

namespace quorvane {

platform::CloudRecord makeCloudRecord(const ActivityShare& share) {
    platform::CloudRecord record{.recordType = std::string(CloudKitDataStrategy::PublicData::activityShare),
                                 .recordName = share.shareToken()};
    std::vector<std::string> projectIds;
    projectIds.reserve(share.projectIds().size());
    for (const Uuid& id : share.projectIds())
        projectIds.push_back(id.string());
    record.values = {{"title", share.title()},
                     {"isActive", share.isActive()},
                     {"createdAt", share.createdAt()},
                     {"projectIds", std::move(projectIds)}};
    if (share.expiresAt()) record.values["expiresAt"] = *share.expiresAt();
    return record;
}

}  // namespace quorvane
