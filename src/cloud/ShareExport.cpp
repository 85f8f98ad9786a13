#include "cloud/ShareExport.h"

#include "base/Iso8601.h"
#include "store/ActivityRecordCloudForm.h"

#include <algorithm>

namespace quorvane {
namespace {

/// The keys of a record's cloud form in the order of its attributes; `id` stands for `localId` before them.
constexpr const char* recordKeys[] = {"startTime",   "endTime",      "activityType",  "appBundleId", "appName",
                                      "windowTitle", "documentPath", "url",           "category",    "tags",
                                      "source",      "confidence",   "billingStatus", "deviceId",    "userLocalId",
                                      "createdAt",   "updatedAt",    "projectId"};

Json jsonOf(const platform::CloudRecord::Value& value) {
    return std::visit(
        [](const auto& held) {
            if constexpr (std::is_same_v<std::decay_t<decltype(held)>, Date>)
                return Json(iso8601Seconds(held));
            else
                return Json(held);
        },
        value);
}

Json jsonOf(const ActivityRecord& record) {
    const auto form = makeCloudRecord(record);
    Json out = {{"id", record.id().string()}};
    for (const char* key : recordKeys) {
        const auto found = form.values.find(key);
        out[key] = found == form.values.end() ? Json() : jsonOf(found->second);
    }
    return out;
}

bool takes(const ActivityShare& share, const ActivityRecord& record) {
    if (!share.isProjectSpecific()) return true;
    const auto project = record.project();
    return project && std::ranges::find(share.projectIds(), project->id()) != share.projectIds().end();
}

}  // namespace

Json shareDocument(const ActivityShare& share, const std::vector<std::shared_ptr<ActivityRecord>>& records) {
    Json activities = Json::array();
    for (const auto& record : records)
        if (takes(share, *record)) activities.push_back(jsonOf(*record));
    return {{"shareInfo",
             {{"title", share.title()},
              {"createdAt", iso8601Seconds(share.createdAt())},
              {"expiresAt", share.expiresAt() ? Json(iso8601Seconds(*share.expiresAt())) : Json()},
              {"projectSpecific", share.isProjectSpecific()},
              {"projectCount", share.projectCount()}}},
            {"activities", std::move(activities)}};
}

}  // namespace quorvane
