#include "cli/CliFixture.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <sys/resource.h>

using testing::ElementsAre;
using testing::HasSubstr;

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

    /// The command ends with this status and one line; the file and the folder stay as they were.
    void expectRefusal(const Arguments& arguments, int status, const std::string& cause) {
        SCOPED_TRACE(arguments.front());
        const auto content = [&] { return std::filesystem::is_regular_file(store()) ? contentOf(store()) : ""; };
        const std::string before = content();
        const auto namesBefore = names();
        const auto result = run(arguments);
        EXPECT_EQ(result.status, status);
        EXPECT_EQ(result.out, "");
        EXPECT_THAT(result.err, isRefusal(AllOf(HasSubstr(store().string()), HasSubstr(cause))));
        EXPECT_EQ(names(), namesBefore);
        EXPECT_TRUE(content() == before);
    }

    void expectUnusable(const std::string& cause) {
        const Arguments commands[] = {{"dump"},      {"records"}, {"export-csv"},   {"status"},
                                      {"load", "-"}, {"cleanup"}, {"rules", "list"}};
        for (const Arguments& arguments : commands)
            expectRefusal(arguments, 3, cause);
    }

    void actAsNobody() {
        giveToNobody(folder_.path());
        if (std::filesystem::exists(store())) giveToNobody(store());
        setting_.inChild = becomeNobody;
    }
};

TEST_F(HostileStoreTest, RefusesADirectory) {
    std::filesystem::create_directory(store());
    expectUnusable("directory");
}

TEST_F(HostileStoreTest, RefusesATextFile) {
    writeFile(store(), "Dear diary,\n" + std::string(5000, 'x'));
    expectUnusable("this is not a store");
}

TEST_F(HostileStoreTest, RefusesAFileThatIsShorterThanAHeader) {
    writeFile(store(), "SQLite format 3");
    expectUnusable("");
}

TEST_F(HostileStoreTest, RefusesAStoreThatWasCutShort) {
    makeStore();
    for (const std::size_t length : {std::size_t{100}, std::size_t{5000}}) {
        std::filesystem::resize_file(store(), length);
        expectUnusable("damaged");
        std::filesystem::remove(store());
        makeStore();
    }
}

TEST_F(HostileStoreTest, RefusesAStoreWhoseInsideWasOverwritten) {
    makeStore();
    std::string bytes = contentOf(store());
    for (std::size_t i = 100; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(i * 31);
    writeFile(store(), bytes);
    expectUnusable("");
}

TEST_F(HostileStoreTest, RefusesTheDatabaseOfAnotherProgram) {
    execute("CREATE TABLE notes (text TEXT)");
    expectUnusable("another program");
}

TEST_F(HostileStoreTest, RefusesAStoreOfANewerVersion) {
    makeStore();
    execute("PRAGMA user_version = 1000");
    expectUnusable("newer version");
}

TEST_F(HostileStoreTest, RefusesAStoreThatMayNotBeRead) {
    makeStore();
    actAsNobody();
    std::filesystem::permissions(store(), std::filesystem::perms::none);
    for (const Arguments& arguments : {Arguments{"dump"}, {"load", "-"}}) {
        const auto result = run(arguments);
        EXPECT_EQ(result.status, 3);
        EXPECT_THAT(result.err, isRefusal(HasSubstr("Permission denied")));
    }
    EXPECT_THAT(names(), ElementsAre("store.sqlite"));
}

TEST_F(HostileStoreTest, RefusesAStoreInAFolderThatMayNotBeEntered) {
    std::filesystem::create_directory(folder_ / "closed");
    actAsNobody();
    giveToNobody(folder_ / "closed");
    std::filesystem::permissions(folder_ / "closed", std::filesystem::perms::none);
    for (const Arguments& arguments : {Arguments{"dump"}, {"load", "-"}}) {
        auto all = arguments;
        all.insert(all.begin(), {"--store", (folder_ / "closed/store.sqlite").string()});
        const auto result = runBare(all);
        EXPECT_EQ(result.status, 3);
        EXPECT_THAT(result.err, isRefusal(HasSubstr("Permission denied")));
    }
    std::filesystem::permissions(folder_ / "closed", std::filesystem::perms::owner_all);
}

TEST_F(HostileStoreTest, ReadsAReadOnlyStoreAndRefusesToWriteIt) {
    makeStore();
    actAsNobody();
    std::filesystem::permissions(store(), std::filesystem::perms::owner_read);
    EXPECT_THAT(outputOf({"dump"}), HasSubstr("A0000000"));
    expectRefusal({"load", "-"}, 3, "read-only");
}

TEST_F(HostileStoreTest, ReadsAStoreInAReadOnlyFolderAndRefusesToWriteIt) {
    makeStore();
    actAsNobody();
    std::filesystem::permissions(folder_.path(),
                                 std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
    EXPECT_THAT(outputOf({"dump"}), HasSubstr("A0000000"));
    expectRefusal({"load", "-"}, 3, "nothing can be written");
    std::filesystem::permissions(folder_.path(), std::filesystem::perms::owner_all);
}

TEST_F(HostileStoreTest, RefusesToMakeAStoreWhereNothingCanBeWritten) {
    actAsNobody();
    std::filesystem::permissions(folder_.path(),
                                 std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
    setting_.input = recordLine("A", "2026-03-04T09:00:00Z", "");
    expectRefusal({"load", "-"}, 3, "");
    std::filesystem::permissions(folder_.path(), std::filesystem::perms::owner_all);
}

TEST_F(HostileStoreTest, WaitsForAnotherWriterAndThenGivesUpWhileReadersGoOn) {
    makeStore();
    SQLite::Database other(store().string(), SQLite::OPEN_READWRITE);
    other.exec("BEGIN IMMEDIATE");
    EXPECT_THAT(outputOf({"dump"}), HasSubstr("A0000000"));
    const auto result = run({"load", "-"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, isRefusal(HasSubstr("another program keeps the store locked")));
    other.exec("ROLLBACK");
    EXPECT_THAT(outputOf({"records", "--json"}), testing::Not(HasSubstr("B0000000")));
}

TEST_F(HostileStoreTest, RefusesAStoreThatAnotherProgramKeepsToItself) {
    makeStore();
    SQLite::Database other(store().string(), SQLite::OPEN_READWRITE);
    other.exec("PRAGMA locking_mode = EXCLUSIVE; BEGIN EXCLUSIVE; UPDATE rule SET name = name; COMMIT");
    const auto result = run({"dump"});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.err, isRefusal(HasSubstr("another program keeps the store locked")));
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
    const auto result = run({"load", "-"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.err, isRefusal(HasSubstr(store().string() + ": the disk is full")));
    setting_.inChild = nullptr;
    EXPECT_EQ(outputOf({"dump"}), before);
    EXPECT_TRUE(contentOf(store()) == bytes);
    EXPECT_THAT(names(), ElementsAre("store.sqlite"));
}

TEST_F(HostileStoreTest, MakesNoHalfStoreOnAFullDisk) {
    setting_.input = "{\"entity\":\"Rule\",\"name\":\"" + std::string(400'000, 'x') + "\"}\n";
    for (const rlim_t room : {rlim_t{0}, rlim_t{10'000}, rlim_t{300'000}}) {
        SCOPED_TRACE(room);
        setting_.inChild = [room] { limitFiles(room); };
        const auto result = run({"load", "-"});
        EXPECT_THAT(result.status, testing::AnyOf(1, 3));
        EXPECT_THAT(result.err, isRefusal(HasSubstr(store().string() + ":")));
        EXPECT_THAT(names(), testing::IsEmpty());
    }
}

}  // namespace
}  // namespace quorvane
