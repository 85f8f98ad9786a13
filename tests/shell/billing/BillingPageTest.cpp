#include "shell/billing/BillingPage.h"

#include "shell/billing/FigureCard.h"
#include "shell/support/ScreenTest.h"

#include <QClipboard>
#include <QComboBox>
#include <QDateEdit>
#include <QLabel>
#include <QLayout>
#include <QScrollArea>
#include <QScrollBar>
#include <QTableView>
#include <fmt/format.h>

namespace quorvane {
namespace {

using Texts = std::vector<std::string>;

/// The billing section on Monday, 2 March 2026, at noon.
class BillingPageTest : public ScreenTest {
protected:
    std::shared_ptr<Project> insert(const char* name, double rate, const char* client, BillingStatus status) {
        auto project = insertProject(context(), name, rate);
        if (*client != '\0') project->clientName = std::optional<std::string>(client);
        aRecord().from("08:00:00").to("10:00:00").app("Editor").status(status).project(project).in(context());
        return project;
    }
    void open(QSize size = {1080, 832}) {
        page = std::make_unique<BillingPage>(
            BillingPage::Services{store.container(), runLoop, localization, console},
            BillingPage::Options{
                .openReviewQueue =
                    [this](const auto& records) { told.push_back(fmt::format("review {}", records.size())); },
                .openProjectEditor = [this](const auto& project) { told.push_back("edit " + project->name()); },
                .openPreview = [this](const auto&, const auto&) { told.emplace_back("preview"); },
                .chooseFile =
                    [this](const std::string& name, const auto& chosen) {
                        told.push_back(name);
                        chosen(folder / name);
                    }});
        show(*page, size);
    }
    void click(const std::string& name) { ScreenTest::click(*page, name); }
    Texts texts() { return accessibleNames(*page, QAccessible::StaticText); }
    Texts enabledButtons() {
        Texts names;
        for (const auto* const item : accessibleItems(*page, QAccessible::Button))
            if (!item->state().disabled) names.push_back(item->text(QAccessible::Name).toStdString());
        return names;
    }
    void choose(const char* filter, const char* entry) {
        for (auto* const field : page->findChildren<QComboBox*>()) {
            if (field->accessibleName() != filter) continue;
            field->setCurrentIndex(field->findText(QString::fromUtf8(entry)));
            Q_EMIT field->activated(field->currentIndex());
        }
        settle();
    }
    QTableView& table() { return *page->findChild<QTableView*>(); }
    Texts cells() {
        Texts texts;
        for (int row = 0; row < table().model()->rowCount(); ++row) {
            std::string line;
            for (int column = 0; column < table().model()->columnCount(); ++column)
                line += table().model()->index(row, column).data().toString().toStdString() + "|";
            texts.push_back(line);
        }
        return texts;
    }

    TemporaryFolder folder;
    Texts told;
    std::unique_ptr<BillingPage> page;
};

TEST_F(BillingPageTest, CardsReadAsOneAndTheTableFollowsTheStoreAndTheFilters) {
    insert("Orchard", 92, "Orchard & Co.", BillingStatus::review);
    const auto harbour = insert("Harbour", 0, "", BillingStatus::billable);
    open();
    EXPECT_THAT(texts(), IsSupersetOf({"Step 1: Choose what to bill. All clients, This month",
                                       "Step 2: Settle open questions. 2.0 h, of this time still needs a look",
                                       "Total time: 4.0 h, in 2 projects",
                                       "Estimated amount: $184.00, includes 2.0 h still to review",
                                       "1 record to review", "Double-click a project to change its rate and client."}));
    EXPECT_THAT(cells(), ElementsAre("Orchard|Orchard & Co.|2.0 h|2.0 h|$92.00|$184.00|",
                                     "Harbour|Not set|2.0 h|0.0 h|Not set|Not set|"));
    table().selectRow(1);
    harbour->hourlyRate = 100;
    settle();
    EXPECT_THAT(cells().front(), StartsWith("Harbour|Not set|2.0 h|0.0 h|$100.00|$200.00"));
    EXPECT_EQ(table().currentIndex().row(), 0);  // the same project
    choose("Client", "Orchard & Co.");
    EXPECT_THAT(cells(), ElementsAre(StartsWith("Orchard|")));
    choose("Project", "Harbour");
    EXPECT_THAT(cells(), IsEmpty());
}

TEST_F(BillingPageTest, WithoutRowsTheActionsRestAndSayWhy) {
    open();
    EXPECT_FALSE(table().isVisible());
    EXPECT_THAT(texts(), IsSupersetOf({"Nothing to bill here", "There is nothing to bill in this range yet."}));
    EXPECT_THAT(enabledButtons(), ElementsAre("Review Records"));
    insert("Orchard", 92, "", BillingStatus::billable);
    settle();
    EXPECT_TRUE(table().isVisible());
    EXPECT_THAT(enabledButtons(),
                ElementsAre("Review Records", "Preview Bill", "Copy E-mail", "Copy Social Post", "Export Bill"));
}

TEST_F(BillingPageTest, TheExportAsksAndAllThreeAnswersDoWhatTheySay) {
    insert("Orchard", 92, "", BillingStatus::review);
    open();
    const std::string file = "Quorvane_Billing_Pack_2026-03-02_12-00-00.md";
    click("Export Bill");
    EXPECT_THAT(texts(), Contains("Some records are not settled yet"));
    click("Cancel");
    EXPECT_THAT(told, IsEmpty());
    click("Export Bill");
    EXPECT_EQ(QApplication::focusWidget()->accessibleName() +
                  dynamic_cast<QAbstractButton&>(*QApplication::focusWidget()).text(),
              "Review Records");
    press(Qt::Key_Return);
    settle();
    EXPECT_THAT(told, ElementsAre("review 1"));
    click("Export Bill");
    click("Export Anyway");
    EXPECT_THAT(told, ElementsAre("review 1", file));
    EXPECT_THAT(contentOf(folder / file), StartsWith("# Billing report\n"));
}

TEST_F(BillingPageTest, KeysMoveThroughTheTableAndDoWhatButtonsDo) {
    insert("Orchard", 92, "", BillingStatus::review);
    insert("Harbour", 10, "", BillingStatus::billable);
    open();
    table().setFocus(Qt::TabFocusReason);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    press(Qt::Key_Up);
    press(Qt::Key_F2);
    press(Qt::Key_R, Qt::ControlModifier);
    press(Qt::Key_P, Qt::ControlModifier);
    EXPECT_THAT(told, ElementsAre("edit Harbour", "edit Orchard", "review 1", "preview"));
    press(Qt::Key_E, Qt::ControlModifier);
    settle();
    press(Qt::Key_R, Qt::ControlModifier);  // the question is on top
    EXPECT_THAT(texts(), Contains("Some records are not settled yet"));
    EXPECT_EQ(told.size(), 4U);
}

TEST_F(BillingPageTest, TwoDaysAreChosenForARangeOfOnesOwnAlone) {
    insert("Orchard", 92, "", BillingStatus::billable);
    open();
    const auto days = page->findChildren<QDateEdit*>();
    EXPECT_FALSE(days.at(0)->isVisible());
    choose("Time range", "Custom range");
    EXPECT_TRUE(days.at(0)->isVisible() && days.at(1)->isVisible());
    EXPECT_EQ(days.at(0)->date(), QDate(2026, 2, 23));
    EXPECT_THAT(cells(), ElementsAre(StartsWith("Orchard|")));
    days.at(1)->setDate(QDate(2026, 3, 1));
    settle();
    EXPECT_THAT(cells(), IsEmpty());
}

TEST_F(BillingPageTest, EverythingFitsAndNothingOverlapsInEveryWidth) {
    insert("Orchard", 92, "Orchard & Co.", BillingStatus::review);
    open();
    choose("Time range", "Custom range");
    for (const int width : {1600, 1080, 844, 807, 700, 600, 424}) {
        SCOPED_TRACE(width);
        page->resize(width, 480);
        settle();
        auto& area = widgetBelow<QScrollArea>(*page);
        EXPECT_EQ(area.horizontalScrollBar()->maximum(), 0);
        EXPECT_GT(area.verticalScrollBar()->maximum(), 0);
        int bottom = 0;
        const auto* const column = area.widget()->layout();
        for (int i = 0; i < column->count(); ++i) {
            const auto* const section = column->itemAt(i)->widget();
            if (section == nullptr || section->isHidden()) continue;
            EXPECT_GE(section->y(), bottom);
            EXPECT_EQ(section->width(), width - 48);
            if (section->hasHeightForWidth()) {
                EXPECT_EQ(section->height(), section->heightForWidth(section->width()));
            }
            bottom = section->geometry().bottom() + 1;
        }
    }
}

TEST_F(BillingPageTest, WhatHasNoColumnStandsInTheNeighboursAndNoNumberIsCut) {
    insert("Orchard", 9'000'000, "Orchard & Co.", BillingStatus::review);
    open();
    const struct {
        int width;
        std::vector<int> hidden;
    } widths[] = {{1078, {}}, {805, {1}}, {422, {1, 3, 4}}};
    for (const auto& [width, hidden] : widths) {
        SCOPED_TRACE(width);
        page->resize(width, 480);
        settle();
        std::vector<int> missing;
        int all = 0;
        for (int column = 0; column < table().model()->columnCount(); ++column) {
            if (table().isColumnHidden(column)) missing.push_back(column);
            all += table().columnWidth(column);
        }
        EXPECT_EQ(missing, hidden);
        EXPECT_EQ(all, table().viewport()->width());
        FigureCard card(TypeRole::display);
        card.setContent({.title = "Sum", .value = "CN¥15,050,000.00", .caption = "all", .spoken = {}});
        card.resize(width / 4, card.sizeHint().height());
        card.grab();
        const auto& value = *card.findChildren<QLabel*>().at(1);
        EXPECT_LE(value.fontMetrics().horizontalAdvance(value.text()), value.width());
    }
}

}  // namespace
}  // namespace quorvane
