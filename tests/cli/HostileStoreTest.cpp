#include "cli/CliFixture.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <sys/resource.h>

namespace quorvane {
namespace {

/// A store file that something is wrong with.
class HostileStoreTest : public CliTest {
protected:
    void makeStore() {
        load(recordLine("A", "2026-03-04T09:00:00Z", "2026-03-04T10:00:00Z"));
        setting_.input = recordLine("B", "2026-03-04T09:00:00Z", "2026-03-04T10:00:00Z");
    }

    void execute(const std::string& sql) {
        SQLite::Database(store().string(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE).exec(sql);
    }

    /// The store can't be used for this; the file and the folder stay as they were.
    void expectUnusable(const Arguments& arguments, const std::string& cause) {
        const auto content = [&] { return std::filesystem::is_regular_file(store()) ? contentOf(store()) : ""; };
        const std::string before = content();
        const auto namesBefore = names();
        expectRefusal(arguments, 3, cause);
        EXPECT_EQ(names(), namesBefore);
        EXPECT_TRUE(content() == before);
    }

    void expectUnusable(const std::string& cause) {
        const Arguments commands[] = {{"dump"},      {"records"}, {"export-csv"},   {"status"},
                                      {"load", "-"}, {"cleanup"}, {"rules", "list"}};
        for (const Arguments& arguments : commands)
            expectUnusable(arguments, cause);
    }

    void actAsNobody() {
        giveToNobody(folder_.path());
        if (std::filesystem::exists(store())) giveToNobody(store());
        setting_.inChild = becomeNobody;
    }
};

TEST_F(HostileStoreTest, RefusesWhatIsNoStoreOfThisVersion) {
    std::filesystem::create_directory(store());
    expectUnusable(store().string());
    std::filesystem::remove(store());
    for (const auto& [content, cause] : {std::pair("Dear diary,\n" + std::string(5000, 'x'), "this is not a store"),
                                         std::pair(std::string("SQLite format 3"), "")}) {
        writeFile(store(), content);
        expectUnusable(cause);
        std::filesystem::remove(store());
    }
    execute("CREATE TABLE notes (text TEXT)");
    expectUnusable("another program");
    std::filesystem::remove(store());
    makeStore();
    execute("PRAGMA user_version = 1000");
    expectUnusable("newer version");
}

TEST_F(HostileStoreTest, RefusesAStoreThatWasCutShortOrOverwritten) {
    makeStore();
    std::string bytes = contentOf(store());
    for (const std::size_t length : {std::size_t{100}, std::size_t{5000}}) {
        writeFile(store(), bytes.substr(0, length));
        expectUnusable("damaged");
    }
    for (std::size_t i = 100; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(i * 31);
    writeFile(store(), bytes);
    expectUnusable("");
}

TEST_F(HostileStoreTest, RefusesAStoreThatMayNotBeReadAndToWriteOneThatMayOnlyBeRead) {
    makeStore();
    actAsNobody();
    std::filesystem::permissions(store(), std::filesystem::perms::none);
    for (const Arguments& arguments : {Arguments{"dump"}, {"load", "-"}})
        expectRefusal(arguments, 3, "Permission denied");
    EXPECT_THAT(names(), ElementsAre("store.sqlite"));
    std::filesystem::permissions(store(), std::filesystem::perms::owner_read);
    EXPECT_THAT(outputOf({"dump"}), HasSubstr("A0000000"));
    expectUnusable({"load", "-"}, "read-only");
}

TEST_F(HostileStoreTest, RefusesAStoreInAFolderThatMayNotBeEntered) {
    std::filesystem::create_directory(folder_ / "closed");
    actAsNobody();
    giveToNobody(folder_ / "closed");
    std::filesystem::permissions(folder_ / "closed", std::filesystem::perms::none);
    const std::string file = (folder_ / "closed/store.sqlite").string();
    for (const Arguments& arguments : {Arguments{"--store", file, "dump"}, {"--store", file, "load", "-"}})
        EXPECT_THAT(runBare(arguments), isRefused(3, HasSubstr("Permission denied")));
    std::filesystem::permissions(folder_ / "closed", std::filesystem::perms::owner_all);
}

TEST_F(HostileStoreTest, ReadsAStoreInAReadOnlyFolderAndRefusesToWriteIt) {
    using std::filesystem::perms;
    makeStore();
    actAsNobody();
    std::filesystem::permissions(folder_.path(), perms::owner_read | perms::owner_exec);
    EXPECT_THAT(outputOf({"dump"}), HasSubstr("A0000000"));
    expectUnusable({"load", "-"}, "nothing can be written");
    std::filesystem::permissions(folder_.path(), perms::owner_all);
    std::filesystem::remove(store());
    std::filesystem::permissions(folder_.path(), perms::owner_read | perms::owner_exec);
    expectUnusable({"load", "-"}, "");
    std::filesystem::permissions(folder_.path(), perms::owner_all);
}

TEST_F(HostileStoreTest, WaitsForAnotherWriterAndThenGivesUpWhileReadersGoOn) {
    makeStore();
    SQLite::Database other(store().string(), SQLite::OPEN_READWRITE);
    other.exec("BEGIN IMMEDIATE");
    EXPECT_THAT(outputOf({"dump"}), HasSubstr("A0000000"));
    expectRefusal({"load", "-"}, 1, "another program keeps the store locked");
    other.exec("ROLLBACK");
    EXPECT_THAT(outputOf({"records", "--json"}), Not(HasSubstr("B0000000")));
    other.exec("PRAGMA locking_mode = EXCLUSIVE; BEGIN EXCLUSIVE; UPDATE rule SET name = name; COMMIT");
    expectRefusal({"dump"}, 3, "another program keeps the store locked");
}

/// In the new process: no file may grow beyond this. A disk that is full for everybody would need the superuser.
void limitFiles(rlim_t bytes) {
    const rlimit limit{bytes, bytes};
    ::setrlimit(RLIMIT_FSIZE, &limit);
}

TEST_F(HostileStoreTest, LoadsNothingOntoAFullDisk) {
    makeStore();
    const std::string before = outputOf({"dump"});
    const std::string bytes = contentOf(store());
    std::string many;
    for (int i = 0; i < 5000; ++i)
        many += "{\"entity\":\"Rule\",\"name\":\"" + std::string(200, 'x') + "\"}\n";
    setting_.input = many;
    setting_.inChild = [] { limitFiles(300'000); };
    expectRefusal({"load", "-"}, 1, store().string() + ": the disk is full");
    setting_.inChild = nullptr;
    EXPECT_EQ(outputOf({"dump"}), before);
    EXPECT_TRUE(contentOf(store()) == bytes);
    EXPECT_THAT(names(), ElementsAre("store.sqlite"));
}

TEST_F(HostileStoreTest, MakesNoHalfStoreOnAFullDisk) {
    setting_.input = "{\"entity\":\"Rule\",\"name\":\"" + std::string(400'000, 'x') + "\"}\n";
    for (const rlim_t room : {rlim_t{0}, rlim_t{10'000}, rlim_t{300'000}}) {
        setting_.inChild = [room] { limitFiles(room); };
        EXPECT_THAT(run({"load", "-"}), isRefused(testing::AnyOf(1, 3), HasSubstr(store().string() + ":"))) << room;
        EXPECT_THAT(names(), IsEmpty());
    }
}

}  // namespace
}  // namespace quorvane
