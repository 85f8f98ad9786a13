#include "store/Schema.h"

#include "store/ActivityShare.h"
#include "store/EntityDescription.h"
#include "store/SqlTrace.h"
#include "support/Matchers.h"
#include "support/Matching.h"
#include "support/TemporaryStore.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <set>
#include <sys/stat.h>

namespace quorvane {
namespace {

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

TEST_F(SchemaTest, NewFilesAndFoldersAreTheUsersAloneUntilTheUserSharesThem) {
    const mode_t before = ::umask(0);
    {
        ModelContainer container = open();
        aRecord().in(container.mainContext());
        container.mainContext().save();
        for (const char* suffix : {"", "-wal", "-shm"})
            EXPECT_EQ(modeOf(file.string() + suffix), 0600U) << suffix;
        EXPECT_EQ(modeOf(folder / "deep"), 0700U);
        EXPECT_EQ(modeOf(folder / "deep" / "er"), 0700U);
    }
    EXPECT_EQ(::umask(before), 0U);  // the process's own setting is left alone

    std::filesystem::permissions(file, std::filesystem::perms(0640));  // the user shares it
    ModelContainer container = open();
    aRecord().in(container.mainContext());
    container.mainContext().save();
    EXPECT_EQ(modeOf(file), 0640U);
    EXPECT_EQ(modeOf(file.string() + "-wal"), 0640U);
}

TEST_F(SchemaTest, AnOlderStoreGainsWhatItLacksWithItsDefaults) {
    constexpr int count = 3;
    const std::set<std::string> kept{"name", "start_time"};
    {
        const platform::ClockOverride clock([] { return at("09:00:00"); });
        ModelContainer container = open();
        for (const auto* entity : allEntities())
            for (int i = 0; i < count; ++i)
                container.mainContext().insert(entity->make());
        container.mainContext().save();
    }
    const char* const indexes = "SELECT name FROM sqlite_schema WHERE type = 'index' ORDER BY 1";
    const auto complete = answers(indexes);
    std::string older = fmt::format("DROP INDEX {};", fmt::join(complete, "; DROP INDEX "));
    older += "DROP TABLE activity_share; DROP TABLE store_note; DROP TABLE record_trash; DROP TABLE absence; PRAGMA "
             "user_version = 0;";
    for (const auto* entity : allEntities())
        for (const auto& attribute : entity->attributes)
            if (entity->name != "ActivityShare" && !kept.contains(attribute.name))
                older += fmt::format("ALTER TABLE {} DROP COLUMN {};", entity->table, attribute.column());
    alter(older);

    const platform::ClockOverride clock([] { return at("12:00:00"); });
    ModelContainer container = open();
    ModelContext& context = container.mainContext();
    for (const auto* entity : allEntities()) {
        const auto expected = entity->make();
        std::set<Uuid> ids{Uuid()};
        for (int row = 1; row <= count && entity->name != "ActivityShare"; ++row) {
            const auto found = context.object(*entity, row);
            ASSERT_NE(found, nullptr) << entity->name;
            for (const auto& attribute : entity->attributes) {
                const auto value = attribute.get(*found);
                if (attribute.name == "start_time")
                    EXPECT_TRUE(value == SqlValue{microsecondsSince1970(at("09:00:00"))}) << "it was there already";
                else if (attribute.name == "id")
                    EXPECT_TRUE(ids.insert(ValueTraits<Uuid>::fromSql(value)).second) << "an id of its own for each";
                else
                    EXPECT_TRUE(value == attribute.get(*expected)) << entity->name << " " << attribute.name;
            }
        }
    }
    EXPECT_EQ(answers(indexes), complete);
    EXPECT_THAT(answers("PRAGMA user_version"), ElementsAre("1"));
    // What it was is beside it.
    const auto backup = file.string() + ".backup-1";
    EXPECT_EQ(std::filesystem::status(backup).permissions(), std::filesystem::perms(0600));
    SQLite::Database old(backup);
    EXPECT_FALSE(old.tableExists("record_trash"));
    EXPECT_EQ(old.execAndGet("SELECT count(*) FROM activity_record").getInt(), count);

    // The columns do what those of a new store do.
    const auto project = context.fetch<Project>().front();
    context.fetch<ActivityRecord>().front()->project = project;
    context.insert(std::make_shared<ActivityShare>());
    context.save();
    context.remove(project);
    context.save();
    EXPECT_EQ(context.count(refersToNone(&ActivityRecord::project)), 3U);
}

TEST_F(SchemaTest, AnInterruptedUpgradeLeavesTheOlderStoreWhole) {
    (void)open();
    alter("DROP INDEX activity_record_by_id; ALTER TABLE activity_record DROP COLUMN id;"
          "INSERT INTO activity_record (start_time, activity_type, tags, confidence, billing_status, created_at, "
          "updated_at) VALUES (0, 'app', '', 1, 'review', 0, 0);"
          "ALTER TABLE rule DROP COLUMN name;"
          "CREATE TRIGGER refuse BEFORE UPDATE ON activity_record BEGIN SELECT RAISE(ABORT, 'refused'); END");
    const auto before = answers("SELECT sql FROM sqlite_schema ORDER BY rowid");
    EXPECT_EQ(storeErrorOf([&] { (void)open(); }).code(), StoreError::Code::failed);
    EXPECT_EQ(answers("SELECT sql FROM sqlite_schema ORDER BY rowid"), before);
    EXPECT_FALSE(std::filesystem::exists(file.string() + ".backup-1")) << "nothing that it would keep";
}

TEST_F(SchemaTest, AReaderDoesNotBringAnOlderStoreUpToDate) {
    (void)open();
    alter("ALTER TABLE rule DROP COLUMN name");
    EXPECT_EQ(storeErrorOf([&] { (void)ModelContainer({.file = file, .allowsSave = false}); }).what(),
              file.string() +
                  ": the store was written by an older version; any command that writes brings it up to date");
}

TEST_F(SchemaTest, OpeningACompleteStoreWritesNothing) {
    (void)open();
    const SqlTrace trace;
    (void)open();
    for (const char* word :
         {"BEGIN", "CREATE", "ALTER", "UPDATE", "INSERT", "PRAGMA application_id =", "PRAGMA user_version ="})
        EXPECT_THAT(trace.statements(word), IsEmpty()) << word;
}

}  // namespace
}  // namespace quorvane
