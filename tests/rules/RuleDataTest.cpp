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
    struct Row {
        std::string json;
        std::optional<Conditions> expected;
    };
    const Row rows[] = {
        {RuleConditionSet{{mail}}.json(), Conditions{mail}},
        {RuleConditionSet{{mail, chat, mail}}.json(), Conditions{mail, chat, mail}},
        {RuleConditionSet{}.json(), Conditions{}},
        {R"({"conditions":[]} )", Conditions{}},
        {R"({ "more": {"x": [1]}, "conditions": [)" + mailJson + "]}", Conditions{mail}},
        {mailJson, Conditions{mail}},
        {R"({"conditions":7,)" + mailJson.substr(1), Conditions{mail}},
        {"{}", std::nullopt},
        {"", std::nullopt},
        {"[" + mailJson + "]", std::nullopt},
        {R"({"conditions":[)" + mailJson + R"(,{"field":"url","operator":"equals","value":"x"}]})", std::nullopt},
        {R"({"conditions":[{"field":"url","id":"no uuid","operator":"equals","value":"x"}]})", std::nullopt},
        {R"({"conditions":[{"field":"url","id":"00000000-0000-4000-8000-00000000000A","operator":"equals","value":7}]})",
         std::nullopt},
        {R"({"field":"url","id":"00000000-0000-4000-8000-00000000000A","matchOperator":"equals","value":"x"})",
         std::nullopt},
        {RuleConditionSet{{mail}}.json() + "x", std::nullopt},
        {R"({"conditions":[{"field":"a","id":"00000000-0000-4000-8000-00000000000A","operator":"b","value":"c"},]})",
         std::nullopt},
        {"{\"conditions\":[{\"field\":\"a\xff\"", std::nullopt},
        {std::string(100'000, '['), std::nullopt},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.json.substr(0, 200));
        EXPECT_EQ(readRuleConditions(row.json), row.expected);
    }
}

TEST(RuleDataTest, ActionsAreReadWithEveryKeyOptionalAndNoneOfTheWrongKind) {
    struct Row {
        std::string json;
        std::optional<RuleActionPayload> expected;
    };
    const RuleActionPayload whole{.category = "工作", .projectId = "x", .tags = {{"b", "a"}}, .stopProcessing = true};
    const Row rows[] = {
        {whole.json(), whole},
        {"{}", RuleActionPayload{}},
        {R"({"stopProcessing":true,"later":{}})", RuleActionPayload{.stopProcessing = true}},
        {R"({"category":null,"tags":null})", RuleActionPayload{}},
        {R"({"tags":[]})", RuleActionPayload{.tags = std::vector<std::string>{}}},
        {R"({"tags":"a"})", std::nullopt},
        {R"({"tags":["a",1]})", std::nullopt},
        {R"({"category":1})", std::nullopt},
        {R"({"stopProcessing":1})", std::nullopt},
        {"[]", std::nullopt},
        {"null", std::nullopt},
        {"", std::nullopt},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.json);
        EXPECT_EQ(readRuleAction(row.json), row.expected);
    }
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
