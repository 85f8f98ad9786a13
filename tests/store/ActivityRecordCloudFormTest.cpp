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
using Value = platform::CloudRecord::Value;

const Uuid recordId = *Uuid::parse("0A0B0C0D-0000-4000-8000-00000000ABCD");
const Uuid projectId = *Uuid::parse("11111111-2222-4333-8444-555555555555");

SqlValue stored(const std::string& text) {
    return text;
}
SqlValue stored(Date date) {
    return microsecondsSince1970(date);
}

/// One value of a full record, in both forms, and what becomes of it in a new record where it is missing.
struct AttributeForm {
    const char* key;
    const char* column;
    Value inCloud;
    SqlValue inRecord;
    Value wrongType;
    SqlValue fallback;
};
const SqlValue none;
const std::vector<AttributeForm>& attributes() {
    static const std::vector<AttributeForm> all{
        {"startTime", "start_time", at("09:00:00"), stored(at("09:00:00")), "09:00", stored(at("12:00:00"))},
        {"endTime", "end_time", at("09:30:00"), stored(at("09:30:00")), 5.0, none},
        {"activityType", "activity_type", "url", stored("url"), 1.0, stored("app")},
        {"appBundleId", "app_bundle_id", "org.example.browser", stored("org.example.browser"), true, none},
        {"appName", "app_name", "Browser", stored("Browser"), 1.0, none},
        {"windowTitle", "window_title", "Title", stored("Title"), at("09:00:00"), none},
        {"documentPath", "document_path", "/a/b", stored("/a/b"), 1.0, none},
        {"url", "url", "https://example.org/", stored("https://example.org/"), std::vector<std::string>{"a"}, none},
        {"category", "category", "工作", stored("工作"), 1.0, none},
        {"tags", "tags", "a,b", stored("a,b"), std::vector<std::string>{"a"}, stored("")},
        {"source", "source", "system", stored("system"), true, none},
        {"confidence", "confidence", 0.5, 0.5, "0.5", 1.0},
        {"billingStatus", "billing_status", "billable", stored("billable"), true, stored("review")},
        {"deviceId", "device_id", "device", stored("device"), 1.0, none},
        {"userLocalId", "user_local_id", "user", stored("user"), 1.0, none},
        {"createdAt", "created_at", at("09:00:01"), stored(at("09:00:01")), 1.0, stored(at("12:00:00"))},
        {"updatedAt", "updated_at", at("09:30:01"), stored(at("09:30:01")), 1.0, stored(at("12:00:00"))},
    };
    return all;
}

class ActivityRecordCloudFormTest : public testing::Test {
protected:
    platform::ClockOverride clock{[] { return at("12:00:00"); }};
    TemporaryStore store;
    ModelContext& context = store.context();
    RecordingConsole console;

    static std::shared_ptr<Record> fullRecord() {
        auto record =
            std::make_shared<Record>(Record::Values{.id = recordId, .cloudKitRecordID = "of an earlier copy"});
        for (const auto& form : attributes())
            Record::description().attribute(form.column)->set(*record, form.inRecord);
        return record;
    }
    static platform::CloudRecord fullCloudRecord() {
        platform::CloudRecord record{.recordType = "ActivityRecord",
                                     .recordName = recordId.string(),
                                     .values = {{"localId", "0A0B0C0D-0000-4000-8000-00000000ABCD"}}};
        for (const auto& form : attributes())
            record.values[form.key] = form.inCloud;
        return record;
    }
    static platform::CloudRecord with(platform::CloudRecord record, const std::string& key, const Value& value) {
        record.values[key] = value;
        return record;
    }
    static platform::CloudRecord without(platform::CloudRecord record, const std::string& key) {
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

    /// What a merge of a form of 10:00 changes in any case.
    static std::map<std::string, SqlValue> merged(std::map<std::string, SqlValue> columns) {
        columns["updated_at"] = stored(at("10:00:00"));
        columns["cloud_kit_record_id"] = stored(recordId.string());
        return columns;
    }
    std::map<std::string, SqlValue> columnsAfterMerging(const platform::CloudRecord& form) {
        const auto record = fullRecord();
        applyCloudRecord(*record, with(form, "updatedAt", at("10:00:00")), nullptr, console);
        return columns(*record);
    }

    std::shared_ptr<Record> made(const platform::CloudRecord& cloudRecord, bool inContext = false) {
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
    EXPECT_EQ(makeCloudRecord(bare), (platform::CloudRecord{.recordType = "ActivityRecord",
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

TEST_F(ActivityRecordCloudFormTest, WhatIsMissingOrOfAnotherTypeHasAFallbackAndAMergeClearsOnlyWhatMayBeAbsent) {
    for (const auto& [key, column, inCloud, inRecord, wrongType, fallback] : attributes()) {
        SCOPED_TRACE(key);
        for (const auto& form : {without(fullCloudRecord(), key), with(fullCloudRecord(), key, wrongType)}) {
            auto expected = columns(*fullRecord());
            expected["cloud_kit_record_id"] = stored(recordId.string());
            expected[column] = fallback;
            EXPECT_EQ(columns(*made(form)), expected);

            if (key == std::string("updatedAt")) continue;  // such a form is never merged
            expected = merged(columns(*fullRecord()));
            if (fallback == none) expected[column] = none;
            EXPECT_EQ(columnsAfterMerging(form), expected);
        }
    }
}

TEST_F(ActivityRecordCloudFormTest, WithoutAReadableIdANewRecordGetsAFreshOne) {
    for (const platform::CloudRecord& cloudRecord :
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
    for (const platform::CloudRecord& cloudRecord :
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

TEST_F(ActivityRecordCloudFormTest, ANewRecordKeepsOnlyKnownWordsAndAMergeTakesTheNewerFormAsItIs) {
    struct Row {
        const char* key;
        Value value;
        const char* column;
        SqlValue whenNew;
        SqlValue whenMerged;
    };
    const Row rows[] = {
        {"startTime", at("08:00:00"), "start_time", stored(at("08:00:00")), stored(at("08:00:00"))},
        {"endTime", at("11:00:00"), "end_time", stored(at("11:00:00")), stored(at("11:00:00"))},
        {"activityType", "sleep", "activity_type", stored("sleep"), stored("sleep")},
        {"activityType", "App", "activity_type", stored("app"), stored("App")},
        {"activityType", "game", "activity_type", stored("app"), stored("game")},
        {"category", "空闲", "category", stored("空闲"), stored("空闲")},
        {"category", "My own", "category", none, stored("My own")},
        {"tags", "", "tags", stored(""), stored("")},
        {"confidence", 0.25, "confidence", 0.25, 0.25},
        {"billingStatus", "excluded", "billing_status", stored("excluded"), stored("excluded")},
        {"billingStatus", "paid", "billing_status", stored("review"), stored("paid")},
        {"createdAt", at("08:00:00"), "created_at", stored(at("08:00:00")), stored(at("09:00:01"))},
        {"localId", projectId.string(), "id", ValueTraits<Uuid>::toSql(projectId), ValueTraits<Uuid>::toSql(recordId)},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.key << " " << row.column);
        const auto form = with(fullCloudRecord(), row.key, row.value);
        EXPECT_EQ(columns(*made(form))[row.column], row.whenNew);
        auto expected = merged(columns(*fullRecord()));
        expected[row.column] = row.whenMerged;
        EXPECT_EQ(columnsAfterMerging(form), expected);
    }
}

TEST_F(ActivityRecordCloudFormTest, TheProjectIsFoundOrMadeWhereThereIsAContext) {
    const platform::CloudRecord assigned =
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
