#include "shell/export/ExportPage.h"

#include "shell/export/InstantField.h"
#include "shell/support/WindowTest.h"
#include "support/Builders.h"
#include "support/TemporaryFolder.h"

#include <QApplication>
#include <QCheckBox>
#include <QFileDialog>
#include <QTimeEdit>
#include <filesystem>

namespace quorvane {
namespace {

/// The sample days, without the main window.
class ExportPageTest : public WindowTest {
protected:
    ExportPageTest() {
        scene.emplace();
        page = std::make_unique<ExportPage>(scene->services());
        page->resize(1080, 832);
        page->show();
        page->activateWindow();
        scene->settle();
    }
    std::vector<std::string> texts() { return accessibleNames(*page, QAccessible::StaticText); }
    QFileDialog& pressExport() {
        page->exportRecords();
        return *page->findChild<QFileDialog*>();
    }

    std::unique_ptr<ExportPage> page;
};

TEST_F(ExportPageTest, ProjectsAreCheckBoxesThatSayTheirStateAndNarrowTheCount) {
    const auto boxes = accessibleItems(*page, QAccessible::CheckBox);
    ASSERT_EQ(boxes.size(), 5U);
    EXPECT_EQ(boxes[4]->text(QAccessible::Name), "Studio admin, Not set");
    EXPECT_EQ(boxes[0]->text(QAccessible::Description), "Not selected");
    EXPECT_THAT(texts(), Contains(HasSubstr("37 records")));
    dynamic_cast<QCheckBox&>(*boxes[0]->object()).setFocus();
    press(Qt::Key_Space);
    EXPECT_EQ(boxes[0]->text(QAccessible::Description), "Selected");
    EXPECT_TRUE(boxes[0]->state().checked);
    EXPECT_THAT(texts(), Contains("1 project selected"));
    EXPECT_THAT(texts(), Contains(HasSubstr("No records")));
}

TEST_F(ExportPageTest, AnotherTimeKeepsWhatIsBelowTheMinute) {
    auto& field = widgetBelow<InstantField>(*page);
    std::vector<Date> chosen;
    const auto listening = field.chosen.subscribe([&](Date date) { chosen.push_back(date); });
    field.setInstant(at("2026-03-09 16:48:59.5"));
    auto& time = *field.findChild<QTimeEdit*>();
    time.setFocus();
    time.setSelectedSection(QDateTimeEdit::HourSection);
    press(Qt::Key_Down);
    EXPECT_THAT(chosen, ElementsAre(at("2026-03-09 15:48:59.5")));
}

TEST_F(ExportPageTest, TheChosenFileIsWrittenAndAClosedDialogLeavesNothing) {
    const TemporaryFolder folder;
    pressExport().reject();
    scene->settle();
    auto& dialog = pressExport();
    const auto file = folder / "records.csv";
    Q_EMIT dialog.fileSelected(QString::fromStdString(file.string()));
    for (int i = 0; i < 500 && !std::filesystem::exists(file); ++i)
        scene->runLoop.playFor(0.01s);
    scene->runLoop.playFor(0.5s);
    scene->settle();
    EXPECT_TRUE(std::filesystem::exists(file));
    EXPECT_THAT(accessibleNames(*page, QAccessible::Notification), Contains(HasSubstr("records.csv")));
}

}  // namespace
}  // namespace quorvane
