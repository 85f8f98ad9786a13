#include "cli/CliFixture.h"

#include "base/Json.h"

#include <fmt/format.h>

namespace quorvane {
namespace {

constexpr const char* projectLine =
    "{\"entity\":\"Project\",\"id\":\"A0000000-0000-4000-8000-000000000000\",\"name\":\"Web\"}\n";

std::string ruleLine(const std::string& id, int priority, const std::string& updated) {
    return fmt::format(R"({{"entity":"Rule","id":"{0}0000000-0000-4000-8000-000000000000","name":"Rule {0}",)"
                       R"("priority":{1},"updated_at":"2026-03-{2}T00:00:00.000000Z"}})"
                       "\n",
                       id, priority, updated);
}

class RulesCommandTest : public CliTest {
protected:
    [[nodiscard]] Json list() { return parseJson(outputOf({"rules", "list", "--json"})).value_or(Json()); }
    [[nodiscard]] std::vector<std::string> names() {
        std::vector<std::string> found;
        for (const Json& rule : list())
            found.push_back(rule["name"]);
        return found;
    }
};

TEST_F(RulesCommandTest, ListsInTheOrderOfEvaluation) {
    load(ruleLine("4", 100, "01") + ruleLine("3", 100, "02") + ruleLine("2", 100, "02") + ruleLine("1", -1, "01"));
    EXPECT_THAT(names(), ElementsAre("Rule 1", "Rule 2", "Rule 3", "Rule 4"));
}

TEST_F(RulesCommandTest, AddsARuleAndShowsItInATable) {
    load(projectLine);
    Arguments arguments{"--now", "2026-03-04T12:00:00Z", "--json", "rules", "add", "--name", "Docs"};
    arguments.insert(arguments.end(), {"--field", "urlHost", "--operator", "equals", "--value", " example.com"});
    arguments.insert(arguments.end(), {"--category", "work", "--tag", "a, ,b", "--tag", "c", "--priority", "-7"});
    arguments.insert(arguments.end(), {"--stop", "--project", "a0000000-0000-4000-8000-000000000000"});
    const Json added = parseJson(outputOf(arguments)).value_or(Json());
    EXPECT_EQ(list(), Json::array({added}));
    EXPECT_EQ(added["priority"], -7);
    EXPECT_EQ(added["created_at"], "2026-03-04T12:00:00.000000Z");
    EXPECT_EQ(added["updated_at"], added["created_at"]);
    EXPECT_EQ(added["action"], R"({"category":"工作","projectId":"A0000000-0000-4000-8000-000000000000",)"
                               R"("stopProcessing":true,"tags":["a","b","c"]})");
    EXPECT_THAT(added["condition"].get<std::string>(),
                AllOf(HasSubstr(R"("field":"urlHost")"), HasSubstr(R"("operator":"equals","value":" example.com")")));
    EXPECT_THAT(outputOf({"rules", "list"}),
                AllOf(HasSubstr("      -7  on     Docs  " + added["id"].get<std::string>()), HasSubstr("example.com"),
                      HasSubstr("Web"), HasSubstr("category to Work.")));
}

TEST_F(RulesCommandTest, RefusesADraftThatCanNotBeSaved) {
    load(projectLine);
    const auto expectRefused = [this](Arguments arguments, const char* cause) {
        arguments.insert(arguments.begin(), {"rules", "add", "--field", "appName", "--operator", "contains"});
        expectRefusal(arguments, 1, cause);
    };
    expectRefused({"--name", " ", "--value", "x", "--tag", "a"}, "--name");
    expectRefused({"--name", "n", "--value", "\t", "--tag", "a"}, "--value");
    expectRefused({"--name", "n", "--value", "x", "--tag", " , ", "--category", ""}, "something to do");
    expectRefused({"--name", "n", "--value", "x", "--project", "B0000000-0000-4000-8000-000000000000"},
                  "no project B0000000-");
    EXPECT_EQ(list(), Json::array());
}

TEST_F(RulesCommandTest, ImportsTheTemplatesThatAreNotThereYet) {
    EXPECT_EQ(outputOf({"rules", "import-templates"}), "{\"imported\":146,\"skipped\":0}\n");
    EXPECT_EQ(outputOf({"rules", "import-templates"}), "{\"imported\":0,\"skipped\":146}\n");
    EXPECT_EQ(outputOf({"rules", "remove", list()[3]["id"]}), "");
    EXPECT_EQ(outputOf({"rules", "import-templates"}), "{\"imported\":1,\"skipped\":145}\n");
}

TEST_F(RulesCommandTest, TurnsARuleOffAndOnAndNotesTheChangeAlone) {
    load(ruleLine("1", 100, "01"));
    const std::string id = "10000000-0000-4000-8000-000000000000";
    const auto expectAfter = [&](const char* command, const char* day, bool isEnabled, const char* updated) {
        SCOPED_TRACE(day);
        EXPECT_EQ(outputOf({"--now", fmt::format("2026-03-{}T00:00:00Z", day), "rules", command, id}), "");
        EXPECT_EQ(list()[0]["is_enabled"], isEnabled);
        EXPECT_EQ(list()[0]["updated_at"], fmt::format("2026-03-{}T00:00:00.000000Z", updated));
    };
    expectAfter("enable", "02", true, "01");
    expectAfter("disable", "03", false, "03");
    expectAfter("disable", "04", false, "03");
    expectAfter("enable", "05", true, "05");
    for (const char* command : {"remove", "enable", "disable"})
        EXPECT_THAT(run({"rules", command, "20000000-0000-4000-8000-000000000000"}).err,
                    isRefusal(HasSubstr("there is no rule 20000000-")));
}

}  // namespace
}  // namespace quorvane
