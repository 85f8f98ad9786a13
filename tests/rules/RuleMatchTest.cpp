#include "rules/RuleMatch.h"

#include "support/Builders.h"

#include <gmock/gmock.h>

namespace quorvane {
namespace {

RuleCondition condition(std::string field, std::string matchOperator, std::string value) {
    return {Uuid::random(), std::move(field), std::move(matchOperator), std::move(value)};
}

TEST(RuleMatchTest, EachFieldAndOperatorTestsTheRecordAsItsTableSays) {
    const auto record = aRecord()
                            .app("Éditeur Ⅳ")
                            .title("  Straße nach Łódź — main.cpp\n")
                            .document("/home/anna/projects/harbour/Plan.md")
                            .url("https://anna@Docs.Example.com:8080/guide?x=1")
                            .make();
    record->appBundleId = "org.example.Editor";
    struct Row {
        const char* field;
        const char* matchOperator;
        const char* value;
        bool expected;
    };
    const Row rows[] = {
        {"appBundleId", "equals", "ORG.EXAMPLE.EDITOR", true},
        {"appBundleId", "equals", "org.example", false},
        {"appName", "equals", "éditeur ⅳ", true},
        {"appName", "equals", "e\u0301diteur ⅳ", true},  // decomposed
        {"appName", "equals", "editeur ⅳ", false},       // diacritics count here
        {"appName", "contains", "EDITEUR", true},
        {"appName", "contains", "\n éditeur\t", true},                    // the value is trimmed
        {"windowTitle", "equals", "Straße nach Łódź — main.cpp", false},  // the record's text is not
        {"windowTitle", "contains", "STRASSE", true},
        {"windowTitle", "contains", "lodz", false},  // the stroke of Ł is no diacritic
        {"windowTitle", "contains", "łodz", true},
        {"windowTitle", "contains", "\u0301", false},
        {"windowTitle", "prefix", "Straße", false},
        {"documentPath", "prefix", "/HOME/anna/projects", true},
        {"documentPath", "prefix", "projects", false},
        {"documentPath", "regex", "harbour/[a-z]+\\.MD$", true},
        {"documentPath", "regex", "^harbour", false},
        {"documentPath", "regex", "(", false},
        {"url", "contains", "x=1", true},
        {"url", "Contains", "x=1", false},  // operators and fields are known by their exact names
        {"URL", "contains", "x=1", false},
        {"url", "", "x=1", false},
        {"urlHost", "equals", "docs.example.com", true},
        {"urlHost", "contains", "anna", false},
        {"category", "contains", "a", false},
        {"appName", "contains", " \n", false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.field) + " " + row.matchOperator + " " + row.value);
        EXPECT_EQ(RuleMatch(*record).matches("and", {condition(row.field, row.matchOperator, row.value)}),
                  row.expected);
    }
}

TEST(RuleMatchTest, WhatARecordLacksIsAnEmptyTextInWhichOnlyAnExpressionFindsSomething) {
    const auto record = std::make_shared<ActivityRecord>();
    for (const char* field : {"appBundleId", "appName", "windowTitle", "documentPath", "url", "urlHost", "unknown"}) {
        SCOPED_TRACE(field);
        for (const char* matchOperator : {"equals", "contains", "prefix"})
            EXPECT_FALSE(RuleMatch(*record).matches("or", {condition(field, matchOperator, "a")}));
        EXPECT_TRUE(RuleMatch(*record).matches("or", {condition(field, "regex", "^$")}));
    }
    record->url = "docs.example.com/guide";
    EXPECT_FALSE(RuleMatch(*record).matches("and", {condition("urlHost", "contains", "docs")}));
}

TEST(RuleMatchTest, ConditionsCombineByTypeAndBlankOnesNeverHold) {
    const auto record = aRecord().app("Editor").make();
    const auto yes = condition("appName", "contains", "edit");
    const auto no = condition("appName", "contains", "mail");
    const auto blank = condition("appName", "contains", " ");
    const auto unknown = condition("appName", "endsWith", "or");
    struct Row {
        const char* type;
        std::vector<RuleCondition> conditions;
        bool expected;
    };
    const Row rows[] = {
        {"and", {yes, yes}, true}, {"and", {yes, no}, false},       {"and", {yes, blank}, false},
        {"and", {}, false},        {"and", {unknown, yes}, false},  {"any", {no, yes}, false},
        {"", {yes}, true},         {"or", {no, yes}, true},         {"OR", {no, yes}, true},
        {"or ", {no, yes}, false}, {"or", {blank, unknown}, false}, {"Or", {blank, unknown, yes}, true},
        {"or", {}, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.type << ", row " << &row - rows);
        EXPECT_EQ(RuleMatch(*record).matches(row.type, row.conditions), row.expected);
    }
}

}  // namespace
}  // namespace quorvane
