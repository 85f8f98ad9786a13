#include "platform/linux/system/XdgPaths.h"
#include "desktop/support/Environment.h"
#include "support/Matching.h"
#include "support/TemporaryFolder.h"

namespace quorvane::platform {
namespace {

using std::filesystem::perms;

TEST(XdgPathsTest, VariablesCountIfTheyAreAbsolute) {
    Environment environment;
    environment.set("HOME", "/home/ada");
    for (const char* variable : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_DATA_DIRS"})
        environment.unset(variable);
    EXPECT_EQ(XdgPaths::applicationData(), "/home/ada/.local/share/quorvane");
    EXPECT_EQ(XdgPaths::applicationConfig(), "/home/ada/.config/quorvane");
    EXPECT_EQ(XdgPaths::applicationState(), "/home/ada/.local/state/quorvane");
    EXPECT_THAT(XdgPaths::dataDirectories(), ElementsAre("/home/ada/.local/share", "/usr/local/share", "/usr/share"));

    environment.set("XDG_DATA_HOME", "/data");
    environment.set("XDG_CONFIG_HOME", "relative");
    environment.set("XDG_DATA_DIRS", "/a:relative::/b");
    EXPECT_EQ(XdgPaths::applicationData(), "/data/quorvane");
    EXPECT_EQ(XdgPaths::applicationConfig(), "/home/ada/.config/quorvane");
    EXPECT_THAT(XdgPaths::dataDirectories(), ElementsAre("/data", "/a", "/b"));
}

TEST(XdgPathsTest, WithoutHomeTheUserDatabaseKnows) {
    Environment environment;
    environment.unset("HOME");
    EXPECT_TRUE(XdgPaths::home().is_absolute());
    EXPECT_NE(XdgPaths::home(), "/");
}

TEST(XdgPathsTest, MadeDirectoriesArePrivateAndOthersStayAsTheyAre) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder / "shared");
    std::filesystem::permissions(folder / "shared", perms::owner_all | perms::others_read);
    EXPECT_TRUE(XdgPaths::createPrivately(folder / "shared/a/b"));
    EXPECT_TRUE(XdgPaths::createPrivately(folder / "shared/a/b"));
    EXPECT_EQ(std::filesystem::status(folder / "shared/a/b").permissions(), perms::owner_all);
    EXPECT_EQ(std::filesystem::status(folder / "shared/a").permissions(), perms::owner_all);
    EXPECT_EQ(std::filesystem::status(folder / "shared").permissions(), perms::owner_all | perms::others_read);
    writeFile(folder / "file", "");
    EXPECT_FALSE(XdgPaths::createPrivately(folder / "file/a"));
}

}  // namespace
}  // namespace quorvane::platform
