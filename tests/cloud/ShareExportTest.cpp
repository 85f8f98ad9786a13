#include "cloud/ShareExport.h"

#include "support/Builders.h"
#include "support/Matching.h"
#include "support/TemporaryStore.h"

namespace quorvane {
namespace {

const Uuid exportedProject = *Uuid::parse("11111111-2222-4333-8444-555555555555");

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

class ShareExportTest : public testing::Test {
protected:
    void SetUp() override {
        project->id = exportedProject;
        share.shareToken = "c0fea20cdb3240c6";
        share.title = "March";
        share.createdAt = at("2026-03-02T12:00:00Z");
    }

    static std::string document(const std::string& name) { return contentOf(QUORVANE_CLOUD_DATA "/" + name + ".json"); }

    ActivityShare share;
    std::shared_ptr<Project> project = std::make_shared<Project>();
    std::vector<std::shared_ptr<ActivityRecord>> records{fullRecord(project), bareRecord()};
};

TEST_F(ShareExportTest, AShareOfAllProjectsHoldsEveryRecordWithEveryKey) {
    EXPECT_EQ(prettyJsonText(shareDocument(share, records)) + "\n", document("share-of-all-projects"));
}

TEST_F(ShareExportTest, AShareOfProjectsHoldsTheirRecordsAlone) {
    share.expiresAt = at("2026-04-01T00:00:00Z");
    share.projectIds = {Uuid::random(), exportedProject};
    records.push_back(fullRecord(std::make_shared<Project>()));
    EXPECT_EQ(prettyJsonText(shareDocument(share, records)) + "\n", document("share-of-two-projects"));
    EXPECT_EQ(jsonText(shareDocument(share, {})["activities"]), "[]");
}

}  // namespace
}  // namespace quorvane
