#include "shell/settings/SettingsSheet.h"

#include "shell/look/Sheet.h"
#include "shell/settings/SettingsTabs.h"
#include "shell/support/WindowTest.h"
#include "store/AppSettings.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <stdexcept>

namespace quorvane {
namespace {

class SettingsSheetTest : public WindowTest {
protected:
    SettingsSheetTest() {
        scene.emplace("en", true);
        scene->open({1280, 832});
    }

    void open(const SettingsSheet::MakeLogSection& makeLogSection = {}) {
        scene->window().activateWindow();
        SettingsSheet::open(scene->window(), scene->services(), makeLogSection);
        scene->settle();
    }
    void chooseTab(int index) {
        widgetBelow<SettingsTabs>(topSheet()).choose(index);
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
    std::vector<std::string> read(QAccessible::Role role) { return accessibleNames(topSheet(), role); }
    std::vector<std::shared_ptr<AppSettings>> stored() { return scene->services().context.fetch<AppSettings>(); }
};

TEST_F(SettingsSheetTest, OneTabShowsAndTheArrowsChooseAnother) {
    open();
    EXPECT_THAT(read(QAccessible::PageTab),
                ElementsAre("General", "Tracking", "Capture", "Organization", "Diagnostics"));
    EXPECT_THAT(read(QAccessible::CheckBox), ElementsAre("Hide from the taskbar", "Start when I log in"));
    named("General").setFocus();
    press(Qt::Key_Right);
    EXPECT_EQ(QApplication::focusWidget(), &named("Tracking"));
    EXPECT_THAT(read(QAccessible::CheckBox),
                ElementsAre("Notice when I am away", "A call or a film counts as presence",
                            "Ask about the time away when I am back", "Another title begins a record",
                            "Record during work hours only"));
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
    pressKey(Qt::Key_Escape);
    EXPECT_THAT(dialogs(), Not(Contains("Settings")));
    EXPECT_FALSE(stored().front()->hideDockIcon());
    stored().front()->idleThresholdMinutes = 7;
    open();
    named<QComboBox>("Language of praise and cards").setCurrentIndex(6);
    chooseTab(1);
    click("Another title begins a record");
    click("A call or a film counts as presence");
    click("Ask about the time away when I am back");
    click("Record during work hours only");
    named<QComboBox>("From, Hour").setCurrentIndex(7);
    named<QComboBox>("To, Minutes").setCurrentIndex(59);
    auto& threshold = named<QComboBox>("Away after, Minutes");
    EXPECT_EQ(threshold.placeholderText().toStdString(), "7 minutes") << "which is not offered";
    threshold.setCurrentIndex(4);
    click("Sat");
    EXPECT_THAT(read(QAccessible::StaticText), Contains(HasSubstr("Hours: 07:00 to 18:59")));
    click("Save");
    EXPECT_THAT(dialogs(), Not(Contains("Settings")));
    ASSERT_EQ(stored().size(), 1U);
    const AppSettings& settings = *stored().front();
    EXPECT_EQ(settings.preferredLanguage(), "de");
    EXPECT_EQ(settings.workStartHour(), 7);
    EXPECT_EQ(settings.workEndMinute(), 59);
    EXPECT_EQ(settings.idleThresholdMinutes(), 10);
    EXPECT_FALSE(settings.splitsRecordsByTitle());
    EXPECT_TRUE(settings.countsCallsAsPresence());
    EXPECT_FALSE(settings.offersAbsences());
}

TEST_F(SettingsSheetTest, TheLoginItemChangesAtOnceAndARefusalIsToldAndTakenBack) {
    open();
    click("Start when I log in");
    click("Cancel");
    EXPECT_TRUE(scene->services().autoStartManager.isAutoStartEnabled());
    open();
    EXPECT_THAT(read(QAccessible::StaticText), Contains("Starts with your session"));
    scene->loginItem().refuse("read-only");
    auto& toggle = named("Start when I log in");
    toggle.click();
    scene->settle();
    EXPECT_THAT(dialogs(), Contains("Starting at login could not be changed"));
    click("Open System Settings");
    EXPECT_THAT(scene->desktop.openedPanes(),
                ElementsAre("x-apple.systempreferences:com.apple.LoginItems-Settings.extension"));
    scene->runLoop.playFor(1s);
    scene->settle();
    EXPECT_TRUE(toggle.isChecked());
}

TEST_F(SettingsSheetTest, ApplicationsAreAddedEditedAndDeletedByTheKeyboard) {
    auto& categories = scene->services().categories;
    open();
    chooseTab(3);
    EXPECT_THAT(read(QAccessible::StaticText), Contains("No applications yet"));
    click("Add Application");
    EXPECT_FALSE(named("Save").isEnabled());
    auto* const field = dynamic_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_NE(field, nullptr);
    field->setText("Figma");
    click("Work");
    click("Design");
    click("Save");
    EXPECT_EQ(categories.preference("Figma"), (CategoryTagManager::AppPreferences{"工作", {"设计"}}));
    EXPECT_THAT(read(QAccessible::ListItem), Contains("Figma, Work, Design"));
    click("Edit Figma");
    click("Work");
    click("Save");
    EXPECT_THAT(read(QAccessible::ListItem), Contains("Figma, Uncategorized, Design"));
    named<QLineEdit>("Search applications").setText("x");
    scene->settle();
    EXPECT_THAT(read(QAccessible::StaticText), Contains("No application matches"));
    named<QLineEdit>("Search applications").clear();
    scene->settle();
    named("Delete Figma").setFocus();
    pressKey(Qt::Key_Space);
    EXPECT_TRUE(categories.loadAppPreferences().empty());
    EXPECT_EQ(QApplication::focusWidget(), &named<QLineEdit>("Search applications"));
}

TEST_F(SettingsSheetTest, OwnCategoriesAreEnteredWithTheReturnKeyWhichDoesNotSave) {
    open();
    chooseTab(3);
    auto& field = named<QLineEdit>("Name of a new category");
    field.setFocus();
    field.setText("Family");
    pressKey(Qt::Key_Return);
    ASSERT_THAT(dialogs(), Contains("Settings"));
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
    chooseTab(4);
    EXPECT_TRUE(topSheet().findChild<QWidget*>("log")->isVisible());
    scene->runLoop.playFor(1s);
    scene->settle();
    EXPECT_THAT(read(QAccessible::StaticText), Contains("Granted"));
    click("Test Web Address");
    EXPECT_THAT(read(QAccessible::StaticText), Contains("Bring the application to the front now…"));
    scene->runLoop.playFor(4s);
    EXPECT_THAT(read(QAccessible::StaticText), Contains("The application in front is no browser: com.apple.terminal"));
    click("Test Document");
    click("Cancel");
    scene->runLoop.playFor(4s);  // nothing is read any more
}

TEST_F(SettingsSheetTest, ReportsHaveASwitchWhereTheyCanGoSomewhereAndItIsOff) {
    for (const bool hasHost : {true, false}) {
        if (!hasHost) scene->services().setPerformanceReportsEnabled = nullptr;
        open();
        chooseTab(4);
        EXPECT_EQ(read(QAccessible::CheckBox).size(), hasHost ? 1U : 0U);
        if (hasHost) {
            EXPECT_FALSE(named("Send performance reports").isChecked());
            click("Send performance reports");
            EXPECT_TRUE(scene->services().performanceReports.isEnabled());
        }
        click("Cancel");
    }
}

}  // namespace
}  // namespace quorvane
