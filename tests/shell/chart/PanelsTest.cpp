#include "platform/simulated/SimulatedSession.h"
#include "shell/chart/AppTile.h"
#include "shell/chart/CategorySheet.h"
#include "shell/chart/DetailsPanel.h"
#include "shell/chart/LegendPanel.h"
#include "shell/chart/ProjectPanel.h"
#include "shell/look/RowList.h"
#include "shell/support/ScreenTest.h"
#include "support/Mapped.h"
#include "support/TemporaryFolder.h"
#include "timeline/PassedRecords.h"

#include <QKeyEvent>
#include <QSpinBox>
#include <fmt/format.h>
#include <utility>

namespace quorvane {
namespace {

/// Widgets beside the chart of Monday, 2 March 2026, at noon.
class PanelsTest : public ScreenTest {
protected:
    void showDay() {
        context().save();
        passAllRecords(context(), chart);
        chart.appear();
        settle();
    }
    void show(QWidget& panel) { ScreenTest::show(panel, {300, 760}); }
    static std::vector<std::string> texts(QWidget& root) { return accessibleNames(root, QAccessible::StaticText); }
    std::vector<std::string> annotations() {
        const auto stored = store.anotherContext();
        return mapped(stored->fetch<ProjectTimeAnnotation>(), [](const auto& one) {
            return fmt::format("{} ({}) {}+{}", one->project()->name(), one->project()->color().value_or("-"),
                               (one->startTime() - at("00:00:00")) / 1h, one->duration() / 1h);
        });
    }

    CategoryTagManager categories{defaults, console};
    DayTimelineChart chart{context(), runLoop, console};
};

TEST_F(PanelsTest, TheLegendListsMostHoursFirstAndIsBuiltAnewForWhatDiffersOnly) {
    LegendPanel legend(chart, runLoop, localization);
    show(legend);
    EXPECT_THAT(texts(legend), ElementsAre("App usage", "– h")) << "nothing is known yet";
    showDay();
    EXPECT_THAT(texts(legend), IsSupersetOf({"0.0 h", "No app data yet"}));

    aRecord().from("08:00:00").to("08:30:00").app("Mail").in(context());
    aRecord().from("09:00:00").to("11:00:00").app("Editor").in(context());
    showDay();
    chart.selectTimeRange({8, 8.5});
    chart.assignTo(insertProject(context(), "Harbour"));
    chart.selectTimeRange({9, 10.5});
    chart.assignTo(insertProject(context(), "Lumen"));
    settle();
    EXPECT_THAT(accessibleNames(legend, QAccessible::ListItem),
                ElementsAre("Editor, 2.0 hours, 80.0 percent", "Mail, 0.5 hours, 20.0 percent", "Lumen, 1.5 h",
                            "Harbour, 0.5 h"));
    EXPECT_THAT(texts(legend), IsSupersetOf({"2.5 h"}));

    const auto rows = legend.findChildren<QWidget*>();
    chart.selectNeighbour(1);
    settle();
    EXPECT_EQ(legend.findChildren<QWidget*>(), rows);
}

TEST_F(PanelsTest, AProjectRowGivesItTheRangeAndProjectsThatHaveItAreNotOffered) {
    const auto harbour = insertProject(context(), "Harbour");
    insertProject(context(), "Lumen")->clientName = "Lumen Health";
    insertProject(context(), "Old")->isArchived = true;
    showDay();
    ProjectPanel panel(chart, localization);
    chart.selectTimeRange({9, 10.75});
    show(panel);
    EXPECT_THAT(accessibleNames(panel, QAccessible::ListItem), ElementsAre("Harbour, Not set", "Lumen, Lumen Health"));
    widgetBelow<RowList>(panel).setFocus();
    press(Qt::Key_Return);
    EXPECT_EQ(chart.projectSelector(), nullptr);
    EXPECT_THAT(annotations(), ElementsAre("Harbour (-) 9+1.75"));

    chart.selectTimeRange({10, 12});
    settle();
    EXPECT_THAT(accessibleNames(panel, QAccessible::ListItem), ElementsAre("Lumen, Lumen Health"));
    EXPECT_THAT(texts(panel), IsSupersetOf({"1 project already covers part of this time and is not listed."}));
}

TEST_F(PanelsTest, ANewProjectNeedsAFreeNameAndTakesTheChosenTone) {
    insertProject(context(), "Harbour");
    showDay();
    ProjectPanel panel(chart, localization);
    chart.selectTimeRange({9, 10});
    show(panel);
    QLineEdit* field = nullptr;
    for (auto* const edit : panel.findChildren<QLineEdit*>())
        if (dynamic_cast<QSpinBox*>(edit->parentWidget()) == nullptr) field = edit;
    const auto& create = buttonCalled(panel, "Create and Assign");
    EXPECT_FALSE(create.isEnabled());
    type(*field, " harbour ");
    EXPECT_THAT(texts(panel), Contains("There is a project of that name already"));
    EXPECT_FALSE(create.isEnabled());
    type(*field, "Tidewater");
    EXPECT_TRUE(create.isEnabled());
    click(panel, "Color rose");

    // Another range is another selection; name and colour stay.
    auto* const end = panel.findChildren<QSpinBox*>().at(1);
    end->stepBy(1);
    EXPECT_EQ(chart.selectedTimeRange(), (TimeRange{9, 10.25}));
    EXPECT_EQ(field->text(), "Tidewater");
    Q_EMIT field->returnPressed();
    EXPECT_THAT(annotations(), ElementsAre("Tidewater (rose) 9+1.25"));

    chart.selectTimeRange({20, 24});
    EXPECT_EQ(field->text(), "");
    EXPECT_EQ(end->text(), "24:00");
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(end, &escape);
    EXPECT_EQ(chart.projectSelector(), nullptr);
}

TEST_F(PanelsTest, DetailsTellWhatIsKnownAndDeleteTheRecord) {
    auto builder = aRecord().from("09:00:00").to("10:30:00").app("Editor").title("Notes").document("/srv/notes.md");
    const auto record = builder.category(ActivityCategory::work).tags("写作, 深度工作").in(context());
    showDay();
    const TemporaryFolder folder;
    QPixmap picture(32, 32);
    picture.fill(Qt::magenta);
    picture.save(QString::fromStdString(folder / "editor.png"));
    platform::SimulatedApplicationIcons icons;
    icons.icons["org.example.editor"] = folder / "editor.png";
    DetailsPanel details(chart, icons, localization);
    chart.selectNeighbour(1);
    show(details);
    EXPECT_EQ(widgetBelow<AppTile>(details).grab().toImage().pixelColor(16, 16), QColor(Qt::magenta));
    EXPECT_THAT(texts(details),
                IsSupersetOf({"Editor", "Notes", "Document", "/srv/notes.md", "Work", "Writing", "Deep work"}));
    EXPECT_THAT(texts(details), Not(Contains("Web page")));
    EXPECT_THAT(accessibleNames(details, QAccessible::Button),
                ElementsAre("Close", "Edit Category and tags", "Assign to Project", "Delete this activity record"));

    record->category = std::string("学习");
    showDay();
    EXPECT_THAT(texts(details), IsSupersetOf({"Learning"}));

    std::string wanted;
    const auto subscription = details.categoryWanted.subscribe([&](const auto& item) { wanted = item.appName; });
    click(details, "Edit Category and tags");
    EXPECT_EQ(wanted, "Editor");
    click(details, "Assign to Project");
    EXPECT_EQ(chart.selectedTimeRange(), (TimeRange{9, 10.5}));
    click(details, "Delete this activity record");
    EXPECT_EQ(store.anotherContext()->fetch<ActivityRecord>().size(), 0);
}

TEST_F(PanelsTest, TheSheetGivesCategoryAndTagsToAllRecordsOfTheApplication) {
    const auto record = aRecord().app("Firefox").category(ActivityCategory::work).in(context());
    aRecord().from("2026-01-05 10:00:00").to("2026-01-05 11:00:00").app("Firefox").in(context());
    showDay();
    QWidget window;
    show(window);
    int saves = 0;
    CategorySheet::open(window, std::make_unique<CategoryPickerState>(record, categories, console), categories,
                        "Firefox", localization, [&] { ++saves; });
    settle();
    EXPECT_THAT(texts(window), IsSupersetOf({"Suggested", "None selected"}));
    click(window, "Work");  // chosen, so this takes it back
    click(window, "Entertainment");
    click(window, "Reading");
    auto& field = *window.findChild<QLineEdit*>();
    type(field, "draft, research");
    Q_EMIT field.returnPressed();
    EXPECT_THAT(texts(window), IsSupersetOf({"3 selected"}));
    click(window, "Save");
    settle();
    EXPECT_EQ(saves, 1);
    const CategoryTagManager::AppPreferences chosen{"娱乐", {"draft", "研究", "阅读"}};
    EXPECT_EQ(categories.preference("Firefox"), chosen);
    for (const auto& stored : store.anotherContext()->fetch<ActivityRecord>())
        EXPECT_EQ((CategoryTagManager::AppPreferences{stored->category(), stored->tagList()}), chosen);
}

}  // namespace
}  // namespace quorvane
