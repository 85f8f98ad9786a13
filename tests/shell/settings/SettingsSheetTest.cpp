#include "shell/settings/SettingsSheet.h"

#include "shell/look/Sheet.h"
#include "shell/settings/SettingsTabs.h"
#include "shell/support/Offscreen.h"
#include "shell/support/WindowScene.h"
#include "store/AppSettings.h"
#include "support/Matching.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <algorithm>
#include <set>
#include <stdexcept>

namespace quorvane {
namespace {

class SettingsSheetTest : public testing::Test {
protected:
    SettingsSheetTest() {
        needApplication();
        scene.emplace("en", true);
        scene->open({1280, 832});
    }

    void open(const SettingsSheet::MakeLogSection& makeLogSection = {}) {
        scene->window().activateWindow();
        SettingsSheet::open(scene->window(), scene->services(), makeLogSection);
        scene->settle();
    }
    void chooseTab(int index) {
        widgetBelow<SettingsTabs>(scene->window()).choose(index);
        scene->settle();
    }
    template <class Widget = QAbstractButton>
    Widget& named(const std::string& name) {
        for (auto* const widget : topSheet().findChildren<Widget*>())
            if (const auto* const item = QAccessible::queryAccessibleInterface(widget);
                widget->isVisible() &&
                (widget->accessibleName().toStdString() == name || item->text(QAccessible::Name).toStdString() == name))
                return *widget;
        throw std::runtime_error("nothing is called " + name);
    }
    void click(const std::string& name) {
        named(name).click();
        scene->settle();
    }
    Sheet& topSheet() {
        Sheet* top = nullptr;
        for (auto* const child : scene->window().children())
            if (auto* const sheet = dynamic_cast<Sheet*>(child); sheet != nullptr && sheet->isVisible()) top = sheet;
        if (top == nullptr) throw std::runtime_error("no sheet is open");
        return *top;
    }
    bool isOpen() {
        const auto dialogs = accessibleNames(scene->window(), QAccessible::Dialog);
        return std::ranges::find(dialogs, "Settings") != dialogs.end();
    }
    std::vector<std::shared_ptr<AppSettings>> stored() { return scene->services().context.fetch<AppSettings>(); }

    std::optional<WindowScene> scene;
};

TEST_F(SettingsSheetTest, OneTabShowsAndTheArrowsChooseAnother) {
    open();
    EXPECT_THAT(accessibleNames(topSheet(), QAccessible::PageTab),
                ElementsAre("General", "Tracking", "Organization", "Diagnostics"));
    EXPECT_THAT(accessibleNames(topSheet(), QAccessible::CheckBox),
                ElementsAre("Hide from the taskbar", "Start when I log in"));
    named("General").setFocus();
    press(Qt::Key_Right);
    EXPECT_EQ(QApplication::focusWidget(), &named("Tracking"));
    EXPECT_THAT(accessibleNames(topSheet(), QAccessible::CheckBox),
                ElementsAre("Notice when I am away", "Another title begins a record", "Record during work hours only"));
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(&named("Tracking"))->state().selected);
    press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), &named("Notice when I am away"));
    press(Qt::Key_Backtab);
    press(Qt::Key_Home);
    EXPECT_EQ(QApplication::focusWidget(), &named("General"));
}

TEST_F(SettingsSheetTest, SavingStoresWhatWasChosenAndCancellingNothing) {
    open();
    click("Hide from the taskbar");
    press(Qt::Key_Escape);
    scene->settle();
    EXPECT_FALSE(isOpen());
    EXPECT_FALSE(stored().front()->hideDockIcon());
    open();
    named<QComboBox>("Language of praise and cards").setCurrentIndex(6);
    chooseTab(1);
    click("Another title begins a record");
    click("Record during work hours only");
    named<QComboBox>("From, Hour").setCurrentIndex(7);
    named<QComboBox>("To, Minutes").setCurrentIndex(59);
    named<QComboBox>("Away after, Minutes").setCurrentIndex(4);
    click("Sat");
    EXPECT_THAT(accessibleNames(topSheet(), QAccessible::StaticText), Contains(HasSubstr("Hours: 07:00 to 18:59")));
    click("Save");
    EXPECT_FALSE(isOpen());
    ASSERT_EQ(stored().size(), 1U);
    const AppSettings& settings = *stored().front();
    EXPECT_EQ(settings.preferredLanguage(), "de");
    EXPECT_EQ(settings.workStartHour(), 7);
    EXPECT_EQ(settings.workEndMinute(), 59);
    EXPECT_EQ(settings.idleThresholdMinutes(), 10);
    EXPECT_FALSE(settings.splitsRecordsByTitle());
}

TEST_F(SettingsSheetTest, AStoredThresholdThatIsNotOfferedShowsAndStays) {
    const auto settings = stored().front();
    settings->idleThresholdMinutes = 7;
    open();
    chooseTab(1);
    auto& combo = named<QComboBox>("Away after, Minutes");
    EXPECT_EQ(combo.placeholderText().toStdString(), "7 minutes");
    EXPECT_EQ(combo.count(), 7);
    click("Save");
    EXPECT_EQ(settings->idleThresholdMinutes(), 7);
}

TEST_F(SettingsSheetTest, TheLoginItemChangesAtOnceAndARefusalIsToldAndTakenBack) {
    open();
    click("Start when I log in");
    click("Cancel");
    EXPECT_TRUE(scene->services().autoStartManager.isAutoStartEnabled());
    open();
    EXPECT_THAT(accessibleNames(topSheet(), QAccessible::StaticText), Contains("Starts with your session"));
    scene->loginItem().refuse("read-only");
    auto& toggle = named("Start when I log in");
    toggle.click();
    scene->settle();
    EXPECT_THAT(accessibleNames(scene->window(), QAccessible::Dialog), Contains("设置开机自动启动失败"));
    click("打开系统设置");
    EXPECT_THAT(scene->desktop.openedPanes(),
                ElementsAre("x-apple.systempreferences:com.apple.LoginItems-Settings.extension"));
    scene->runLoop.playFor(1s);
    scene->settle();
    EXPECT_TRUE(toggle.isChecked());
}

TEST_F(SettingsSheetTest, ApplicationsAreAddedEditedAndDeletedByTheKeyboard) {
    auto& categories = scene->services().categories;
    open();
    chooseTab(2);
    EXPECT_THAT(accessibleNames(topSheet(), QAccessible::StaticText), Contains("No applications yet"));
    click("Add Application");
    EXPECT_FALSE(named("Save").isEnabled());
    auto* const field = dynamic_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_NE(field, nullptr);
    field->setText("Figma");
    click("工作");
    click("设计");
    click("Save");
    EXPECT_EQ(categories.preference("Figma"), (CategoryTagManager::AppPreferences{"工作", {"设计"}}));
    EXPECT_THAT(accessibleNames(topSheet(), QAccessible::ListItem), Contains("Figma, 工作, 设计"));
    click("Edit Figma");
    click("工作");
    click("Save");
    EXPECT_THAT(accessibleNames(topSheet(), QAccessible::ListItem), Contains("Figma, Uncategorized, 设计"));
    named<QLineEdit>("Search applications").setText("x");
    scene->settle();
    EXPECT_THAT(accessibleNames(topSheet(), QAccessible::StaticText), Contains("No application matches"));
    named<QLineEdit>("Search applications").clear();
    scene->settle();
    named("Delete Figma").setFocus();
    press(Qt::Key_Space);
    scene->settle();
    EXPECT_TRUE(categories.loadAppPreferences().empty());
    EXPECT_EQ(QApplication::focusWidget(), &named<QLineEdit>("Search applications"));
}

TEST_F(SettingsSheetTest, OwnCategoriesAreEnteredWithTheReturnKeyWhichDoesNotSave) {
    open();
    chooseTab(2);
    auto& field = named<QLineEdit>("Name of a new category");
    field.setFocus();
    field.setText("Family");
    press(Qt::Key_Return);
    scene->settle();
    ASSERT_TRUE(isOpen());
    EXPECT_THAT(scene->services().categories.customCategories(), ElementsAre("Family"));
    click("Remove Family");
    EXPECT_THAT(scene->services().categories.customCategories(), ElementsAre());
}

TEST_F(SettingsSheetTest, TheDiagnosticsShowTheLogSectionAndTestsOfTheCapture) {
    open([] {
        auto* const section = new QWidget;
        section->setObjectName("log");
        return section;
    });
    chooseTab(3);
    EXPECT_TRUE(topSheet().findChild<QWidget*>("log")->isVisible());
    scene->runLoop.playFor(1s);
    scene->settle();
    EXPECT_THAT(accessibleNames(topSheet(), QAccessible::StaticText), Contains("Granted"));
    click("Test Web Address");
    EXPECT_THAT(accessibleNames(topSheet(), QAccessible::StaticText),
                Contains("Bring the application to the front now…"));
    scene->runLoop.playFor(4s);
    EXPECT_THAT(accessibleNames(topSheet(), QAccessible::StaticText),
                Contains("前台应用不是浏览器：com.apple.terminal"));
    click("Test Document");
    click("Cancel");
    scene->runLoop.playFor(4s);  // nothing is read any more
}

TEST_F(SettingsSheetTest, ReportsHaveASwitchWhereTheyCanGoSomewhereAndItIsOff) {
    for (const bool hasHost : {true, false}) {
        if (!hasHost) scene->services().setPerformanceReportsEnabled = nullptr;
        open();
        chooseTab(3);
        EXPECT_EQ(accessibleNames(topSheet(), QAccessible::CheckBox).size(), hasHost ? 1U : 0U);
        if (hasHost) {
            EXPECT_FALSE(named("Send performance reports").isChecked());
            click("Send performance reports");
            EXPECT_TRUE(scene->services().performanceReports.isEnabled());
        }
        click("Cancel");
    }
}

TEST_F(SettingsSheetTest, EveryControlHasANameAndTabReachesThemAllOnEachPage) {
    scene->services().categories.setPreference("Figma", {"工作", {"设计"}});
    open();
    for (int tab = 0; tab < 4; ++tab) {
        SCOPED_TRACE(tab);
        chooseTab(tab);
        for (const auto role : {QAccessible::Button, QAccessible::PageTab, QAccessible::EditableText,
                                QAccessible::ComboBox, QAccessible::CheckBox, QAccessible::ListItem})
            EXPECT_THAT(accessibleNames(topSheet(), role), Not(Contains(""))) << role;
        std::set<const QWidget*> seen;
        for (int step = 0; step < 40; ++step) {
            press(Qt::Key_Tab);
            EXPECT_TRUE(topSheet().isAncestorOf(QApplication::focusWidget()));
            seen.insert(QApplication::focusWidget());
        }
        EXPECT_TRUE(seen.contains(&named("Save")));
    }
}

}  // namespace
}  // namespace quorvane
