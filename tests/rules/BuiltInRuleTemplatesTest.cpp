#include "rules/BuiltInRuleTemplates.h"

#include "rules/RuleDraft.h"
#include "rules/RuleEngine.h"
#include "rules/RuleSignature.h"
#include "support/Builders.h"
#include "support/TemporaryStore.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <set>

namespace quorvane {

void PrintTo(const BuiltInRuleTemplates::ImportResult& result, std::ostream* out) {
    *out << result.imported << " imported, " << result.skipped << " skipped";
}

namespace {

using BuiltInRuleTemplates::ImportResult;

class BuiltInRuleTemplatesTest : public testing::Test {
protected:
    ImportResult import(std::string_view language = "en") {
        return BuiltInRuleTemplates::importAll(store.context(), Localization(language));
    }
    std::vector<std::shared_ptr<Rule>> rules() { return store.context().fetch<Rule>(); }

    TemporaryStore store;
};

TEST_F(BuiltInRuleTemplatesTest, HoldSevenKindsOfApplicationsInTheirOrder) {
    std::vector<std::string> found;
    for (const auto& each : BuiltInRuleTemplates::all())
        found.push_back(fmt::format("{} {} {}..{} {} {}", each.id, each.appNames.size(), each.appNames.front(),
                                    each.appNames.back(), rawValue(each.category), each.priority));
    EXPECT_EQ(found, (std::vector<std::string>{
                         "developer-tools 21 Xcode..Sourcetree 工作 900", "office-docs 26 Word..提醒事项 工作 910",
                         "design-tools 15 Figma..Affinity Photo 工作 920", "study-research 18 Books..Udemy 学习 930",
                         "communication 27 Messages..腾讯会议 社交 940", "entertainment 21 Music..网易云音乐 娱乐 950",
                         "shopping 18 Amazon..拼多多 购物 960"}));
}

TEST_F(BuiltInRuleTemplatesTest, ImportMakesOneRuleForEachNameAndTheSecondImportNone) {
    EXPECT_EQ(import(), (ImportResult{146, 0}));
    EXPECT_EQ(rules().size(), 146);
    const auto first = rules().front();
    EXPECT_EQ(first->name(), "Development: Xcode");
    EXPECT_EQ(first->priority(), 900);
    EXPECT_EQ(first->type(), "and");
    // The hash was worked out by hand with another program.
    EXPECT_EQ(first->condition(), R"({"conditions":[{"field":"appName","id":"00000000-0000-4000-8000-301ACDE5F136",)"
                                  R"("operator":"contains","value":"Xcode"}]})");
    EXPECT_EQ(first->action(), R"({"category":"工作","stopProcessing":false,"tags":["development"]})");
    EXPECT_EQ(import(), (ImportResult{0, 146}));
    EXPECT_EQ(BuiltInRuleTemplates::message({1, 145}, Localization("en")), "1 rule was added; 145 were there already.");
    EXPECT_EQ(store.anotherContext()->count<Rule>(), 146);
}

TEST_F(BuiltInRuleTemplatesTest, ImportBringsBackWhatIsMissingAndRespectsWhatTheUserWrote) {
    import();
    store.context().remove(rules()[3]);
    EXPECT_EQ(import(), (ImportResult{1, 145}));

    for (const auto& rule : rules())
        store.context().remove(rule);
    RuleDraft own;
    own.name = "my own";
    own.value = "Figma";
    own.category = "工作";
    own.tags = "design";
    const auto rule = std::make_shared<Rule>();
    own.writeTo(*rule);
    store.context().insert(rule);
    EXPECT_EQ(import(), (ImportResult{145, 1}));
}

TEST_F(BuiltInRuleTemplatesTest, AnotherLanguageBringsASecondSetWithItsOwnTags) {
    import("en");
    EXPECT_EQ(import("zh"), (ImportResult{146, 0}));
    const auto record = aRecord().app("Figma Beta").make();
    RuleEngine::apply(*record, rules(), {});
    EXPECT_EQ(record->category(), "工作");
    EXPECT_EQ(record->tagList().size(), 2);
}

TEST_F(BuiltInRuleTemplatesTest, AFailingSaveKeepsTheRulesForTheNextOne) {
    store.context().save();
    Database other({.file = store.file()});
    other.execute("CREATE TRIGGER refuse BEFORE INSERT ON rule BEGIN SELECT RAISE(ABORT, 'refused'); END");
    EXPECT_EQ(import(), (ImportResult{146, 0}));
    EXPECT_EQ(store.anotherContext()->count<Rule>(), 0);
    other.execute("DROP TRIGGER refuse");
    store.context().save();
    EXPECT_EQ(store.anotherContext()->count<Rule>(), 146);
}

}  // namespace
}  // namespace quorvane
