#include "shell/logs/LogViewerWindow.h"

#include "shell/logs/LogList.h"
#include "shell/logs/LogScene.h"
#include "shell/logs/LogViewSection.h"
#include "shell/look/Controls.h"
#include "shell/support/Offscreen.h"
#include "support/Matching.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QScrollBar>
#include <fmt/format.h>

namespace quorvane {
namespace {

class LogViewerWindowTest : public testing::Test {
protected:
    LogViewerWindowTest() { needApplication(); }

    void fill(int count) {
        for (int i = 0; i < count; ++i)
            scene_.logger.addLogEntry(fmt::format("line {}", i), LogLevel::info, "Timeline");
    }
    void settle() {
        for (int round = 0; round < 4; ++round) {
            QApplication::processEvents();
            scene_.runLoop.runPosted();
        }
    }
    LogList& open(LogViewerWindow& window) {
        window.show();
        window.activateWindow();
        settle();
        return widgetBelow<LogList>(window);
    }
    static void click(QWidget& root, const std::string& name) { buttonCalled(root, name).click(); }

    LogScene scene_;
};

TEST_F(LogViewerWindowTest, AFullLogScrollsAndFollowsItsEndUntilItIsToldNotTo) {
    fill(1100);
    LogViewerWindow window(scene_.logger, scene_.localization);
    LogList& list = open(window);
    auto& bar = *list.verticalScrollBar();
    EXPECT_EQ(list.shownCount(), 1000U);
    EXPECT_EQ(bar.value(), bar.maximum());
    auto& follow = widgetBelow<QCheckBox>(window);
    follow.click();
    bar.setValue(0);
    fill(1);
    settle();
    EXPECT_LT(bar.value(), bar.maximum());
    list.setFocus();
    press(Qt::Key_End);
    settle();
    EXPECT_TRUE(follow.isChecked());
    EXPECT_EQ(bar.value(), bar.maximum());
}

TEST_F(LogViewerWindowTest, RowsReadTimeLevelModuleMessageAndAreCopiedByKey) {
    fill(1);
    LogViewerWindow window(scene_.logger, scene_.localization);
    LogList& list = open(window);
    EXPECT_THAT(
        accessibleNames(list, QAccessible::ListItem),
        ElementsAre("09:00:00.000, INFO, AppLogger, AppLogger 已初始化", "09:00:00.000, INFO, Timeline, line 0"));
    list.setFocus();
    list.setCurrentIndex(list.model()->index(1, 0));
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(), "[2026-03-02 09:00:00.000] [INFO] [Timeline] line 0");
    list.copyMessages();
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(), "line 0");
    EXPECT_THAT(accessibleNames(window, QAccessible::Button),
                IsSupersetOf({"Refresh", "Clear Logs", "Export Diagnostic Report"}));
}

TEST_F(LogViewerWindowTest, ASearchWithoutAMatchSaysSoAndClearingIsConfirmedFirst) {
    LogViewerWindow window(scene_.logger, scene_.localization);
    open(window);
    window.findChild<QLineEdit*>()->setText("nowhere");
    settle();
    EXPECT_THAT(accessibleNames(window, QAccessible::StaticText),
                IsSupersetOf({"No entry matches", "0 of 1 entry", "Filtered"}));
    window.findChild<QLineEdit*>()->clear();
    const auto first = [&] { return scene_.logger.logs().front().message; };
    click(window, "Clear Logs");
    click(window, "Cancel");
    settle();
    EXPECT_EQ(first(), "AppLogger 已初始化");
    click(window, "Clear Logs");
    click(window, "Clear");
    settle();
    EXPECT_EQ(first(), "清空所有日志");
}

TEST_F(LogViewerWindowTest, TheSectionOfTheSettingsCountsAndListsTheLatestFirst) {
    fill(5);
    scene_.logger.addLogEntry("late", LogLevel::warning, "Sync");
    bool isOpened = false;
    LogViewSection section(scene_.logger, scene_.localization, [&] { isOpened = true; });
    section.show();
    settle();
    EXPECT_THAT(accessibleNames(section, QAccessible::StaticText),
                IsSupersetOf({"7 entries", "Total: 7", "WARNING: 1", "ERROR: 0"}));
    const auto rows = accessibleNames(section, QAccessible::ListItem);
    ASSERT_EQ(rows.size(), 4U);
    EXPECT_EQ(rows.front(), "09:00:00.000, WARNING, Sync, late");
    click(section, "Open Log Window");
    EXPECT_TRUE(isOpened);
}

}  // namespace
}  // namespace quorvane
