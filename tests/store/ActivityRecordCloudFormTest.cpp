#include "store/ActivityRecordCloudForm.h"

#include "platform/Clock.h"
#include "store/EntityDescription.h"
#include "support/Matchers.h"
#include "support/RecordingConsole.h"
#include "support/TemporaryStore.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quorvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

using Record = ActivityRecord;
using Value = CloudRecord::Value;

const Uuid recordId = *Uuid::parse("0A0B0C0D-0000-4000-8000-00000000ABCD");
const Uuid projectId = *Uuid::parse("11111111-2222-4333-8444-555555555555");

class ActivityRecordCloudFormTest : public testing::Test {
protected:
    platform::ClockOverride clock{[] { return at("12:00:00"); }};
    TemporaryStore store;
    ModelContext& context = store.context();
    RecordingConsole console;

    static std::shared_ptr<Record> fullRecord() {
        return std::make_shared<Record>(Record::Values{.id = recordId,
                                                       .startTime = at("09:00:00"),
                                                       .endTime = at("09:30:00"),
                                                       .activityType = ActivityType::url,
                                                       .appBundleId = "org.example.browser",
                                                       .appName = "Browser",
                                                       .windowTitle = "Title",
                                                       .documentPath = "/a/b",
                                                       .url = "https://example.org/",
                                                       .category = ActivityCategory::work,
                                                       .tags = "a,b",
                                                       .source = "system",
                                                       .confidence = 0.5,
                                                       .billingStatus = BillingStatus::billable,
                                                       .deviceId = "device",
                                                       .userLocalId = "user",
                                                       .createdAt = at("09:00:01"),
                                                       .updatedAt = at("09:30:01"),
                                                       .cloudKitRecordID = "of an earlier copy"});
    }
    static CloudRecord fullCloudRecord() {
        return {.recordType = "ActivityRecord",
                .recordName = recordId.string(),
                .values = {{"localId", "0A0B0C0D-0000-4000-8000-00000000ABCD"},
                           {"startTime", at("09:00:00")},
                           {"endTime", at("09:30:00")},
                           {"activityType", "url"},
                           {"appBundleId", "org.example.browser"},
                           {"appName", "Browser"},
                           {"windowTitle", "Title"},
                           {"documentPath", "/a/b"},
                           {"url", "https://example.org/"},
                           {"category", "工作"},
                           {"tags", "a,b"},
                           {"source", "system"},
                           {"confidence", 0.5},
                           {"billingStatus", "billable"},
                           {"deviceId", "device"},
                           {"userLocalId", "user"},
                           {"createdAt", at("09:00:01")},
                           {"updatedAt", at("09:30:01")}}};
    }
    static CloudRecord with(CloudRecord record, const std::string& key, const Value& value) {
        record.values[key] = value;
        return record;
    }
    static CloudRecord without(CloudRecord record, const std::string& key) {
        record.values.erase(key);
        return record;
    }
    /// The columns of a record under their names.
    static std::map<std::string, SqlValue> columns(const Record& record) {
        std::map<std::string, SqlValue> values;
        for (const auto& attribute : Record::description().attributes)
            values[attribute.name] = attribute.get(record);
        return values;
    }
    static SqlValue stored(const std::string& text) { return text; }
    static SqlValue stored(Date date) { return microsecondsSince1970(date); }

    std::shared_ptr<Record> made(const CloudRecord& cloudRecord, bool inContext = false) {
        return makeActivityRecord(cloudRecord, inContext ? &context : nullptr, console);
    }
};

TEST_F(ActivityRecordCloudFormTest, ARecordTravelsWithAllItsValues) {
    const auto record = fullRecord();
    EXPECT_EQ(makeCloudRecord(*record), fullCloudRecord());

    record->project = std::make_shared<Project>();
    record->project()->id = projectId;
    EXPECT_EQ(makeCloudRecord(*record), with(fullCloudRecord(), "projectId", "11111111-2222-4333-8444-555555555555"));

    const Record bare({.id = recordId, .startTime = at("09:00:00")});
    EXPECT_EQ(makeCloudRecord(bare), (CloudRecord{.recordType = "ActivityRecord",
                                                  .recordName = recordId.string(),
                                                  .values = {{"localId", recordId.string()},
                                                             {"startTime", at("09:00:00")},
                                                             {"activityType", "app"},
                                                             {"tags", ""},
                                                             {"confidence", 1.0},
                                                             {"billingStatus", "review"},
                                                             {"createdAt", at("12:00:00")},
                                                             {"updatedAt", at("12:00:00")}}}));
}

TEST_F(ActivityRecordCloudFormTest, ANewRecordTakesEveryValueAndTheRecordsName) {
    const auto record = made(fullCloudRecord());
    auto expected = columns(*fullRecord());
    expected["cloud_kit_record_id"] = stored(recordId.string());
    EXPECT_EQ(columns(*record), expected);
    EXPECT_EQ(record->context(), nullptr);
}

TEST_F(ActivityRecordCloudFormTest, ANewRecordHasAFallbackForWhatIsMissingOrOfAnotherType) {
    struct Row {
        const char* key;
        const char* column;
        Value wrongType;
        SqlValue fallback;
    };
    const SqlValue none;
    const Row rows[] = {
        {"startTime", "start_time", "09:00", stored(at("12:00:00"))},
        {"endTime", "end_time", 5.0, none},
        {"activityType", "activity_type", 1.0, stored("app")},
        {"appBundleId", "app_bundle_id", true, none},
        {"appName", "app_name", 1.0, none},
        {"windowTitle", "window_title", at("09:00:00"), none},
        {"documentPath", "document_path", 1.0, none},
        {"url", "url", std::vector<std::string>{"a"}, none},
        {"category", "category", 1.0, none},
        {"tags", "tags", std::vector<std::string>{"a"}, stored("")},
        {"source", "source", true, none},
        {"confidence", "confidence", "0.5", 1.0},
        {"billingStatus", "billing_status", true, stored("review")},
        {"deviceId", "device_id", 1.0, none},
        {"userLocalId", "user_local_id", 1.0, none},
        {"createdAt", "created_at", 1.0, stored(at("12:00:00"))},
        {"updatedAt", "updated_at", 1.0, stored(at("12:00:00"))},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.key);
        auto expected = columns(*fullRecord());
        expected["cloud_kit_record_id"] = stored(recordId.string());
        expected[row.column] = row.fallback;
        EXPECT_EQ(columns(*made(without(fullCloudRecord(), row.key))), expected);
        EXPECT_EQ(columns(*made(with(fullCloudRecord(), row.key, row.wrongType))), expected);
    }
}

TEST_F(ActivityRecordCloudFormTest, ANewRecordKeepsOnlyKnownWords) {
    struct Row {
        const char* key;
        const char* value;
        const char* column;
        SqlValue expected;
    };
    const Row rows[] = {
        {"activityType", "sleep", "activity_type", stored("sleep")},
        {"activityType", "App", "activity_type", stored("app")},
        {"activityType", "game", "activity_type", stored("app")},
        {"category", "空闲", "category", stored("空闲")},
        {"category", "My own", "category", SqlValue{}},
        {"billingStatus", "excluded", "billing_status", stored("excluded")},
        {"billingStatus", "paid", "billing_status", stored("review")},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.value);
        EXPECT_EQ(columns(*made(with(fullCloudRecord(), row.key, row.value)))[row.column], row.expected);
    }
}

TEST_F(ActivityRecordCloudFormTest, WithoutAReadableIdANewRecordGetsAFreshOne) {
    for (const CloudRecord& cloudRecord :
         {without(fullCloudRecord(), "localId"), with(fullCloudRecord(), "localId", "no id"),
          with(fullCloudRecord(), "localId", 5.0)}) {
        const auto record = made(cloudRecord);
        EXPECT_NE(record->id(), recordId);
        EXPECT_NE(record->id(), Uuid());
        EXPECT_EQ(record->cloudKitRecordID(), recordId.string());
    }
    EXPECT_EQ(made(with(fullCloudRecord(), "localId", "0a0b0c0d-0000-4000-8000-00000000abcd"))->id(), recordId);
}

TEST_F(ActivityRecordCloudFormTest, OnlyAStrictlyNewerFormIsMerged) {
    for (const CloudRecord& cloudRecord :
         {with(fullCloudRecord(), "updatedAt", at("09:30:00.999999")), fullCloudRecord(),
          without(fullCloudRecord(), "updatedAt"), with(fullCloudRecord(), "updatedAt", "2100-01-01T00:00:00Z")}) {
        const auto record = fullRecord();
        const auto before = columns(*record);
        auto differing = with(cloudRecord, "appName", "Other");
        differing.recordName = "other";
        applyCloudRecord(*record, differing, nullptr, console);
        EXPECT_EQ(columns(*record), before);
    }
    const auto record = fullRecord();
    applyCloudRecord(*record, with(with(fullCloudRecord(), "updatedAt", at("09:30:01.000001")), "appName", "Other"),
                     nullptr, console);
    EXPECT_EQ(record->appName(), "Other");
}

TEST_F(ActivityRecordCloudFormTest, AMergeTakesTheNewerFormAsAWhole) {
    struct Row {
        const char* name;
        CloudRecord cloudRecord;
        const char* column;
        SqlValue expected;
    };
    const CloudRecord newer = with(fullCloudRecord(), "updatedAt", at("10:00:00"));
    const SqlValue none;
    const Row rows[] = {
        {"all values", newer, "updated_at", stored(at("10:00:00"))},
        {"start", with(newer, "startTime", at("08:00:00")), "start_time", stored(at("08:00:00"))},
        {"no start", without(newer, "startTime"), "start_time", stored(at("09:00:00"))},
        {"end", with(newer, "endTime", at("11:00:00")), "end_time", stored(at("11:00:00"))},
        {"no end opens it again", without(newer, "endTime"), "end_time", none},
        {"end of another type", with(newer, "endTime", "later"), "end_time", none},
        {"unknown type", with(newer, "activityType", "game"), "activity_type", stored("game")},
        {"no type", without(newer, "activityType"), "activity_type", stored("url")},
        {"no bundle", without(newer, "appBundleId"), "app_bundle_id", none},
        {"no name", without(newer, "appName"), "app_name", none},
        {"no title", without(newer, "windowTitle"), "window_title", none},
        {"no document", without(newer, "documentPath"), "document_path", none},
        {"no url", without(newer, "url"), "url", none},
        {"a category of the user's", with(newer, "category", "My own"), "category", stored("My own")},
        {"no category", without(newer, "category"), "category", none},
        {"tags", with(newer, "tags", ""), "tags", stored("")},
        {"no tags", without(newer, "tags"), "tags", stored("a,b")},
        {"no source", without(newer, "source"), "source", none},
        {"confidence", with(newer, "confidence", 0.25), "confidence", 0.25},
        {"no confidence", without(newer, "confidence"), "confidence", 0.5},
        {"unknown status", with(newer, "billingStatus", "paid"), "billing_status", stored("paid")},
        {"no status", without(newer, "billingStatus"), "billing_status", stored("billable")},
        {"no device", without(newer, "deviceId"), "device_id", none},
        {"no user", without(newer, "userLocalId"), "user_local_id", none},
        {"creation stays", with(newer, "createdAt", at("08:00:00")), "created_at", stored(at("09:00:01"))},
        {"id stays", with(newer, "localId", projectId.string()), "id", ValueTraits<Uuid>::toSql(recordId)},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto record = fullRecord();
        auto expected = columns(*record);
        expected["updated_at"] = stored(at("10:00:00"));
        expected["cloud_kit_record_id"] = stored(recordId.string());
        expected[row.column] = row.expected;
        applyCloudRecord(*record, row.cloudRecord, nullptr, console);
        EXPECT_EQ(columns(*record), expected);
    }
}

TEST_F(ActivityRecordCloudFormTest, TheProjectIsFoundOrMadeWhereThereIsAContext) {
    const CloudRecord assigned =
        with(with(fullCloudRecord(), "projectId", projectId.string()), "updatedAt", at("10:00:00"));
    EXPECT_EQ(made(assigned, false)->project(), nullptr);

    const auto record = made(assigned, true);
    ASSERT_NE(record->project(), nullptr);
    EXPECT_EQ(record->project()->id(), projectId);
    EXPECT_EQ(made(assigned, true)->project(), record->project());  // found this time
    EXPECT_EQ(made(with(assigned, "projectId", "no id"), true)->project(), nullptr);

    const auto merged = fullRecord();
    const auto local = insertProject(context, "local");
    merged->project = local;
    applyCloudRecord(*merged, assigned, nullptr, console);
    EXPECT_EQ(merged->project(), local);
    applyCloudRecord(*merged, with(with(assigned, "updatedAt", at("11:00:00")), "projectId", "no id"), &context,
                     console);
    EXPECT_EQ(merged->project(), local);
    applyCloudRecord(*merged, with(without(assigned, "projectId"), "updatedAt", at("11:30:00")), &context, console);
    EXPECT_EQ(merged->project(), local);  // the cloud can't take a project away
    applyCloudRecord(*merged, with(assigned, "updatedAt", at("12:00:00")), &context, console);
    EXPECT_EQ(merged->project(), record->project());
    EXPECT_THAT(console.lines(), IsEmpty());
}

TEST_F(ActivityRecordCloudFormTest, APlaceholderProjectIsSavedAtOnce) {
    const auto project = findOrCreateProject(projectId, context, console);
    ASSERT_NE(project, nullptr);
    EXPECT_EQ(findOrCreateProject(projectId, context, console), project);
    EXPECT_FALSE(context.hasChanges());
    store.reopen();
    const auto stored = store.context().fetch<Project>();
    ASSERT_THAT(stored, testing::SizeIs(1));
    EXPECT_EQ(stored[0]->id(), projectId);
    EXPECT_EQ(stored[0]->name(), "未分类项目");
    EXPECT_EQ(stored[0]->color(), "gray");
    EXPECT_EQ(stored[0]->hourlyRate(), 0.0);
    EXPECT_EQ(stored[0]->currencyCode(), "USD");
    EXPECT_EQ(stored[0]->createdAt(), at("12:00:00"));
    EXPECT_EQ(stored[0]->updatedAt(), at("12:00:00"));
    EXPECT_FALSE(stored[0]->isArchived());
}

TEST_F(ActivityRecordCloudFormTest, AFailedSaveLeavesThePlaceholderPendingAndSaysWhy) {
    SQLite::Database other(store.file().string(), SQLite::OPEN_READWRITE);
    other.exec("CREATE TRIGGER refuse BEFORE INSERT ON project BEGIN SELECT RAISE(ABORT, 'refused'); END");
    const auto merged = fullRecord();
    merged->project = insertProject(context, "local");
    applyCloudRecord(*merged,
                     with(with(fullCloudRecord(), "projectId", projectId.string()), "updatedAt", at("10:00:00")),
                     &context, console);
    EXPECT_EQ(merged->project(), nullptr);
    EXPECT_THAT(console.lines(), ElementsAre("查找或创建项目失败: " + store.file().string() + ": refused"));
    EXPECT_EQ(context.count(field(&Project::id) == projectId), 1U);
    other.exec("DROP TRIGGER refuse");
    context.save();
    EXPECT_EQ(store.anotherContext()->count<Project>(), 2U);

    other.exec("DROP TABLE project");
    EXPECT_EQ(findOrCreateProject(projectId, context, console), nullptr);
    EXPECT_THAT(console.lines(), ElementsAre(testing::_, StartsWith("查找或创建项目失败: ")));
}

}  // namespace
}  // namespace quorvane
