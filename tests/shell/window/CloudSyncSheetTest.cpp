#include "shell/window/CloudSyncSheet.h"

#include "shell/look/Label.h"
#include "shell/look/Motion.h"
#include "shell/look/Sheet.h"
#include "shell/look/Theme.h"
#include "shell/support/WindowTest.h"
#include "shell/window/SyncProblemWell.h"

#include <QAbstractButton>
#include <QApplication>

namespace quorvane {
namespace {

constexpr const char* records = "Sync Records";
constexpr const char* full = "Full Sync";

std::string nameOf(const QWidget* widget) {
    const auto* const button = dynamic_cast<const QAbstractButton*>(widget);
    if (button == nullptr) return "none";
    return (button->text().isEmpty() ? button->accessibleName() : button->text()).toStdString();
}

class CloudSyncSheetTest : public WindowTest {
protected:
    ~CloudSyncSheetTest() override {
        Motion::setAllowed(false);
        applyTheme(Theme::light());
    }

    void open(const char* language = "en", bool hasCloud = true, QSize size = {1280, 832}) {
        scene.emplace(language, false, "", hasCloud);
        scene->open(size);
        scene->window().activateWindow();
        scene->window().openCloudSync();
        scene->settle();
    }
};

TEST_F(CloudSyncSheetTest, TheCloudButtonOpensItAndItSaysHowTheCloudStandsInTheWordsLanguage) {
    const struct {
        const char* language;
        const char* button;
        std::vector<std::string> texts;
    } rows[] = {{"en",
                 "Cloud sync",
                 {"CloudKit", "Never synced", "Available",
                  "Only records are synced. The lists of projects, categories and tags stay on this computer."}},
                {"zh",
                 "云同步",
                 {"CloudKit", "尚未同步", "可用", "注意：项目、分类、标签等元数据只存储在本地，不会同步到CloudKit"}}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.language);
        scene.emplace(row.language);
        scene->open({1280, 832});
        click(row.button);
        EXPECT_THAT(texts(), IsSupersetOf(row.texts));
        EXPECT_THAT(dialogs(), ElementsAre("CloudKit"));
        EXPECT_THAT(accessibleNames(scene->window(), QAccessible::Button), Not(Contains("")));
    }
}

TEST_F(CloudSyncSheetTest, TabGoesThroughBothButtonsAndTheOutcomeIsToldBeforeTheFocusComesBack) {
    open();
    std::vector<std::string> round{nameOf(QApplication::focusWidget())};
    for (int step = 0; step < 3; ++step) {
        press(Qt::Key_Tab);
        round.push_back(nameOf(QApplication::focusWidget()));
    }
    EXPECT_THAT(round, ElementsAre(full, records, "Close", full));
    press(Qt::Key_Tab);
    pressKey(Qt::Key_Return);
    EXPECT_THAT(texts(), IsSupersetOf({std::string("The records are synced"), std::string("Last sync: today, 16:48")}));
    EXPECT_THAT(dialogs(), ElementsAre("CloudKit", "CloudKit"));
    pressKey(Qt::Key_Escape);
    EXPECT_THAT(dialogs(), ElementsAre("CloudKit"));
    EXPECT_EQ(nameOf(QApplication::focusWidget()), records);
}

TEST_F(CloudSyncSheetTest, AFailureStandsThereWithItsCauseInTheColoursOfTheTheme) {
    open();
    const auto& well = widgetBelow<SyncProblemWell>(scene->window());
    EXPECT_FALSE(well.isVisible());
    scene->cloud.failure = platform::CloudFailure(platform::CloudFailure::Kind::timedOut, "no answer within 30 s");
    click(full);
    EXPECT_TRUE(well.isVisible());
    EXPECT_THAT(
        texts(),
        IsSupersetOf(
            {std::string("The full sync could not be completed: No answer within 30 seconds. Check the network."),
             std::string("no answer within 30 s")}));
    for (const Theme& shown : {Theme::dark(), Theme::light()}) {
        applyTheme(shown);
        scene->settle();
        for (const auto* const label : well.findChildren<QLabel*>())
            EXPECT_EQ(label->palette().color(QPalette::WindowText), shown.bad);
    }
}

TEST_F(CloudSyncSheetTest, ItFitsIntoTheSmallestWindow) {
    open("en", false, {480, 420});
    const auto& sheet = widgetBelow<Sheet>(scene->window());
    EXPECT_TRUE(scene->window().rect().adjusted(24, 24, -24, -24).contains(sheet.panel()));
}

}  // namespace
}  // namespace quorvane
