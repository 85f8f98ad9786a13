#include "platform/linux/desktop/XdgLoginItem.h"

#include "desktop/support/Environment.h"
#include "support/Matching.h"
#include "support/TemporaryFolder.h"

namespace quorvane::platform {
namespace {

class XdgLoginItemTest : public testing::Test {
protected:
    XdgLoginItemTest() { environment_.set("XDG_CONFIG_HOME", (folder_ / "config").string()); }

    TemporaryFolder folder_;
    Environment environment_;
};

TEST_F(XdgLoginItemTest, TheFileComesAndGoes) {
    XdgLoginItem item("/opt/my tools/100%/quo\"r$vane");
    EXPECT_FALSE(item.isEnabled());
    EXPECT_EQ(item.unregisterItem(), std::nullopt);
    EXPECT_EQ(item.registerItem(), std::nullopt);
    EXPECT_TRUE(item.isEnabled());
    EXPECT_EQ(item.file(), folder_ / "config/autostart/org.zelkor.Quorvane.desktop");
    EXPECT_THAT(contentOf(item.file()),
                AllOf(HasSubstr("\nExec=\"/opt/my tools/100%%/quo\\\\\"r\\\\$vane\" --background\n"),
                      HasSubstr("\nTryExec=/opt/my tools/100%/quo\"r$vane\n")));
    EXPECT_EQ(item.unregisterItem(), std::nullopt);
    EXPECT_FALSE(item.isEnabled());
    EXPECT_FALSE(std::filesystem::exists(item.file()));
}

TEST_F(XdgLoginItemTest, WhatTheDesktopSwitchedOffIsOffUntilItIsRegisteredAgain) {
    XdgLoginItem item("/usr/bin/quorvane");
    std::filesystem::create_directories(item.file().parent_path());
    const std::pair<const char*, bool> rows[] = {
        {"[Desktop Entry]\nExec=quorvane\n", true},
        {"[Desktop Entry]\nHidden=true\n", false},
        {"[Desktop Entry]\nHidden = true \n", false},
        {"[Desktop Entry]\nX-GNOME-Autostart-enabled=false\n", false},
        {"[Desktop Entry]\nHidden=false\n[Desktop Action a]\nHidden=true\n", true}};
    for (const auto& [text, isEnabled] : rows) {
        SCOPED_TRACE(text);
        writeFile(item.file(), text);
        EXPECT_EQ(item.isEnabled(), isEnabled);
        EXPECT_EQ(item.registerItem(), std::nullopt);
        EXPECT_TRUE(item.isEnabled());
    }
}

TEST_F(XdgLoginItemTest, ARefusalNamesTheFile) {
    writeFile(folder_ / "config", "");
    XdgLoginItem item("/usr/bin/quorvane");
    EXPECT_THAT(item.registerItem().value_or(""), HasSubstr((folder_ / "config/autostart").string()));
    EXPECT_FALSE(item.isEnabled());
}

}  // namespace
}  // namespace quorvane::platform
