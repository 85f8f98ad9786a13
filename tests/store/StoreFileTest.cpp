#include "store/ModelContainer.h"
#include "store/Schema.h"
#include "support/Matchers.h"
#include "support/Matching.h"
#include "support/OtherProcess.h"
#include "support/TemporaryFolder.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <fmt/format.h>
#include <functional>
#include <map>
#include <sys/stat.h>
#include <unistd.h>

namespace quorvane {
namespace {

namespace fs = std::filesystem;
using Code = StoreError::Code;

class StoreFileTest : public testing::Test {
protected:
    TemporaryFolder folder;
    const fs::path file = folder / "store.sqlite";

    static void addRecords(ModelContainer& container, int count = 1) {
        for (int i = 0; i < count; ++i)
            aRecord().app("Editor").title(std::string(500, 'x')).in(container.mainContext());
        container.mainContext().save();
    }
    /// A closed store with a few records.
    void makeStore() const {
        ModelContainer container({.file = file});
        addRecords(container, 50);
    }
    void alter(const std::string& sql) const {
        SQLite::Database(file.string(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE).exec(sql);
    }

    static std::size_t countIn(const ModelConfiguration& configuration) {
        return ModelContainer(configuration).mainContext().count<ActivityRecord>();
    }

    /// Every entry of the folder: kind, mode, and the bytes of a file or the target of a link.
    [[nodiscard]] std::map<std::string, std::string> listing() const {
        std::map<std::string, std::string> found;
        for (const auto& entry : fs::recursive_directory_iterator(folder.path())) {
            const auto status = entry.symlink_status();
            found[entry.path().string()] =
                fmt::format("{} {:o} {}", static_cast<int>(status.type()), static_cast<unsigned>(status.permissions()),
                            entry.is_symlink()        ? fs::read_symlink(entry.path()).string()
                            : entry.is_regular_file() ? contentOf(entry.path())
                                                      : std::string());
        }
        return found;
    }

    /// Opening the store fails with that code and a text that begins with its path, and changes nothing at all.
    void expectRefused(const ModelConfiguration& configuration, Code code, const std::string& text) {
        const auto before = listing();
        const StoreError error = storeErrorOf([&] { (void)ModelContainer(configuration); });
        EXPECT_EQ(error.code(), code);
        EXPECT_THAT(error.what(), AllOf(StartsWith(configuration.file.string() + ": "), HasSubstr(text)));
        EXPECT_TRUE(listing() == before) << "something was changed";
    }
    void expectRefusedEitherWay(Code code, const std::string& text) {
        for (const bool allowsSave : {false, true}) {
            SCOPED_TRACE(allowsSave ? "to write" : "to read");
            expectRefused({.file = file, .allowsSave = allowsSave}, code, text);
        }
    }
};

TEST_F(StoreFileTest, WhatIsNoStoreOfOursIsRefused) {
    const auto bytes = [this](const std::string& content) { return [=, this] { writeFile(file, content); }; };
    const auto altered = [this](const std::string& sql) {
        return [=, this] {
            makeStore();
            alter(sql);
        };
    };
    const std::tuple<const char*, std::function<void()>, Code, const char*> rows[] = {
        {"directory", [&] { fs::create_directory(file); }, Code::notAFile, "this is a directory, not a store"},
        {"pipe", [&] { ::mkfifo(file.c_str(), 0600); }, Code::notAFile, "this is not a regular file"},
        {"short text", bytes("hello"), Code::notAStore, "this is not a store"},
        {"header alone", bytes("SQLite format 3\n" + std::string(5000, 'x')), Code::notAStore, "this is not a store"},
        {"another's mark", altered("PRAGMA application_id = 1234"), Code::foreign,
         "this is a database of another program"},
        {"another's table", [&] { alter("CREATE TABLE project (x)"); }, Code::foreign,
         "this is a database of another program"},
        {"newer", altered(fmt::format("PRAGMA user_version = {}", Schema::userVersion + 1)), Code::newer,
         "a newer version of the program wrote this store"},
        {"dangling link", [&] { fs::create_symlink(folder / "nowhere", file); }, Code::missing,
         "this link leads to a file that isn't there"}};
    for (const auto& [name, prepare, code, text] : rows) {
        SCOPED_TRACE(name);
        prepare();
        expectRefusedEitherWay(code, text);
        fs::remove(file);
    }
    writeFile(file, "");
    expectRefused({.file = file / "below" / "a" / "file"}, Code::notAFile, "Not a directory");
}

TEST_F(StoreFileTest, ATruncatedStoreIsRefusedAndAWholeOneIsReadAndNotWrittenByAReader) {
    makeStore();
    const std::string whole = contentOf(file);
    ASSERT_GT(whole.size(), 40000U);
    std::vector<std::size_t> lengths{1, 5, 15, 16, 17, 50, 99, 100, 101, 512, 4095, 4096, 4097, whole.size() - 1};
    for (std::size_t length = 7000; length < whole.size(); length += 9001)
        lengths.push_back(length);
    for (const std::size_t length : lengths) {
        SCOPED_TRACE(length);
        writeFile(file, whole.substr(0, length));
        expectRefusedEitherWay(Code::damaged, "the file is damaged");
    }
    writeFile(file, whole);
    ModelContainer reader({.file = file, .allowsSave = false});
    EXPECT_EQ(reader.mainContext().count<ActivityRecord>(), 50U);
    aRecord().in(reader.mainContext());
    EXPECT_EQ(storeErrorOf([&] { reader.mainContext().save(); }).code(), Code::readOnly);
}

TEST_F(StoreFileTest, ANewerProgramIsNoticedThoughItsChangesWaitInTheLog) {
    makeStore();
    SQLite::Database newer(file.string(), SQLite::OPEN_READWRITE);
    newer.exec(fmt::format("PRAGMA user_version = {}", Schema::userVersion + 1));
    EXPECT_EQ(storeErrorOf([&] { (void)ModelContainer({.file = file}); }).code(), Code::newer);
}

TEST_F(StoreFileTest, AReaderNeedsAStore) {
    expectRefused({.file = file, .allowsSave = false}, Code::missing, "there is no such store");
    expectRefused({.file = folder / "no" / "such" / "folder", .allowsSave = false}, Code::missing, "no such store");
    writeFile(file, "");
    expectRefused({.file = file, .allowsSave = false}, Code::notAStore, "the file is empty");
}

TEST_F(StoreFileTest, AnEmptyFileBecomesAStoreUnlessItsLogSaysThatThereWasOne) {
    writeFile(file, "");
    EXPECT_EQ(countIn({.file = file}), 0U);
    writeFile(file, "");
    writeFile(file.string() + "-wal", "frames");
    expectRefused({.file = file}, Code::damaged, "it is empty, but its log is not");
}

TEST_F(StoreFileTest, ALinkLeadsToTheStore) {
    fs::create_directory(folder / "elsewhere");
    const fs::path target = folder / "elsewhere" / "real.sqlite";
    { ModelContainer made({.file = target}); }
    fs::create_symlink(target, file);
    ModelContainer container({.file = file});
    addRecords(container, 2);
    EXPECT_TRUE(fs::exists(target.string() + "-wal"));
    EXPECT_FALSE(fs::exists(file.string() + "-wal"));
    EXPECT_EQ(countIn({.file = target, .allowsSave = false}), 2U);
}

TEST_F(StoreFileTest, NamesThatTheDatabaseLibraryReadsInItsOwnWayAreFiles) {
    const fs::path before = fs::current_path();
    fs::current_path(folder.path());
    for (const char* name : {":memory:", "file:store?mode=memory", "a?b#c%41", "plain"}) {
        SCOPED_TRACE(name);
        ModelContainer container({.file = name});
        addRecords(container);
        EXPECT_TRUE(fs::is_regular_file(name));
        EXPECT_EQ(countIn({.file = name, .allowsSave = false}), 1U);
    }
    fs::current_path(before);
}

/// What a user meets who may not do everything.
class StoreFileRightsTest : public StoreFileTest {
protected:
    void SetUp() override {
        makeStore();
        giveAway(folder.path());
        giveAway(file);
    }
    void TearDown() override { ::chmod(folder.path().c_str(), 0700); }

    /// Only the almighty user of a build machine has to: others own what they make and have no more rights than that.
    static void giveAway(const fs::path& path) {
        EXPECT_TRUE(::geteuid() != 0 || ::chown(path.c_str(), 65534, 65534) == 0);
    }

    /// What happens to an ordinary user who opens the store: "50 records", or the code and text of the error.
    std::string opened(bool allowsSave, const fs::path& path) {
        return inOtherProcess(
            [&] {
                try {
                    return fmt::format("{} records", countIn({.file = path, .allowsSave = allowsSave}));
                } catch (const StoreError& error) {
                    return fmt::format("{}, {}", testing::PrintToString(error.code()), error.what());
                }
            },
            OtherProcess::As::nobody);
    }
    std::string opened(bool allowsSave) { return opened(allowsSave, file); }
};

TEST_F(StoreFileRightsTest, AReadOnlyFileIsReadAndNotWritten) {
    ::chmod(file.c_str(), 0400);
    const auto before = listing();
    EXPECT_EQ(opened(true), "readOnly, " + file.string() + ": the file is read-only");
    EXPECT_TRUE(listing() == before);
    EXPECT_EQ(opened(false), "50 records");
}

TEST_F(StoreFileRightsTest, AReadOnlyFolderIsReadAndNotWritten) {
    ::chmod(folder.path().c_str(), 0500);
    const auto before = listing();
    EXPECT_EQ(opened(true), "readOnly, " + file.string() + ": nothing can be written into the folder of the file");
    EXPECT_EQ(opened(false), "50 records");
    EXPECT_TRUE(listing() == before);
    for (const fs::path& unmade : {folder / "new.sqlite", folder / "new" / "store.sqlite"})
        EXPECT_EQ(opened(true, unmade), "noPermission, " + unmade.string() + ": Permission denied");
}

TEST_F(StoreFileRightsTest, WhatMayNotBeReadIsRefused) {
    ::chmod(file.c_str(), 0000);
    const std::string expected = "noPermission, " + file.string() + ": Permission denied";
    EXPECT_EQ(opened(true), expected);
    EXPECT_EQ(opened(false), expected);
    ::chmod(folder.path().c_str(), 0000);
    EXPECT_EQ(opened(false), expected);
}

TEST_F(StoreFileRightsTest, AReaderInAReadOnlyFolderSeesWhatWaitsInTheLog) {
    ModelContainer writer({.file = file});
    addRecords(writer);
    giveAway(file.string() + "-wal");
    giveAway(file.string() + "-shm");
    ::chmod(folder.path().c_str(), 0500);
    EXPECT_EQ(opened(false), "51 records");
    ::chmod(folder.path().c_str(), 0700);
}

}  // namespace
}  // namespace quorvane
