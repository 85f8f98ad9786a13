#include "rules/RuleDraft.h"

#include "platform/Clock.h"
#include "rules/RuleActionPayload.h"
#include "support/Builders.h"
#include "support/Matching.h"

namespace quorvane {
namespace {

RuleDraft draft(const std::function<void(RuleDraft&)>& change = [](RuleDraft&) {}) {
    RuleDraft made;
    made.name = "Mail";
    made.value = "mail";
    made.category = "社交";
    change(made);
    return made;
}

TEST(RuleDraftTest, CanBeSavedWithANameAValueAndSomethingToDo) {
    using Change = std::function<void(RuleDraft&)>;
    const auto instead = [](const Change& change) {
        return draft([&](RuleDraft& d) {
            d.category.reset();
            change(d);
        });
    };
    const std::pair<RuleDraft, bool> rows[] = {
        {draft(), true},
        {draft([](RuleDraft& d) { d.category = ""; }), true},  // an empty category is one
        {draft([](RuleDraft& d) { d.name = " \n"; }), false},
        {draft([](RuleDraft& d) { d.value = "\t"; }), false},
        {instead([](RuleDraft&) {}), false},
        {instead([](RuleDraft& d) { d.tags = " , ,"; }), false},
        {instead([](RuleDraft& d) { d.tags = ",a"; }), true},
        {instead([](RuleDraft& d) { d.projectId = Uuid(); }), true},
        {instead([](RuleDraft& d) { d.stopProcessing = true; }), false},
    };
    for (const auto& [made, expected] : rows)
        EXPECT_EQ(made.canSave(), expected);
    EXPECT_EQ(draft([](RuleDraft& d) { d.tags = " a, ,b\n,,c d"; }).parsedTags(),
              (std::vector<std::string>{"a", "b", "c d"}));
}

TEST(RuleDraftTest, WritesOneConditionAndOneActionAndReadsThemBack) {
    const auto now = at("10:00:00");
    const platform::ClockOverride clock([now] { return now; });
    const RuleDraft whole = draft([](RuleDraft& d) {
        d.field = RuleDraft::Field::urlHost;
        d.matchOperator = RuleDraft::MatchOperator::regex;
        d.projectId = Uuid::parse("00000000-0000-4000-8000-00000000000A");
        d.tags = "b,a";
        d.priority = -3;
        d.isEnabled = false;
        d.stopProcessing = true;
    });
    Rule rule;
    rule.createdAt = rule.updatedAt = at("09:00:00");
    rule.type = "or";
    whole.writeTo(rule);
    EXPECT_EQ(rule.type(), "and");
    EXPECT_EQ(rule.createdAt(), at("09:00:00"));
    EXPECT_EQ(rule.updatedAt(), now);
    EXPECT_EQ(rule.action(), R"({"category":"社交","projectId":"00000000-0000-4000-8000-00000000000A",)"
                             R"("stopProcessing":true,"tags":["b","a"]})");
    const auto condition = readRuleConditions(rule.condition())->front();
    EXPECT_EQ(condition, (RuleCondition{condition.id, "urlHost", "regex", "mail"}));
    RuleDraft expected = whole;
    expected.tags = "b, a";
    EXPECT_EQ(RuleDraft(rule), expected);
    draft().writeTo(rule);
    EXPECT_EQ(rule.action(), R"({"category":"社交","stopProcessing":false,"tags":[]})");
    EXPECT_NE(readRuleConditions(rule.condition())->front().id, condition.id);
}

TEST(RuleDraftTest, ShowsTheFirstConditionAndDefaultsForWhatItCannotRead) {
    Rule rule;
    rule.name = "odd";
    EXPECT_EQ(RuleDraft(rule), [] {
        RuleDraft d;
        d.name = "odd";
        return d;
    }());
    rule.condition =
        RuleConditionSet{{{Uuid(), "mood", "endsWith", "first"}, {Uuid(), "url", "regex", "second"}}}.json();
    rule.action = RuleActionPayload{.projectId = "no uuid"}.json();
    RuleDraft expected;
    expected.name = "odd";
    expected.value = "first";
    EXPECT_EQ(RuleDraft(rule), expected);
}

TEST(RuleDraftTest, SummarisesInTheUsersLanguage) {
    const auto project = std::make_shared<Project>();
    project->name = "{Harbour}";
    const RuleDraft whole = draft([&](RuleDraft& d) {
        d.projectId = project->id();
        d.tags = "编程,it's";
    });
    const Localization english("en");
    EXPECT_EQ(whole.summary(english, {project}),
              "When: Application contains “mail”. Then: Set the category to Social. Assign it to {Harbour}. "
              "Add the tags Programming, it's.");
    EXPECT_EQ(draft([](RuleDraft& d) {
                  d.category.reset();
                  d.projectId = Uuid();
              }).summary(english, {project}),
              "When: Application contains “mail”. Then: Nothing happens yet. Choose a category, a project or tags.");
    EXPECT_EQ(draft([](RuleDraft& d) { d.field = RuleDraft::Field::appBundleId; }).summary(english, {}),
              "When: Bundle ID contains “mail”. Then: Set the category to Social.");
    const std::string chinese = whole.summary(Localization("zh"), {project});
    EXPECT_THAT(chinese, AllOf(HasSubstr("社交"), HasSubstr("编程、it's"), HasSubstr("{Harbour}")));
    EXPECT_NE(chinese, whole.summary(english, {project}));
}

}  // namespace
}  // namespace quorvane
