#include "store/Database.h"

#include "support/Matching.h"
#include "support/TemporaryFolder.h"

#include <fmt/format.h>
#include <stdexcept>

namespace quorvane {
namespace {

class DatabaseTest : public testing::Test {
protected:
    TemporaryFolder folder;
    Database database{{.file = folder / "store.sqlite"}};

    void SetUp() override { database.execute("CREATE TABLE note (text TEXT)"); }

    static std::int64_t notesIn(Database& database) {
        std::int64_t count = 0;
        database.query("SELECT count(*) FROM note", {}, [&](const Row& row) {
            count = row.integer(0);
            return true;
        });
        return count;
    }
    static void add(Database& database) { database.execute("INSERT INTO note VALUES (?)", {"a"}); }
};

TEST_F(DatabaseTest, ASnapshotStaysAsItIsWhileOthersWrite) {
    Database other({.file = folder / "store.sqlite"});
    database.inSnapshot([&] {
        EXPECT_EQ(notesIn(database), 0);
        add(other);
        EXPECT_EQ(notesIn(database), 0);
    });
    EXPECT_EQ(notesIn(database), 1);
    EXPECT_THROW(database.inSnapshot([] { throw std::runtime_error("enough"); }), std::runtime_error);
    add(other);
    EXPECT_EQ(notesIn(database), 2);
}

TEST_F(DatabaseTest, AStatementThatRunsOutlivesItsPlaceAmongThePreparedOnes) {
    for (int i = 0; i < 3; ++i)
        add(database);
    int rows = 0;
    database.query("SELECT text FROM note", {}, [&](const Row&) {
        for (int i = 0; i < 200; ++i)  // more than are kept
            database.query(fmt::format("SELECT {}", i), {}, [&](const Row& row) {
                EXPECT_EQ(row.integer(0), i);
                return true;
            });
        ++rows;
        return true;
    });
    EXPECT_EQ(rows, 3);
}

}  // namespace
}  // namespace quorvane
