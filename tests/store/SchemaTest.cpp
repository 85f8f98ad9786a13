#include "store/Schema.h"

#include "store/ActivityRecord.h"
#include "store/ActivityShare.h"
#include "store/AppPreference.h"
#include "store/AppSettings.h"
#include "store/EntityDescription.h"
#include "store/ModelContainer.h"
#include "store/ProjectTimeAnnotation.h"
#include "store/Rule.h"
#include "store/SqlTrace.h"
#include "support/Matchers.h"
#include "support/TemporaryStore.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <sys/stat.h>

namespace quorvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class SchemaTest : public testing::Test {
protected:
    TemporaryFolder folder;
    const std::filesystem::path file = folder / "deep" / "er" / "store.sqlite";

    [[nodiscard]] ModelContainer open() const { return ModelContainer({.file = file}); }

    /// Runs statements on the closed store, past all of our code.
    void alter(const std::string& sql) const { SQLite::Database(file.string(), SQLite::OPEN_READWRITE).exec(sql); }
    [[nodiscard]] std::vector<std::string> answers(const std::string& sql) const {
        SQLite::Database database(file.string(), SQLite::OPEN_READONLY);
        SQLite::Statement statement(database, sql);
        std::vector<std::string> rows;
        while (statement.executeStep())
            rows.push_back(statement.getColumn(0).getString());
        return rows;
    }
    static unsigned modeOf(const std::filesystem::path& path) {
        struct stat status {};
        EXPECT_EQ(::stat(path.c_str(), &status), 0) << path;
        return status.st_mode & 07777U;
    }
};

TEST_F(SchemaTest, TheSchemaHoldsSevenEntitiesInOrder) {
    std::vector<std::string> names;
    for (const auto* entity : allEntities())
        names.push_back(entity->name);
    EXPECT_THAT(names, ElementsAre("ActivityRecord", "Project", "Rule", "AppPreference", "AppSettings",
                                   "ProjectTimeAnnotation", "ActivityShare"));
    (void)open();
    EXPECT_THAT(
        answers("SELECT name FROM sqlite_schema WHERE type = 'table' AND name NOT LIKE 'sqlite%' ORDER BY rowid"),
        ElementsAre("activity_record", "project", "rule", "app_preference", "app_settings", "project_time_annotation",
                    "activity_share"));
    EXPECT_THAT(answers("SELECT name FROM pragma_table_info('project_time_annotation')"),
                ElementsAre("pk", "id", "start_time", "end_time", "project", "created_at", "updated_at"));
}

TEST_F(SchemaTest, NewFilesAndFoldersAreTheUsersAlone) {
    const mode_t before = ::umask(0);
    {
        ModelContainer container = open();
        aRecord().in(container.mainContext());
        container.mainContext().save();
        EXPECT_EQ(modeOf(file), 0600U);
        EXPECT_EQ(modeOf(file.string() + "-wal"), 0600U);
        EXPECT_EQ(modeOf(file.string() + "-shm"), 0600U);
        EXPECT_EQ(modeOf(folder / "deep"), 0700U);
        EXPECT_EQ(modeOf(folder / "deep" / "er"), 0700U);
    }
    EXPECT_EQ(::umask(before), 0U);  // the process's own setting is left alone
}

TEST_F(SchemaTest, AFileThatTheUserSharesStaysShared) {
    (void)open();
    std::filesystem::permissions(file, std::filesystem::perms(0640));
    ModelContainer container = open();
    aRecord().in(container.mainContext());
    container.mainContext().save();
    EXPECT_EQ(modeOf(file), 0640U);
    EXPECT_EQ(modeOf(file.string() + "-wal"), 0640U);
}

TEST_F(SchemaTest, AnOlderStoreGainsWhatItLacksWithItsDefaults) {
    {
        ModelContainer container = open();
        for (const char* app : {"a", "b", "c"})
            aRecord().from("09:00:00").to("09:30:00").app(app).in(container.mainContext());
        container.mainContext().insert(std::make_shared<AppSettings>());
        container.mainContext().insert(std::make_shared<Rule>());
        container.mainContext().insert(std::make_shared<Project>());
        container.mainContext().insert(std::make_shared<ProjectTimeAnnotation>());
        container.mainContext().save();
    }
    alter("DROP INDEX activity_record_by_id; DROP INDEX activity_record_by_project_and_start_time;"
          "DROP INDEX activity_record_by_end_time; DROP INDEX project_time_annotation_by_project_and_start_time;"
          "ALTER TABLE activity_record DROP COLUMN id; ALTER TABLE activity_record DROP COLUMN tags;"
          "ALTER TABLE activity_record DROP COLUMN confidence; ALTER TABLE activity_record DROP COLUMN billing_status;"
          "ALTER TABLE activity_record DROP COLUMN device_id; ALTER TABLE activity_record DROP COLUMN project;"
          "ALTER TABLE activity_record DROP COLUMN created_at;"
          "ALTER TABLE app_settings DROP COLUMN enable_idle_detection; ALTER TABLE app_settings DROP COLUMN work_days;"
          "ALTER TABLE app_settings DROP COLUMN idle_threshold_minutes; ALTER TABLE rule DROP COLUMN condition;"
          "ALTER TABLE project DROP COLUMN currency_code; ALTER TABLE project_time_annotation DROP COLUMN project;"
          "DROP TABLE activity_share; PRAGMA user_version = 0");

    const platform::ClockOverride clock([] { return at("12:00:00"); });
    ModelContainer container = open();
    ModelContext& context = container.mainContext();
    const auto records = context.fetch<ActivityRecord>();
    EXPECT_THAT(records, ElementsAre(isRecord("a", "09:00:00", "09:30:00"), isRecord("b", "09:00:00", "09:30:00"),
                                     isRecord("c", "09:00:00", "09:30:00")));
    std::set<Uuid> ids{Uuid()};
    for (const auto& record : records) {
        EXPECT_TRUE(ids.insert(record->id()).second) << "an id of its own for each";
        EXPECT_EQ(record->tags(), "");
        EXPECT_EQ(record->confidence(), 1.0);
        EXPECT_EQ(record->billingStatus(), "review");
        EXPECT_EQ(record->deviceId(), std::nullopt);
        EXPECT_EQ(record->createdAt(), at("12:00:00"));
        EXPECT_EQ(record->project(), nullptr);
    }
    const auto settings = context.fetch<AppSettings>().front();
    EXPECT_TRUE(settings->enableIdleDetection());
    EXPECT_EQ(settings->workDays(), "1,2,3,4,5");
    EXPECT_EQ(settings->idleThresholdMinutes(), 5);
    EXPECT_EQ(context.fetch<Rule>().front()->condition(), "{}");
    const auto project = context.fetch<Project>().front();
    EXPECT_EQ(project->currencyCode(), "USD");

    // The columns do what those of a new store do.
    records[0]->project = project;
    context.insert(std::make_shared<ActivityShare>());
    context.save();
    context.remove(project);
    context.save();
    EXPECT_EQ(context.count(refersToNone(&ActivityRecord::project)), 3U);
    EXPECT_THAT(answers("PRAGMA user_version"), ElementsAre("1"));
    EXPECT_THAT(
        answers("SELECT name FROM sqlite_schema WHERE tbl_name = 'activity_record' AND type = 'index' ORDER BY 1"),
        ElementsAre("activity_record_by_end_time", "activity_record_by_id", "activity_record_by_project_and_start_time",
                    "activity_record_by_start_time"));
}

TEST_F(SchemaTest, AnInterruptedUpgradeLeavesTheOlderStoreWhole) {
    (void)open();
    alter("DROP INDEX activity_record_by_id; ALTER TABLE activity_record DROP COLUMN id;"
          "INSERT INTO activity_record (start_time, activity_type, tags, confidence, billing_status, created_at, "
          "updated_at)"
          " VALUES (0, 'app', '', 1, 'review', 0, 0);"
          "ALTER TABLE rule DROP COLUMN name;"
          "CREATE TRIGGER refuse BEFORE UPDATE ON activity_record BEGIN SELECT RAISE(ABORT, 'refused'); END");
    const auto before = answers("SELECT sql FROM sqlite_schema ORDER BY rowid");
    EXPECT_EQ(storeErrorOf([&] { (void)open(); }).code(), StoreError::Code::failed);
    EXPECT_EQ(answers("SELECT sql FROM sqlite_schema ORDER BY rowid"), before);
}

TEST_F(SchemaTest, AReaderDoesNotBringAnOlderStoreUpToDate) {
    (void)open();
    alter("ALTER TABLE rule DROP COLUMN name");
    const StoreError error = storeErrorOf([&] { (void)ModelContainer({.file = file, .allowsSave = false}); });
    EXPECT_EQ(error.code(), StoreError::Code::failed);
    EXPECT_EQ(error.what(), file.string() + ": the store was written by an older version; any command that writes "
                                            "brings it up to date");
}

TEST_F(SchemaTest, OpeningACompleteStoreWritesNothing) {
    (void)open();
    const SqlTrace trace;
    (void)open();
    for (const char* word :
         {"BEGIN", "CREATE", "ALTER", "UPDATE", "INSERT", "PRAGMA application_id =", "PRAGMA user_version ="}) {
        SCOPED_TRACE(word);
        EXPECT_THAT(trace.statements(word), IsEmpty());
    }
}

}  // namespace
}  // namespace quorvane
