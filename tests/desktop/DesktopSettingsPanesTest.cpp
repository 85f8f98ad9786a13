#include "platform/linux/desktop/DesktopSettingsPanes.h"
#include "desktop/support/Environment.h"
#include "desktop/support/Waiting.h"
#include "platform/linux/loop/QtRunLoop.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace quorvane::platform {
namespace {

/// Settings programs that only note down how they were called.
class DesktopSettingsPanesTest : public testing::Test {
protected:
    DesktopSettingsPanesTest() {
        for (const char* program :
             {"gnome-control-center", "systemsettings", "xfce4-accessibility-settings", "xfce4-session-settings"}) {
            const auto path = folder / program;
            writeFile(path, "#!/bin/sh\necho \"${0##*/} $*\" > '" + called().string() + ".new'\nmv '" +
                                called().string() + ".new' '" + called().string() + "'\n");
            std::filesystem::permissions(path, std::filesystem::perms::owner_all);
        }
        environment.set("PATH", folder.path().string() + ":/usr/bin:/bin");
        environment.set("DISPLAY", ":64999");
        environment.unset("WAYLAND_DISPLAY");
    }
    [[nodiscard]] std::filesystem::path called() const { return folder / "called"; }
    void open(const std::string& pane, bool canOpen) {
        const std::string url = "x-apple.systempreferences:com.apple.preference.security?" + pane;
        EXPECT_EQ(panes.canOpen(url), canOpen);
        panes.open(url);
    }

    QtRunLoop runLoop;
    TemporaryFolder folder;
    Environment environment;
    DesktopSettingsPanes panes;
};

TEST_F(DesktopSettingsPanesTest, TheDesktopsOwnProgramOpens) {
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"ubuntu:GNOME", "Privacy_Accessibility", "gnome-control-center universal-access\n"},
        {"GNOME", "Privacy_Automation", "gnome-control-center \n"},
        {"KDE", "Privacy_Accessibility", "systemsettings kcm_access\n"},
        {"XFCE", "Privacy_Accessibility", "xfce4-accessibility-settings \n"},
        {"KDE", "LoginItems-Settings.extension", "systemsettings kcm_autostart\n"},
        {"XFCE", "LoginItems-Settings.extension", "xfce4-session-settings \n"},
        {"GNOME", "LoginItems-Settings.extension", "gnome-control-center \n"},  // has no program of its own here
    };
    for (const auto& [desktop, pane, expected] : rows) {
        SCOPED_TRACE(desktop);
        environment.set("XDG_CURRENT_DESKTOP", desktop);
        open(pane, true);
        ASSERT_TRUE(waitUntil([&] { return std::filesystem::exists(called()); }));
        EXPECT_EQ(contentOf(called()), expected);
        std::filesystem::remove(called());
    }
}

TEST_F(DesktopSettingsPanesTest, WhereThereIsNothingToOpenNothingOpens) {
    const std::pair<const char*, const char*> rows[] = {
        {"GNOME", "Privacy_ListenEvent"},
        {"openbox", "Privacy_Accessibility"},
        {"", "Privacy_Accessibility"},
        {"MATE", "Privacy_Accessibility"},  // its program is not installed here
    };
    for (const auto& [desktop, pane] : rows) {
        environment.set("XDG_CURRENT_DESKTOP", desktop);
        open(pane, false);
    }
    environment.set("XDG_CURRENT_DESKTOP", "GNOME");
    environment.set("DISPLAY", "");
    open("Privacy_Accessibility", false);
    EXPECT_TRUE(staysTrue([&] { return !std::filesystem::exists(called()); }));
}

}  // namespace
}  // namespace quorvane::platform
