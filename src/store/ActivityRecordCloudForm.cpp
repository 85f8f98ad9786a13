#include "store/ActivityRecordCloudForm.h"

#include "diagnostics/ConsoleSink.h"
#include "store/ModelContext.h"

namespace quorvane {
namespace {

using Text = std::string;

void put(platform::CloudRecord& record, const char* key, const std::optional<std::string>& value) {
    if (value) record.values[key] = *value;
}

std::optional<Uuid> uuidUnder(const platform::CloudRecord& cloudRecord, const char* key) {
    const auto text = cloudRecord.get<Text>(key);
    return text ? Uuid::parse(*text) : std::nullopt;
}

void takeProject(ActivityRecord& record, const platform::CloudRecord& cloudRecord, ModelContext* context,
                 ConsoleSink& console, const Localization& localization) {
    const auto projectId = uuidUnder(cloudRecord, "projectId");
    if (context != nullptr && projectId)
        record.project = findOrCreateProject(*projectId, *context, console, localization);
}

/// Raw text of the enumeration's case, if the text is one of them.
template <class Enumeration>
std::optional<std::string> known(const std::optional<std::string>& text) {
    const auto value = text ? fromRawValue<Enumeration>(*text) : std::nullopt;
    return value ? std::optional<std::string>(rawValue(*value)) : std::nullopt;
}

void takeTexts(ActivityRecord& record, const platform::CloudRecord& cloudRecord) {
    record.appBundleId = cloudRecord.get<Text>("appBundleId");
    record.appName = cloudRecord.get<Text>("appName");
    record.windowTitle = cloudRecord.get<Text>("windowTitle");
    record.documentPath = cloudRecord.get<Text>("documentPath");
    record.url = cloudRecord.get<Text>("url");
    record.source = cloudRecord.get<Text>("source");
    record.deviceId = cloudRecord.get<Text>("deviceId");
    record.userLocalId = cloudRecord.get<Text>("userLocalId");
}

}  // namespace

platform::CloudRecord makeCloudRecord(const ActivityRecord& record) {
    platform::CloudRecord out{.recordType = "ActivityRecord", .recordName = record.id().string()};
    out.values["localId"] = record.id().string();
    out.values["startTime"] = record.startTime();
    if (record.endTime()) out.values["endTime"] = *record.endTime();
    out.values["activityType"] = record.activityType();
    put(out, "appBundleId", record.appBundleId());
    put(out, "appName", record.appName());
    put(out, "windowTitle", record.windowTitle());
    put(out, "documentPath", record.documentPath());
    put(out, "url", record.url());
    put(out, "category", record.category());
    out.values["tags"] = record.tags();
    put(out, "source", record.source());
    out.values["confidence"] = record.confidence();
    out.values["billingStatus"] = record.billingStatus();
    put(out, "deviceId", record.deviceId());
    put(out, "userLocalId", record.userLocalId());
    out.values["createdAt"] = record.createdAt();
    out.values["updatedAt"] = record.updatedAt();
    if (const auto project = record.project()) out.values["projectId"] = project->id().string();
    return out;
}

std::shared_ptr<ActivityRecord> makeActivityRecord(const platform::CloudRecord& cloudRecord, ModelContext* context,
                                                   ConsoleSink& console, const Localization& localization) {
    const Date now = platform::currentDate();
    auto record = std::make_shared<ActivityRecord>();
    record->id = uuidUnder(cloudRecord, "localId").value_or(Uuid::random());
    record->startTime = cloudRecord.get<Date>("startTime").value_or(now);
    record->endTime = cloudRecord.get<Date>("endTime");
    record->activityType = known<ActivityType>(cloudRecord.get<Text>("activityType")).value_or("app");
    takeTexts(*record, cloudRecord);
    record->category = known<ActivityCategory>(cloudRecord.get<Text>("category"));
    record->tags = cloudRecord.get<Text>("tags").value_or("");
    record->confidence = cloudRecord.get<double>("confidence").value_or(1.0);
    record->billingStatus = known<BillingStatus>(cloudRecord.get<Text>("billingStatus")).value_or("review");
    record->createdAt = cloudRecord.get<Date>("createdAt").value_or(now);
    record->updatedAt = cloudRecord.get<Date>("updatedAt").value_or(now);
    record->cloudKitRecordID = cloudRecord.recordName;
    takeProject(*record, cloudRecord, context, console, localization);
    return record;
}

void applyCloudRecord(ActivityRecord& record, const platform::CloudRecord& cloudRecord, ModelContext* context,
                      ConsoleSink& console, const Localization& localization) {
    const auto updatedAt = cloudRecord.get<Date>("updatedAt");
    if (!updatedAt || *updatedAt <= record.updatedAt()) return;
    record.startTime = cloudRecord.get<Date>("startTime").value_or(record.startTime());
    record.endTime = cloudRecord.get<Date>("endTime");
    record.activityType = cloudRecord.get<Text>("activityType").value_or(record.activityType());
    takeTexts(record, cloudRecord);
    record.category = cloudRecord.get<Text>("category");
    record.tags = cloudRecord.get<Text>("tags").value_or(record.tags());
    record.confidence = cloudRecord.get<double>("confidence").value_or(record.confidence());
    record.billingStatus = cloudRecord.get<Text>("billingStatus").value_or(record.billingStatus());
    record.updatedAt = *updatedAt;
    record.cloudKitRecordID = cloudRecord.recordName;
    takeProject(record, cloudRecord, context, console, localization);
}

std::shared_ptr<Project> findOrCreateProject(const Uuid& id, ModelContext& context, ConsoleSink& console,
                                             const Localization& localization) {
    try {
        const auto found = context.fetch<Project>({.predicate = field(&Project::id) == id});
        if (!found.empty()) return found.front();
        auto project = std::make_shared<Project>();
        project->id = id;
        project->name = localization.text("uncategorized_project");
        project->color = "gray";
        context.insert(project);
        context.save();
        return project;
    } catch (const StoreError& error) {
        console.line("查找或创建项目失败: {}", error.what());
        return nullptr;
    }
}

}  // namespace quorvane
