#include "cloud/ShareExport.h"

#include "support/Builders.h"
#include "support/TemporaryStore.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace quorvane {
namespace {

const Uuid projectId = *Uuid::parse("11111111-2222-4333-8444-555555555555");

std::shared_ptr<ActivityRecord> fullRecord(const std::shared_ptr<Project>& project) {
    return std::make_shared<ActivityRecord>(
        ActivityRecord::Values{.id = *Uuid::parse("0A0B0C0D-0000-4000-8000-00000000ABCD"),
                               .startTime = at("2026-03-02T09:00:00Z"),
                               .endTime = at("2026-03-02T09:30:00.75Z"),
                               .activityType = ActivityType::url,
                               .appBundleId = "org.example.browser",
                               .appName = "Browser",
                               .windowTitle = "\"Plan\" \n全部\xFF",
                               .documentPath = "/home/ann/plan.odt",
                               .url = "https://example.org/",
                               .category = ActivityCategory::work,
                               .tags = "a,b",
                               .source = "system",
                               .confidence = 0.5,
                               .billingStatus = BillingStatus::billable,
                               .deviceId = "device",
                               .userLocalId = "user",
                               .createdAt = at("2026-03-02T09:00:01Z"),
                               .updatedAt = at("2026-03-02T09:30:01Z"),
                               .cloudKitRecordID = "of a copy",
                               .project = project});
}

std::shared_ptr<ActivityRecord> bareRecord() {
    return std::make_shared<ActivityRecord>(
        ActivityRecord::Values{.id = *Uuid::parse("0A0B0C0D-0000-4000-8000-00000000ABCE"),
                               .startTime = at("2026-03-02T10:00:00Z"),
                               .createdAt = at("2026-03-02T10:00:00Z"),
                               .updatedAt = at("2026-03-02T10:00:00Z")});
}

constexpr const char* fullActivity = R"({
      "id": "0A0B0C0D-0000-4000-8000-00000000ABCD",
      "startTime": "2026-03-02T09:00:00Z",
      "endTime": "2026-03-02T09:30:00Z",
      "activityType": "url",
      "appBundleId": "org.example.browser",
      "appName": "Browser",
      "windowTitle": "\"Plan\" \n全部�",
      "documentPath": "/home/ann/plan.odt",
      "url": "https://example.org/",
      "category": "工作",
      "tags": "a,b",
      "source": "system",
      "confidence": 0.5,
      "billingStatus": "billable",
      "deviceId": "device",
      "userLocalId": "user",
      "createdAt": "2026-03-02T09:00:01Z",
      "updatedAt": "2026-03-02T09:30:01Z",
      "projectId": "11111111-2222-4333-8444-555555555555"
    })";

constexpr const char* bareActivity = R"({
      "id": "0A0B0C0D-0000-4000-8000-00000000ABCE",
      "startTime": "2026-03-02T10:00:00Z",
      "endTime": null,
      "activityType": "app",
      "appBundleId": null,
      "appName": null,
      "windowTitle": null,
      "documentPath": null,
      "url": null,
      "category": null,
      "tags": "",
      "source": null,
      "confidence": 1.0,
      "billingStatus": "review",
      "deviceId": null,
      "userLocalId": null,
      "createdAt": "2026-03-02T10:00:00Z",
      "updatedAt": "2026-03-02T10:00:00Z",
      "projectId": null
    })";

std::string document(const std::string& info, const std::vector<std::string>& activities) {
    return fmt::format("{{\n  \"shareInfo\": {},\n  \"activities\": [\n    {}\n  ]\n}}", info,
                       fmt::join(activities, ",\n    "));
}

class ShareExportTest : public testing::Test {
protected:
    void SetUp() override {
        project->id = projectId;
        share.shareToken = "c0fea20cdb3240c6";
        share.title = "March";
        share.createdAt = at("2026-03-02T12:00:00Z");
    }

    ActivityShare share;
    std::shared_ptr<Project> project = std::make_shared<Project>();
    std::vector<std::shared_ptr<ActivityRecord>> records{fullRecord(project), bareRecord()};
};

TEST_F(ShareExportTest, AShareOfAllProjectsHoldsEveryRecordWithEveryKey) {
    const std::string info = R"({
    "title": "March",
    "createdAt": "2026-03-02T12:00:00Z",
    "expiresAt": null,
    "projectSpecific": false,
    "projectCount": 0
  })";
    EXPECT_EQ(prettyJsonText(shareDocument(share, records)), document(info, {fullActivity, bareActivity}));
}

TEST_F(ShareExportTest, AShareOfProjectsHoldsTheirRecordsAlone) {
    share.expiresAt = at("2026-04-01T00:00:00Z");
    share.projectIds = {Uuid::random(), projectId};
    records.push_back(fullRecord(std::make_shared<Project>()));
    const std::string info = R"({
    "title": "March",
    "createdAt": "2026-03-02T12:00:00Z",
    "expiresAt": "2026-04-01T00:00:00Z",
    "projectSpecific": true,
    "projectCount": 2
  })";
    EXPECT_EQ(prettyJsonText(shareDocument(share, records)), document(info, {fullActivity}));
    EXPECT_EQ(jsonText(shareDocument(share, {})["activities"]), "[]");
}

}  // namespace
}  // namespace quorvane
