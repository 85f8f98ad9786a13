#include "store/ActivityRecord.h"

#include "base/Text.h"
#include "store/EntityDescription.h"
#include "store/LongRecords.h"

#include <algorithm>

namespace quorvane {

const EntityDescription& ActivityRecord::description() {
    using R = ActivityRecord;
    static const EntityDescription description{
        .name = "ActivityRecord",
        .table = "activity_record",
        .attributes = {attribute<&R::id>("id"),
                       attribute<&R::startTime>("start_time"),
                       attribute<&R::endTime>("end_time"),
                       attribute<&R::activityType>("activity_type"),
                       attribute<&R::appBundleId>("app_bundle_id"),
                       attribute<&R::appName>("app_name"),
                       attribute<&R::windowTitle>("window_title"),
                       attribute<&R::documentPath>("document_path"),
                       attribute<&R::url>("url"),
                       attribute<&R::category>("category"),
                       attribute<&R::tags>("tags"),
                       attribute<&R::source>("source"),
                       attribute<&R::confidence>("confidence"),
                       attribute<&R::billingStatus>("billing_status"),
                       attribute<&R::deviceId>("device_id"),
                       attribute<&R::userLocalId>("user_local_id"),
                       attribute<&R::createdAt>("created_at"),
                       attribute<&R::updatedAt>("updated_at"),
                       attribute<&R::cloudKitRecordID>("cloud_kit_record_id"),
                       attribute<&R::project>("project_id")},
        // The end answers "what overlaps this range" and "what is open" without a look at the history.
        // The name in the cloud answers "what was never uploaded", newest first.
        .indexes =
            {{"id"}, {"start_time"}, {"end_time"}, {"project", "start_time"}, {"cloud_kit_record_id", "start_time"}},
        .partialIndexes = {{"activity_record_over_a_day", {"end_time"}, std::string(LongRecords::sql)}},
        .make = []() -> std::shared_ptr<Entity> { return std::make_shared<R>(); }};
    return description;
}

ActivityRecord::ActivityRecord(Values values) {
    id = values.id;
    startTime = values.startTime;
    endTime = values.endTime;
    activityType = std::string(rawValue(values.activityType));
    appBundleId = std::move(values.appBundleId);
    appName = std::move(values.appName);
    windowTitle = std::move(values.windowTitle);
    documentPath = std::move(values.documentPath);
    url = std::move(values.url);
    if (values.category) category = std::string(rawValue(*values.category));
    tags = std::move(values.tags);
    source = std::move(values.source);
    confidence = values.confidence;
    billingStatus = std::string(rawValue(values.billingStatus));
    deviceId = std::move(values.deviceId);
    userLocalId = std::move(values.userLocalId);
    createdAt = values.createdAt;
    updatedAt = values.updatedAt;
    cloudKitRecordID = std::move(values.cloudKitRecordID);
    project = std::move(values.project);
}

BillingStatus ActivityRecord::billingStatusValue() const {
    return fromRawValue<BillingStatus>(billingStatus()).value_or(BillingStatus::review);
}

void ActivityRecord::setBillingStatus(BillingStatus status) {
    billingStatus = std::string(rawValue(status));
    updatedAt = platform::currentDate();
}

std::vector<std::string> ActivityRecord::tagList() const {
    if (tags().empty()) return {};
    auto list = text::split(tags(), ',');
    std::transform(list.begin(), list.end(), list.begin(), text::trimmed);
    return list;
}

void ActivityRecord::setTagList(const std::vector<std::string>& list) {
    tags = text::joined(list, ",");
}

void ActivityRecord::addTag(std::string_view tag) {
    const std::string trimmed = text::trimmed(tag);
    auto list = tagList();
    if (trimmed.empty() || std::find(list.begin(), list.end(), trimmed) != list.end()) return;
    list.push_back(trimmed);
    setTagList(list);
}

}  // namespace quorvane
