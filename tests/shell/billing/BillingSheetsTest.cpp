#include "shell/billing/BillingPackPreviewSheet.h"
#include "shell/billing/BillingReviewQueueSheet.h"
#include "shell/billing/ProjectBillingEditorSheet.h"
#include "shell/billing/ReviewQueueList.h"
#include "shell/look/Sheet.h"
#include "shell/support/ScreenTest.h"
#include "support/Mapped.h"

#include <QAbstractSpinBox>
#include <QClipboard>
#include <QComboBox>
#include <QMouseEvent>
#include <fmt/format.h>

namespace quorvane {
namespace {

/// A window, over which sheets open, at noon of Monday, 2 March 2026.
class BillingSheetsTest : public ScreenTest {
protected:
    BillingSheetsTest() { show(window, {1280, 832}); }

    Sheet& openQueue(std::size_t count) {
        for (std::size_t i = 0; i < count; ++i)
            records.push_back(aRecord().from("09:00:00").to("09:30:00").title("Plan").project(harbour).in(context()));
        context().save();
        Sheet& sheet = BillingReviewQueueSheet::open(
            window,
            std::make_unique<BillingReviewQueueView>(context(), records, std::vector{harbour, lumen}, localization),
            localization);
        settle();
        return sheet;
    }
    auto statuses() {
        return mapped(records, [](const auto& record) { return record->billingStatus(); });
    }
    void hover(QListView& list, int row) {
        QWidget* const viewport = list.viewport();
        const QPointF place = list.visualRect(list.model()->index(row, 0)).center();
        QMouseEvent move(QEvent::MouseMove, place, viewport->mapToGlobal(place), Qt::NoButton, Qt::NoButton,
                         Qt::NoModifier);
        QApplication::sendEvent(viewport, &move);
        settle();
    }

    QWidget window;
    std::shared_ptr<Project> harbour = insertProject(context(), "Harbour", 85);
    std::shared_ptr<Project> lumen = insertProject(context(), "Lumen");
    std::vector<std::shared_ptr<ActivityRecord>> records;
};

TEST_F(BillingSheetsTest, KeysDecideTheCurrentRowAndTabLeadsIntoItsControls) {
    openQueue(4);
    press(Qt::Key_B);
    press(Qt::Key_Down);
    press(Qt::Key_X);
    press(Qt::Key_Down);
    press(Qt::Key_N);
    press(Qt::Key_Down);
    press(Qt::Key_Down);  // the last one stays
    EXPECT_THAT(statuses(), ElementsAre("billable", "excluded", "nonBillable", "review"));
    press(Qt::Key_Up);
    press(Qt::Key_R);
    EXPECT_THAT(statuses(), ElementsAre("billable", "excluded", "review", "review"));

    std::vector<std::string> stops;
    for (int i = 0; i < 4; ++i) {
        press(Qt::Key_Tab);
        stops.push_back(QApplication::focusWidget()->metaObject()->className());
    }
    EXPECT_THAT(stops, ElementsAre("QComboBox", "QComboBox", "QPushButton", "QPushButton"));
    press(Qt::Key_Space);  // "Exclude" of the third row
    EXPECT_EQ(records[2]->billingStatus(), "excluded");
    press(Qt::Key_Down);
    press(Qt::Key_B);
    EXPECT_EQ(records[3]->billingStatus(), "billable");
}

TEST_F(BillingSheetsTest, TheRowUnderThePointerHasLiveControls) {
    Sheet& sheet = openQueue(3);
    auto& rows = widgetBelow<ReviewQueueList>(sheet);
    hover(rows.list(), 2);
    QComboBox* project = nullptr;
    for (auto* const combo : rows.findChildren<QComboBox*>())
        if (combo->isVisible() && combo->focusPolicy() == Qt::NoFocus && combo->accessibleName() == "Project")
            project = combo;
    ASSERT_NE(project, nullptr);
    EXPECT_EQ(project->currentText(), "Harbour");
    Q_EMIT project->activated(1);
    EXPECT_EQ(records[2]->project(), lumen);
    EXPECT_EQ(records[0]->project(), harbour);
    EXPECT_EQ(rows.list().currentIndex().row(), 2);
}

TEST_F(BillingSheetsTest, ThousandsOfRowsCostNoWidgetsAndScroll) {
    Sheet& sheet = openQueue(5000);
    auto& rows = widgetBelow<ReviewQueueList>(sheet);
    const auto widgets = sheet.findChildren<QWidget*>().size();
    press(Qt::Key_End);
    settle();
    EXPECT_EQ(rows.list().currentIndex().row(), 4999);
    press(Qt::Key_B);
    EXPECT_EQ(records[4999]->billingStatus(), "billable");
    hover(rows.list(), 4995);
    EXPECT_EQ(sheet.findChildren<QWidget*>().size(), widgets);
    EXPECT_LT(widgets, 100);
}

TEST_F(BillingSheetsTest, RowsAreHigherAsSoonAsTheirFieldsStandBelow) {
    auto& list = widgetBelow<QListView>(openQueue(3));
    const auto height = [&] { return list.visualRect(list.model()->index(0, 0)).height(); };
    const int wide = height();
    window.resize(720, 832);
    settle();
    EXPECT_GT(height(), wide);
    window.resize(1280, 832);
    settle();
    EXPECT_EQ(height(), wide);
}

TEST_F(BillingSheetsTest, BulkButtonsReachAllAndRowsAreReadWithIconAndStatus) {
    records.push_back(aRecord().from("08:00:00").title("Doubt").in(context()));
    records[0]->confidence = 0.5;
    Sheet& sheet = openQueue(1);
    click(sheet, "Mark All Billable");
    EXPECT_THAT(statuses(), ElementsAre("billable", "billable"));
    click(sheet, "Exclude All");
    EXPECT_THAT(statuses(), ElementsAre("excluded", "excluded"));
    EXPECT_THAT(accessibleDescriptions(widgetBelow<QListView>(sheet), QAccessible::ListItem),
                ElementsAre("Low confidence, Excluded, Not set", "Waiting for review, Excluded, Harbour"));
    EXPECT_THAT(accessibleNames(sheet, QAccessible::ListItem), Contains(StartsWith("Doubt, ")));
}

TEST_F(BillingSheetsTest, AnEmptyQueueSaysThatAllIsSettled) {
    Sheet& sheet = openQueue(0);
    EXPECT_THAT(accessibleNames(sheet, QAccessible::StaticText), Contains("All settled"));
    EXPECT_THAT(accessibleNames(sheet, QAccessible::Button), Not(Contains("Exclude All")));
}

TEST_F(BillingSheetsTest, TheProjectEditorWritesAtOnceAndEscIsDone) {
    Sheet& sheet = ProjectBillingEditorSheet::open(
        window, std::make_unique<ProjectBillingEditor>(harbour),
        ProjectBillingEditorSheet::Figures{.rangeLabel = "This month", .hours = 2}, localization);
    settle();
    auto& rate = *widgetBelow<QAbstractSpinBox>(sheet).findChild<QLineEdit*>();
    type(rate, "8x");
    EXPECT_EQ(harbour->hourlyRate(), 85);
    EXPECT_THAT(accessibleNames(sheet, QAccessible::StaticText), Contains(StartsWith("Type a number")));
    type(rate, "100");
    EXPECT_EQ(harbour->hourlyRate(), 100);
    EXPECT_THAT(accessibleNames(sheet, QAccessible::StaticText), Contains(HasSubstr("200.00")));
    type(dynamic_cast<QLineEdit&>(*QApplication::focusWidget()), "Harbour 2");
    harbour->updatedAt = at("09:00:00");
    press(Qt::Key_Escape);
    settle();
    EXPECT_EQ(harbour->name(), "Harbour 2");
    EXPECT_EQ(harbour->updatedAt(), runLoop.now());
}

TEST_F(BillingSheetsTest, ThePreviewCopiesTheTextOnShow) {
    Sheet& sheet = BillingPackPreviewSheet::open(
        window, {.markdown = "# Report", .emailBody = "Hello", .fileName = "Pack.md"}, localization);
    settle();
    EXPECT_THAT(accessibleNames(sheet, QAccessible::StaticText), Contains("Pack.md"));
    click(sheet, "Copy");
    EXPECT_EQ(QApplication::clipboard()->text(), "# Report");
    press(Qt::Key_Right);  // the tabs have the focus
    click(sheet, "Copy");
    EXPECT_EQ(QApplication::clipboard()->text(), "Hello");
    EXPECT_THAT(accessibleNames(window, QAccessible::Notification),
                Contains("Copied The text on show is on the clipboard."));
}

}  // namespace
}  // namespace quorvane
