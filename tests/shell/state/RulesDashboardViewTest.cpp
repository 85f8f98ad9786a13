#include "shell/state/RulesDashboardView.h"

#include "support/Mapped.h"
#include "support/StoreTest.h"

namespace quorvane {
namespace {

class RulesDashboardViewTest : public StoreTest {
protected:
    std::shared_ptr<Rule> insertRule(const std::string& name, std::int64_t priority, const std::string& value,
                                     const std::string& tags) {
        RuleDraft draft;
        draft.name = name;
        draft.priority = priority;
        draft.value = value;
        draft.tags = tags;
        const auto rule = std::make_shared<Rule>();
        draft.writeTo(*rule);
        context().insert(rule);
        context().save();
        runLoop.playFor(1s);
        return rule;
    }
    void typeDraft(const std::string& name) {
        view.edit([&name](RuleDraft& draft) {
            draft.name = name;
            draft.value = "harbour";
            draft.category = "工作";
        });
    }
    [[nodiscard]] auto names() const { return mapped(view.rows(), &RuleRow::name); }
    [[nodiscard]] std::size_t storedRules() const { return store.anotherContext()->count<Rule>(); }

    CategoryTagManager categories{defaults, console};
    RulesDashboardView view{context(), runLoop, categories, localization, console};
};

TEST_F(RulesDashboardViewTest, RulesStandInTheOrderInWhichTheyRunAndChangesOfOthersAreToldTogether) {
    insertRule("late", 200, "b", "x");
    const auto older = insertRule("older", 100, "a", "x");
    insertRule("newer", 100, "c", "x");
    int told = 0;
    const auto subscription = view.rowsChanged.subscribe([&told] { ++told; });
    runLoop.runPosted();
    EXPECT_THAT(names(), ElementsAre("newer", "older", "late"));
    RuleDraft(*older).writeTo(*older);  // edited last now
    runLoop.runPosted();
    EXPECT_THAT(names(), ElementsAre("older", "newer", "late"));
    EXPECT_LE(told, 2);
}

TEST_F(RulesDashboardViewTest, ARowSaysInWordsWhatTheRuleDoesAndTheSearchFindsAnyOfThem) {
    const auto project = insertProject(context(), "Harbour rebrand");
    project->color = "mint";
    const auto rule = std::make_shared<Rule>();
    RuleDraft draft;
    draft.name = "Études";
    draft.field = RuleField::documentPath;
    draft.value = "/files/";
    draft.category = "工作";
    draft.projectId = project->id();
    draft.tags = "design, ,print";
    draft.isEnabled = false;
    draft.writeTo(*rule);
    context().insert(rule);
    insertRule("Other", 900, "zzz", "zzz");
    runLoop.runPosted();
    const RuleRow expected{.rule = rule,
                           .priority = 100,
                           .name = "Études",
                           .condition = "Document path contains “/files/”",
                           .project = RuleRow::Target{"Harbour rebrand", "mint"},
                           .words = {"Work", "design", "print"},
                           .isEnabled = false};
    EXPECT_EQ(view.rows().front(), expected);
    EXPECT_EQ(expected.sentence(localization),
              "100, Études, Off, Document path contains “/files/”, Harbour rebrand, Work, design, print");
    for (const char* search : {"etudes", "FILES", "document", "rebrand", "work", "print"}) {
        view.setSearch(search);
        EXPECT_THAT(names(), ElementsAre("Études")) << search;
    }
    view.setSearch("nowhere");
    EXPECT_THAT(names(), IsEmpty());
    EXPECT_FALSE(view.isEmpty());
}

TEST_F(RulesDashboardViewTest, FurtherConditionsAreCountedAndUnreadableOnesAreNotSet) {
    const auto rule = insertRule("several", 1, "a", "x");
    auto conditions = *readRuleConditions(rule->condition());
    conditions.push_back(conditions.front());
    rule->condition = RuleConditionSet{conditions}.json();
    insertRule("broken", 2, "a", "x")->condition = "{}";
    runLoop.runPosted();
    EXPECT_EQ(view.rows()[0].condition, "Application contains “a” +1");
    EXPECT_EQ(view.rows()[1].condition, "Not set");
}

TEST_F(RulesDashboardViewTest, ADraftBecomesARuleThatIsSelectedAndThenChangedInPlace) {
    view.save();
    EXPECT_EQ(storedRules(), 0U);
    typeDraft("Harbour");
    view.save();
    ASSERT_NE(view.selectedRule(), nullptr);
    EXPECT_EQ(view.selectedRule()->createdAt(), view.selectedRule()->updatedAt());
    EXPECT_THAT(names(), ElementsAre("Harbour"));

    view.selectedRule()->type = "or";
    runLoop.playFor(60s);
    view.edit([](RuleDraft& draft) { draft.priority = 7; });
    view.save();
    const auto stored = store.anotherContext()->fetch<Rule>();
    ASSERT_EQ(stored.size(), 1U);
    EXPECT_EQ(stored[0]->priority(), 7);
    EXPECT_EQ(stored[0]->type(), "and");
    EXPECT_EQ(stored[0]->updatedAt() - stored[0]->createdAt(), 60s);
}

TEST_F(RulesDashboardViewTest, RemovingAndNewEmptyTheFormAndSelectingFillsIt) {
    const auto first = insertRule("first", 1, "a", "x");
    insertRule("second", 2, "b", "y");
    view.select(first);
    EXPECT_EQ(view.draft(), RuleDraft(*first));
    EXPECT_EQ(view.removeSelected(), first);
    EXPECT_EQ(view.selectedRule(), nullptr);
    EXPECT_EQ(view.draft(), RuleDraft());
    EXPECT_EQ(view.removeSelected(), nullptr);
    EXPECT_THAT(names(), ElementsAre("second"));
    EXPECT_EQ(storedRules(), 1U);

    view.select(view.rows().front().rule);
    view.startNew();
    EXPECT_EQ(view.selectedRule(), nullptr);
    EXPECT_EQ(view.draft(), RuleDraft());
}

TEST_F(RulesDashboardViewTest, WhatWasTypedSurvivesARuleThatIsRemovedElsewhere) {
    const auto rule = insertRule("first", 1, "a", "x");
    view.select(rule);
    typeDraft("kept");
    context().remove(rule);
    EXPECT_EQ(view.selectedRule(), nullptr);
    EXPECT_EQ(view.draft().name, "kept");
    view.save();
    EXPECT_THAT(names(), ElementsAre("kept"));
}

TEST_F(RulesDashboardViewTest, TheFormOffersProjectsInUseAndWhatTheDraftHas) {
    const auto harbour = insertProject(context(), "Harbour");
    const auto archived = insertProject(context(), "Archived");
    archived->isArchived = true;
    EXPECT_THAT(view.projects(), ElementsAre(harbour));
    view.edit([&archived](RuleDraft& draft) {
        draft.projectId = archived->id();
        draft.category = "手工";
    });
    EXPECT_THAT(view.projects(), ElementsAre(archived, harbour));
    EXPECT_EQ(view.categories().back(), "手工");
    EXPECT_EQ(view.summary(), "When: Application contains “”. Then: Set the category to 手工. Assign it to Archived.");
}

}  // namespace
}  // namespace quorvane
