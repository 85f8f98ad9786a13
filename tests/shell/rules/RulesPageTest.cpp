#include "shell/rules/RulesPage.h"

#include "shell/look/Sheet.h"
#include "shell/rules/RuleForm.h"
#include "shell/rules/RuleList.h"
#include "shell/support/ScreenTest.h"

#include <QComboBox>
#include <QListView>
#include <QShortcut>

namespace quorvane {
namespace {

class RulesPageTest : public ScreenTest {
protected:
    void insertRule(const std::string& name, std::int64_t priority, const std::string& tags) {
        RuleDraft draft;
        draft.name = draft.value = name;
        draft.priority = priority;
        draft.tags = tags;
        draft.isEnabled = name != "Calls";
        const auto rule = std::make_shared<Rule>();
        draft.writeTo(*rule);
        context().insert(rule);
        context().save();
    }
    RulesPage& open(int width) {
        page = std::make_unique<RulesPage>(
            std::make_unique<RulesDashboardView>(context(), runLoop, categories, localization, console), localization);
        show(*page, {width, 832});
        return *page;
    }
    void key(Qt::Key pressed) {
        press(pressed);
        settle();
    }
    /// Keys of the page come from the window system; here they are sent on.
    void shortcut(const char* keys) {
        for (auto* const each : page->findChildren<QShortcut*>())
            if (each->key() == QKeySequence(QString::fromUtf8(keys))) Q_EMIT each->activated();
        settle();
    }
    void type(const char* text) {
        quorvane::type(dynamic_cast<QLineEdit&>(*QApplication::focusWidget()), text);
        settle();
    }
    std::vector<std::string> texts() { return accessibleNames(*page, QAccessible::StaticText); }
    /// Below the list alone: combo boxes have items too.
    std::vector<std::string> rows() { return accessibleNames(list(), QAccessible::ListItem); }
    QListView& list() { return widgetBelow<QListView>(*page); }
    template <class Field>
    Field& field(const char* name) {
        for (auto* const each : page->findChildren<Field*>())
            if (each->accessibleName() == QString::fromUtf8(name)) return *each;
        throw std::runtime_error(name);
    }

    CategoryTagManager categories{defaults, console};
    std::unique_ptr<RulesPage> page;
};

TEST_F(RulesPageTest, RowsAreReadAsSentencesAndTheFieldsHaveNames) {
    insertRule("Calls", 120, "social");
    insertRule("Orchard", 100, "web");
    open(1080);
    EXPECT_THAT(rows(), ElementsAre("100, Orchard, Application contains “Orchard”, web",
                                    "120, Calls, Off, Application contains “Calls”, social"));
    EXPECT_THAT(accessibleNames(*page, QAccessible::EditableText),
                IsSupersetOf({"Search rules", "Name", "When, Application, contains", "Tags, separated by commas"}));
    EXPECT_THAT(accessibleDescriptions(*page, QAccessible::ComboBox),
                ElementsAre("When", "When, Application", "Category", "Project"));
    EXPECT_THAT(accessibleNames(*page, QAccessible::Button), Not(Contains("Delete")));
}

TEST_F(RulesPageTest, ARuleIsMadeWithTheKeyboardAlone) {
    open(1080);
    shortcut("Ctrl+N");
    type("Harbour");
    EXPECT_THAT(texts(), Contains("Give the rule a name and a text to look for."));
    shortcut("Ctrl+S");
    EXPECT_TRUE(page->state().isEmpty());
    field<QLineEdit>("When, Application, contains").setFocus();
    type("harbour");
    field<QLineEdit>("Tags, separated by commas").setFocus();
    type("a, ,b");
    EXPECT_THAT(texts(), Contains("When: Application contains “harbour”. Then: Add the tags a, b."));
    shortcut("Ctrl+S");
    EXPECT_THAT(rows(), ElementsAre("100, Harbour, Application contains “harbour”, a, b"));
    EXPECT_EQ(list().selectionModel()->selectedIndexes().size(), 1);
    EXPECT_EQ(store.anotherContext()->count<Rule>(), 1U);
}

TEST_F(RulesPageTest, ArrowsFillTheFormAndDeleteAsksNothingButSaysSo) {
    for (const char* name : {"A", "B", "C"})
        insertRule(name, 100 + name[0], "x");
    open(1080);
    list().setFocus(Qt::TabFocusReason);
    EXPECT_EQ(page->state().selectedRule(), nullptr);  // coming there chooses nothing
    key(Qt::Key_Down);
    EXPECT_EQ(field<QLineEdit>("Name").text(), "B");
    key(Qt::Key_Delete);
    EXPECT_EQ(field<QLineEdit>("Name").text(), "");
    EXPECT_THAT(accessibleNames(*page, QAccessible::Notification), ElementsAre("“\u2068B\u2069” was deleted."));
    EXPECT_EQ(list().currentIndex().row(), 1);  // where the keys go on
    key(Qt::Key_Delete);                        // nothing is selected
    EXPECT_EQ(store.anotherContext()->count<Rule>(), 2U);
    key(Qt::Key_Up);
    EXPECT_EQ(field<QLineEdit>("Name").text(), "A");
    EXPECT_THAT(accessibleNames(*page, QAccessible::Notification), ElementsAre());
}

TEST_F(RulesPageTest, TheSearchIsAKeyAwayAndLeadsIntoWhatItFinds) {
    insertRule("Harbour", 1, "x");
    insertRule("Orchard", 2, "x");
    open(1080);
    shortcut("Ctrl+F");
    type("orch");
    EXPECT_EQ(rows().size(), 1U);
    key(Qt::Key_Down);
    EXPECT_TRUE(list().hasFocus());
    shortcut("Ctrl+F");
    type("nothing like it");
    EXPECT_THAT(texts(), Contains("No entry matches"));
    key(Qt::Key_Escape);
    EXPECT_EQ(page->state().rows().size(), 2U);
}

TEST_F(RulesPageTest, WhereItIsNarrowListAndFormAreTwoPages) {
    insertRule("Harbour", 1, "x");
    open(744);
    const auto& form = widgetBelow<RuleForm>(*page);
    EXPECT_FALSE(form.isVisible());
    list().setFocus();
    key(Qt::Key_Return);
    EXPECT_TRUE(form.isVisible());
    EXPECT_FALSE(list().isVisible());
    EXPECT_EQ(field<QLineEdit>("Name").text(), "Harbour");
    click(*page, "Rules");
    EXPECT_TRUE(list().isVisible());
    key(Qt::Key_Return);
    key(Qt::Key_Escape);
    EXPECT_TRUE(list().hasFocus());
    page->resize(1080, 832);
    settle();
    EXPECT_TRUE(form.isVisible() && list().isVisible());
}

TEST_F(RulesPageTest, TheEmptyListOffersTheImportAndAnAlertTellsItsResult) {
    open(1080);
    EXPECT_THAT(texts(), Contains("No rules yet"));
    click(*page, "Import Built-in Rules");
    EXPECT_EQ(page->state().rows().size(), 146U);
    const auto& alert = widgetBelow<Sheet>(*page);
    EXPECT_EQ(alert.accessibleName(), "Built-in rules");
    EXPECT_EQ(alert.accessibleDescription(), "146 rules were added; none was there already.");
}

TEST_F(RulesPageTest, AProjectThatTheStoreDoesNotHaveStaysInTheRule) {
    insertRule("Harbour", 1, "x");
    auto& shown = open(1080).state();
    const Uuid id = Uuid::random();
    shown.select(shown.rows().front().rule);
    shown.edit([&id](RuleDraft& draft) { draft.projectId = id; });
    EXPECT_EQ(field<QComboBox>("Project").currentText(), "Unknown project");
    shown.save();
    EXPECT_EQ(shown.draft().projectId, id);
}

}  // namespace
}  // namespace quorvane
