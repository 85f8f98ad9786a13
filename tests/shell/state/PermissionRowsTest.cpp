#include "shell/state/PermissionRows.h"

#include "shell/state/TrackedScene.h"
#include "support/Mapped.h"
#include "support/Matching.h"

namespace quorvane {
namespace {

using Permission = PermissionRows::Permission;
using CaptureTest = PermissionRows::CaptureTest;

class PermissionRowsTest : public testing::Test {
protected:
    TrackedScene scene;
    Localization localization{"en"};
    PermissionRows rows{scene.permissions, scene.runLoop, localization};
};

TEST_F(PermissionRowsTest, WhatIsMissingCanBeGrantedWhereADesktopGrantsIt) {
    const auto offer = [](const auto& row) { return row.title + ": " + row.state + ": " + row.grantText; };
    EXPECT_THAT(mapped(rows.rows(), offer),
                ElementsAre("Accessibility: Not granted: Grant Access", "Automation: Not granted: Open System Settings",
                            "Input monitoring: Not granted: "));
    rows.refresh();
    scene.runLoop.playFor(1s);
    EXPECT_TRUE(rows.rows()[0].isGranted);
    EXPECT_EQ(rows.rows()[0].grantText, "");
    EXPECT_EQ(rows.rows()[0].state, "Granted");
}

TEST_F(PermissionRowsTest, AccessibilityIsAskedForAndItsSettingsOpenOnlyWhereThatDoesNotHelp) {
    rows.grant(Permission::accessibility);
    EXPECT_EQ(scene.desktop.accessibility().trustRequests(), 1);
    EXPECT_THAT(scene.desktop.openedPanes(), ElementsAre());
    scene.desktop.accessibility().setTrusted(false);
    rows.grant(Permission::accessibility);
    rows.grant(Permission::automation);
    EXPECT_THAT(scene.desktop.openedPanes(), ElementsAre(Permissions::accessibilityPane, Permissions::automationPane));
}

TEST_F(PermissionRowsTest, WithoutASettingsProgramNothingIsOfferedThatDoesNothing) {
    scene.desktop.settingsPanes().hasProgram = false;
    const auto offers = [this] { return mapped(rows.rows(), &PermissionRows::Row::grantText); };
    EXPECT_THAT(offers(), ElementsAre("Grant Access", "", ""));
    scene.desktop.accessibility().setTrusted(false);
    rows.grant(Permission::accessibility);
    EXPECT_THAT(offers(), ElementsAre("", "", "")) << "it was refused";
    rows.refresh();
    EXPECT_THAT(offers(), ElementsAre("Grant Access", "", ""));
}

TEST_F(PermissionRowsTest, ATestReadsWhatTheUserBringsToTheFrontMeanwhile) {
    scene.desktop.bringToFront("org.zelkor.quorvane", "Quorvane");
    rows.run(CaptureTest::browserURL);
    rows.run(CaptureTest::documentPath);  // one at a time
    EXPECT_TRUE(rows.isTesting());
    EXPECT_FALSE(rows.test(CaptureTest::documentPath).isRunning);
    scene.desktop.bringToFront("org.example.editor", "Editor");
    scene.runLoop.playFor(4s);
    EXPECT_FALSE(rows.test(CaptureTest::browserURL).isRunning);
    EXPECT_EQ(rows.resultText(CaptureTest::browserURL), "The application in front is no browser: org.example.editor");
    rows.run(CaptureTest::documentPath);
    scene.runLoop.playFor(4s);
    EXPECT_THAT(rows.resultText(CaptureTest::documentPath), testing::StartsWith("No document can be read"));
}

}  // namespace
}  // namespace quorvane
