#include "store/ActivityRecordCloudForm.h"

#include "platform/Clock.h"
#include "store/EntityDescription.h"
#include "support/Matchers.h"
#include "support/Matching.h"
#include "support/RecordingConsole.h"
#include "support/TemporaryStore.h"

#include <SQLiteCpp/SQLiteCpp.h>

namespace quorvane {
namespace {

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
        {"updatedAt", "updated_at", at("09:30:01"), stored(at("09:30:01")), 1.0, stored(at("12:00:00"))}};
    return all;
}

using Form = platform::CloudRecord;

std::shared_ptr<Record> fullRecord() {
    auto record = std::make_shared<Record>(Record::Values{.id = recordId, .cloudKitRecordID = "of an earlier copy"});
    for (const auto& form : attributes())
        Record::description().attribute(form.column)->set(*record, form.inRecord);
    return record;
}
Form fullForm() {
    Form record{"ActivityRecord", recordId.string(), {{"localId", "0A0B0C0D-0000-4000-8000-00000000ABCD"}}};
    for (const auto& form : attributes())
        record.values[form.key] = form.inCloud;
    return record;
}
Form with(Form record, const std::string& key, const Value& value) {
    record.values[key] = value;
    return record;
}
Form without(Form record, const std::string& key) {
    record.values.erase(key);
    return record;
}
/// The columns of a record under their names.
std::map<std::string, SqlValue> columns(const Record& record) {
    std::map<std::string, SqlValue> values;
    for (const auto& attribute : Record::description().attributes)
        values[attribute.name] = attribute.get(record);
    return values;
}

class ActivityRecordCloudFormTest : public testing::Test {
protected:
    /// A merge of a form of 10:00 changes these in any case.
    static std::map<std::string, SqlValue> merged(std::map<std::string, SqlValue> columns) {
        columns["updated_at"] = stored(at("10:00:00"));
        columns["cloud_kit_record_id"] = stored(recordId.string());
        return columns;
    }
    std::map<std::string, SqlValue> columnsAfterMerging(const Form& form) {
        const auto record = fullRecord();
        merge(*record, with(form, "updatedAt", at("10:00:00")), nullptr);
        return columns(*record);
    }
    void merge(Record& record, const Form& form, ModelContext* into) {
        applyCloudRecord(record, form, into, console, localization);
    }
    std::shared_ptr<Record> made(const Form& form, ModelContext* in = nullptr) {
        return makeActivityRecord(form, in, console, localization);
    }

    platform::ClockOverride clock{[] { return at("12:00:00"); }};
    TemporaryStore store;
    ModelContext& context = store.context();
    RecordingConsole console;
    const Localization localization{"zh"};
};

TEST_F(ActivityRecordCloudFormTest, ARecordTravelsWithAllItsValues) {
    const auto record = fullRecord();
    EXPECT_EQ(makeCloudRecord(*record), fullForm());

    record->project = std::make_shared<Project>();
    record->project()->id = projectId;
    EXPECT_EQ(makeCloudRecord(*record), with(fullForm(), "projectId", "11111111-2222-4333-8444-555555555555"));

    const Record bare({.id = recordId, .startTime = at("09:00:00")});
    EXPECT_EQ(makeCloudRecord(bare), (Form{.recordType = "ActivityRecord",
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

TEST_F(ActivityRecordCloudFormTest, WhatIsMissingOrOfAnotherTypeHasAFallbackAndAMergeClearsOnlyWhatMayBeAbsent) {
    for (const auto& [key, column, inCloud, inRecord, wrongType, fallback] : attributes()) {
        SCOPED_TRACE(key);
        for (const auto& form : {without(fullForm(), key), with(fullForm(), key, wrongType)}) {
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

TEST_F(ActivityRecordCloudFormTest, ANewRecordTakesEveryValueButAnIdThatCannotBeRead) {
    const auto record = made(fullForm());
    auto expected = columns(*fullRecord());
    expected["cloud_kit_record_id"] = stored(recordId.string());
    EXPECT_EQ(columns(*record), expected);
    EXPECT_EQ(record->context(), nullptr);
    EXPECT_EQ(made(with(fullForm(), "localId", "0a0b0c0d-0000-4000-8000-00000000abcd"))->id(), recordId);
    for (const Form& form :
         {without(fullForm(), "localId"), with(fullForm(), "localId", "no id"), with(fullForm(), "localId", 5.0)}) {
        const Uuid fresh = made(form)->id();
        EXPECT_NE(fresh, recordId);
        EXPECT_NE(fresh, Uuid());
    }
}

TEST_F(ActivityRecordCloudFormTest, OnlyAStrictlyNewerFormIsMerged) {
    for (const Form& form : {with(fullForm(), "updatedAt", at("09:30:00.999999")), fullForm(),
                             without(fullForm(), "updatedAt"), with(fullForm(), "updatedAt", "2100-01-01T00:00:00Z")}) {
        const auto record = fullRecord();
        const auto before = columns(*record);
        auto differing = with(form, "appName", "Other");
        differing.recordName = "other";
        merge(*record, differing, nullptr);
        EXPECT_EQ(columns(*record), before);
    }
    const auto record = fullRecord();
    merge(*record, with(with(fullForm(), "updatedAt", at("09:30:01.000001")), "appName", "Other"), nullptr);
    EXPECT_EQ(record->appName(), "Other");
}

TEST_F(ActivityRecordCloudFormTest, ANewRecordKeepsOnlyKnownWordsAndAMergeTakesTheNewerFormAsItIs) {
    const std::tuple<const char*, Value, const char*, SqlValue, SqlValue> rows[] = {
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
        {"localId", projectId.string(), "id", ValueTraits<Uuid>::toSql(projectId), ValueTraits<Uuid>::toSql(recordId)}};
    for (const auto& [key, value, column, whenNew, whenMerged] : rows) {
        SCOPED_TRACE(testing::Message() << key << " " << column);
        const auto form = with(fullForm(), key, value);
        EXPECT_EQ(columns(*made(form))[column], whenNew);
        auto expected = merged(columns(*fullRecord()));
        expected[column] = whenMerged;
        EXPECT_EQ(columnsAfterMerging(form), expected);
    }
}

TEST_F(ActivityRecordCloudFormTest, TheProjectIsFoundOrMadeWhereThereIsAContext) {
    const Form assigned = with(with(fullForm(), "projectId", projectId.string()), "updatedAt", at("10:00:00"));
    EXPECT_EQ(made(assigned)->project(), nullptr);
    const auto record = made(assigned, &context);
    ASSERT_NE(record->project(), nullptr);
    EXPECT_EQ(record->project()->id(), projectId);
    EXPECT_EQ(made(assigned, &context)->project(), record->project());  // found this time
    EXPECT_EQ(made(with(assigned, "projectId", "no id"), &context)->project(), nullptr);

    const auto local = insertProject(context, "local");
    const std::pair<Form, ModelContext*> keepers[] = {
        {assigned, nullptr},
        {with(assigned, "projectId", "no id"), &context},
        {without(assigned, "projectId"), &context},  // the cloud can't take a project away
    };
    for (const auto& [form, into] : keepers) {
        const auto kept = fullRecord();
        kept->project = local;
        merge(*kept, form, into);
        EXPECT_EQ(kept->project(), local);
        merge(*kept, with(assigned, "updatedAt", at("12:00:00")), &context);
        EXPECT_EQ(kept->project(), record->project());
    }
    EXPECT_THAT(console.lines(), IsEmpty());
}

TEST_F(ActivityRecordCloudFormTest, APlaceholderProjectIsSavedAtOnce) {
    const auto project = findOrCreateProject(projectId, context, console, localization);
    EXPECT_EQ(findOrCreateProject(projectId, context, console, localization), project);
    const auto saved = store.anotherContext()->fetch<Project>();
    ASSERT_THAT(saved, SizeIs(1));
    EXPECT_EQ(saved[0]->id(), projectId);
    EXPECT_EQ(saved[0]->name(), "未分类项目");
    EXPECT_EQ(saved[0]->color(), "gray");
    EXPECT_EQ(saved[0]->createdAt(), at("12:00:00"));
}

TEST_F(ActivityRecordCloudFormTest, AFailedSaveLeavesThePlaceholderPendingAndSaysWhy) {
    SQLite::Database other(store.file().string(), SQLite::OPEN_READWRITE);
    other.exec("CREATE TRIGGER refuse BEFORE INSERT ON project BEGIN SELECT RAISE(ABORT, 'refused'); END");
    const auto merged = fullRecord();
    merged->project = insertProject(context, "local");
    merge(*merged, with(with(fullForm(), "projectId", projectId.string()), "updatedAt", at("10:00:00")), &context);
    EXPECT_EQ(merged->project(), nullptr);
    EXPECT_THAT(console.lines(), ElementsAre("查找或创建项目失败: " + store.file().string() + ": refused"));
    EXPECT_EQ(context.count(field(&Project::id) == projectId), 1U);
    other.exec("DROP TRIGGER refuse");
    context.save();
    EXPECT_EQ(store.anotherContext()->count<Project>(), 2U);

    other.exec("DROP TABLE project");
    EXPECT_EQ(findOrCreateProject(projectId, context, console, localization), nullptr);
    EXPECT_THAT(console.lines(), ElementsAre(testing::_, StartsWith("查找或创建项目失败: ")));
}

}  // namespace
}  // namespace quorvane
