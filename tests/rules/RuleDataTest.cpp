#include "rules/RuleActionPayload.h"
#include "rules/RuleCondition.h"
#include "rules/RuleSignature.h"

#include <gmock/gmock.h>
#include <ostream>

namespace quorvane {
namespace {

const Uuid id = Uuid::parse("00000000-0000-4000-8000-00000000000a").value();
const RuleCondition mail{id, "appName", "contains", "Mail"};
const RuleCondition chat{id, "url", "prefix", "https://\"聊天\"\\\n"};

using Conditions = std::vector<RuleCondition>;

TEST(RuleDataTest, ConditionsAreReadFromASetFromOneThatStandsAloneAndFromNothingElse) {
    const std::string mailJson =
        R"({"id":"00000000-0000-4000-8000-00000000000A","field":"appName","operator":"contains","value":"Mail"})";
    const std::pair<std::string, Conditions> rows[] = {
        {RuleConditionSet{{mail}}.json(), {mail}},
        {RuleConditionSet{{mail, chat, mail}}.json(), {mail, chat, mail}},
        {RuleConditionSet{}.json(), {}},
        {R"({"conditions":[]} )", {}},
        {R"({ "more": {"x": [1]}, "conditions": [)" + mailJson + "]}", {mail}},
        {mailJson, {mail}},
        {R"({"conditions":7,)" + mailJson.substr(1), {mail}},
    };
    for (const auto& [json, expected] : rows)
        EXPECT_EQ(readRuleConditions(json), expected) << json;
    const std::string idJson = R"("id":"00000000-0000-4000-8000-00000000000A")";
    const std::string others[] = {
        "{}",
        "",
        "[" + mailJson + "]",
        R"({"conditions":[)" + mailJson + R"(,{"field":"url","operator":"equals","value":"x"}]})",
        R"({"conditions":[{"field":"url","id":"no uuid","operator":"equals","value":"x"}]})",
        R"({"conditions":[{"field":"url",)" + idJson + R"(,"operator":"equals","value":7}]})",
        R"({"field":"url",)" + idJson + R"(,"matchOperator":"equals","value":"x"})",
        RuleConditionSet{{mail}}.json() + "x",
        R"({"conditions":[{"field":"a",)" + idJson + R"(,"operator":"b","value":"c"},]})",
        "{\"conditions\":[{\"field\":\"a\xff\"",
        std::string(100'000, '['),
    };
    for (const auto& json : others)
        EXPECT_EQ(readRuleConditions(json), std::nullopt) << json.substr(0, 200);
}

TEST(RuleDataTest, ActionsAreReadWithEveryKeyOptionalAndNoneOfTheWrongKind) {
    const RuleActionPayload whole{.category = "工作", .projectId = "x", .tags = {{"b", "a"}}, .stopProcessing = true};
    const std::pair<std::string, RuleActionPayload> rows[] = {
        {whole.json(), whole},
        {"{}", {}},
        {R"({"stopProcessing":true,"later":{}})", {.stopProcessing = true}},
        {R"({"category":null,"tags":null})", {}},
        {R"({"tags":[]})", {.tags = std::vector<std::string>{}}},
    };
    for (const auto& [json, expected] : rows)
        EXPECT_EQ(readRuleAction(json), expected) << json;
    for (const char* json :
         {R"({"tags":"a"})", R"({"tags":["a",1]})", R"({"category":1})", R"({"stopProcessing":1})", "[]", "null", ""})
        EXPECT_EQ(readRuleAction(json), std::nullopt) << json;
}

TEST(RuleDataTest, WrittenWithSortedKeysAndWithoutWhatIsNone) {
    EXPECT_EQ(
        RuleConditionSet{{chat}}.json(),
        R"({"conditions":[{"field":"url","id":"00000000-0000-4000-8000-00000000000A","operator":"prefix","value":"https://\"聊天\"\\\n"}]})");
    EXPECT_EQ(
        (RuleActionPayload{.category = "工作", .projectId = "x", .tags = {{"b", "a"}}, .stopProcessing = false}.json()),
        R"({"category":"工作","projectId":"x","stopProcessing":false,"tags":["b","a"]})");
    EXPECT_EQ(RuleActionPayload{}.json(), "{}");
}

TEST(RuleDataTest, SignaturesTellRulesApartByWhatTheyTestAndDo) {
    RuleCondition other = mail;
    other.id = Uuid::random();
    const std::string action = R"({"tags":["b","a"],"category":"c"})";
    EXPECT_EQ(ruleSignature(RuleConditionSet{{mail}}.json(), action), "appName|contains|Mail|c||a,b|false");
    EXPECT_EQ(ruleSignature(RuleConditionSet{{chat, mail}}.json(), action),
              ruleSignature(RuleConditionSet{{other, chat}}.json(),
                            R"({"category":"c","stopProcessing":false,"tags":["a","b"]})"));
    EXPECT_EQ(ruleSignature("no json", "nor this"), "no json|nor this");
    EXPECT_EQ(ruleSignature(R"({"conditions":[]})", "{}"), "||||false");
}

}  // namespace
}  // namespace quorvane
