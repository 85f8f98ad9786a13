#include "rules/RuleEngine.h"

#include "rules/RuleActionPayload.h"
#include "rules/RuleDraft.h"
#include "support/Builders.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

namespace quorvane {
namespace {

using Rules = std::vector<std::shared_ptr<Rule>>;

/// A rule for every record of the editor.
std::shared_ptr<Rule> rule(const std::string& name, const RuleActionPayload& action, std::int64_t priority = 100,
                           std::string_view updated = "09:00:00") {
    RuleDraft draft;
    draft.name = name;
    draft.value = "Editor";
    draft.priority = priority;
    auto made = std::make_shared<Rule>();
    draft.writeTo(*made);
    made->action = action.json();
    made->updatedAt = at(updated);
    return made;
}

std::shared_ptr<Rule> changed(std::shared_ptr<Rule> rule, const std::function<void(Rule&)>& change) {
    change(*rule);
    return rule;
}

/// What the rules make of a record of the editor whose confidence was 0.5: "category|tags|confidence|source".
std::string classified(const Rules& rules, const std::vector<std::shared_ptr<Project>>& projects = {}) {
    const auto record = aRecord().app("Editor").tags("old").make();
    record->confidence = 0.5;
    const Date updated = record->updatedAt();
    RuleEngine::apply(*record, rules, projects);
    EXPECT_EQ(record->updatedAt(), updated);
    return fmt::format("{}|{}|{}|{}|{}", record->category().value_or("-"), record->tags(), record->confidence(),
                       record->project() ? record->project()->name() : "-", record->source().value_or("-"));
}

TEST(RuleEngineTest, RunsByPriorityThenNewestFirstAndTheLastWriteStands) {
    const RuleActionPayload a{.category = "A", .tags = {{"x"}}};
    const RuleActionPayload b{.category = "B", .tags = {{"y", "x", " "}}};
    struct Row {
        const char* name;
        Rules rules;
        const char* expected;
    };
    const Row rows[] = {
        {"no rules", {}, "-|old|0.5|-|-"},
        {"by priority", {rule("b", b, 2), rule("a", a, 1)}, "B|old,x,y|0.92|-|rule:a|rule:b"},
        {"the newer goes first",
         {rule("a", a, 1, "09:00:00"), rule("b", b, 1, "09:00:01")},
         "A|old,y,x|0.92|-|rule:b|rule:a"},
        {"full ties keep their order", {rule("a", a), rule("b", b)}, "B|old,x,y|0.92|-|rule:a|rule:b"},
        {"negative priorities", {rule("a", a, 0), rule("b", b, -1)}, "A|old,y,x|0.92|-|rule:b|rule:a"},
        {"a stop ends the run",
         {rule("a", {.category = "A", .stopProcessing = true}, 1), rule("b", b, 2)},
         "A|old|0.92|-|rule:a"},
        {"a stop that doesn't match stops nothing",
         {changed(rule("a", {.stopProcessing = true}, 1), [](Rule& r) { r.condition = "{}"; }), rule("b", b, 2)},
         "B|old,y,x|0.92|-|rule:b"},
        {"disabled", {changed(rule("a", a), [](Rule& r) { r.isEnabled = false; })}, "-|old|0.5|-|-"},
        {"an empty set never matches, not even by or",
         {changed(rule("a", a),
                  [](Rule& r) {
                      r.condition = R"({"conditions":[]})";
                      r.type = "or";
                  })},
         "-|old|0.5|-|-"},
        {"an action that does nothing leaves its name", {rule("a", {})}, "-|old|0.5|-|rule:a"},
        {"so does one that can't be read, and it stops nothing",
         {changed(rule("a", a, 1), [](Rule& r) { r.action = R"({"stopProcessing":true,"tags":1})"; }), rule("b", b, 2)},
         "B|old,y,x|0.92|-|rule:a|rule:b"},
        {"empty category and no tags",
         {rule("a", {.category = "", .tags = std::vector<std::string>{}})},
         "-|old|0.5|-|rule:a"},
        {"tags alone", {rule("a", {.tags = {{"x"}}})}, "-|old,x|0.9|-|rule:a"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(classified(row.rules), row.expected);
    }
}

TEST(RuleEngineTest, AssignsTheFirstProjectOfTheIdAndNoneThatIsUnknown) {
    std::vector<std::shared_ptr<Project>> projects;
    for (const char* name : {"one", "two", "twin"}) {
        projects.push_back(std::make_shared<Project>());
        projects.back()->name = name;
    }
    projects[2]->id = projects[1]->id();
    std::string lower = projects[1]->id().string();
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char c) { return c >= 'A' && c <= 'F' ? c + 32 : c; });
    EXPECT_EQ(classified({rule("a", {.projectId = lower})}, projects), "-|old|0.95|two|rule:a");
    for (const std::string& id : {std::string("none"), Uuid().string()})
        EXPECT_EQ(classified({rule("a", {.projectId = id})}, projects), "-|old|0.5|-|rule:a");
}

TEST(RuleEngineTest, ContinuesTheTrailOfTheSourceAndNeverLowersConfidence) {
    const auto record = aRecord().app("Editor").source("system").make();
    RuleEngine::apply(*record, {rule("A", {.category = "c"}), rule("B|", {})}, {});
    EXPECT_EQ(record->source(), "system|rule:A|rule:B|");
    EXPECT_EQ(record->confidence(), 1.0);
}

}  // namespace
}  // namespace quorvane
