#include "session/TrackerLock.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

TEST(TrackerLockTest, IsOneFileHoweverTheStoreIsSpelled) {
    const TemporaryFolder folder;
    writeFile(folder / "store.sqlite", "");
    std::filesystem::create_directory(folder / "sub");
    std::filesystem::create_symlink("../store.sqlite", folder / "sub/link");
    const auto expected = std::filesystem::canonical(folder.path()) / "store.sqlite.lock";
    for (const char* spelling : {"store.sqlite", "./store.sqlite", "sub/../store.sqlite", "sub/link"}) {
        SCOPED_TRACE(spelling);
        EXPECT_EQ(trackerLockFile(folder / spelling), expected);
    }
}

}  // namespace
}  // namespace quorvane
