#include "cli/CliFixture.h"

#include "base/Json.h"

namespace quorvane {
namespace {

constexpr const char* id = "10000000-0000-4000-8000-000000000000";
constexpr const char* row =
    R"({"entity":"Project","id":"10000000-0000-4000-8000-000000000000","name":"Web","color":"mint",)"
    R"("client_name":"ACME","hourly_rate":80.0,"currency_code":"EUR","created_at":"2026-03-01T00:00:00.000000Z",)"
    R"("updated_at":"2026-03-01T00:00:00.000000Z","is_archived":false,"cloud_kit_record_id":null)";
constexpr const char* now = "2026-03-04T12:00:00Z";

class ProjectsCommandTest : public CliTest {
protected:
    [[nodiscard]] std::string list() { return outputOf({"projects", "list", "--json"}); }
};

TEST_F(ProjectsCommandTest, ListsByNameAndThenIdWithTheColorsOfTheTone) {
    load("");
    EXPECT_EQ(list(), "[]\n");
    load(R"({"entity":"Project","id":"40000000-0000-4000-8000-000000000000","name":"ä","color":"gray"}
{"entity":"Project","id":"30000000-0000-4000-8000-000000000000","name":"a","is_archived":true,"color":"Sky"}
{"entity":"Project","id":"20000000-0000-4000-8000-000000000000","name":"a","client_name":"B\nC","hourly_rate":12.5}
)" + std::string(row) +
         "}\n");
    std::vector<std::string> found;
    for (const Json& project : parseJson(list()).value_or(Json()))
        found.push_back(project["id"].get<std::string>().substr(0, 1) + project["fill"].get<std::string>() +
                        project["accent"].get<std::string>());
    EXPECT_THAT(found, ElementsAre("1#BDF0DA#12B886", "2#D9E3EC#5C6B7A", "3#C2DBFA#1C7ED6", "4#D9E3EC#5C6B7A"));
    EXPECT_THAT(list(), HasSubstr(std::string(row) + R"(,"fill":"#BDF0DA","accent":"#12B886"})"));
    expectOutput({"projects", "list"}, "projects.txt");
}

TEST_F(ProjectsCommandTest, AddsAProjectAndPrintsItsIdOrItsRow) {
    const std::string added = outputOf({"projects", "add", "--name", "Plain"});
    EXPECT_THAT(added, MatchesRegex("[0-9A-F-]{36}\n"));  // which made the store
    Json shown = parseJson(outputOf({"--now", now, "--json", "projects", "add", "--name", "Web", "--client", "ACME",
                                     "--rate", "1e2", "--currency", "EUR", "--color", "MINT"}))
                     .value_or(Json());
    const Json all = parseJson(list()).value_or(Json());
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(all[0]["id"].get<std::string>() + "\n", added);
    EXPECT_EQ(all[1], shown);
    shown.erase("id");
    EXPECT_EQ(jsonText(shown),
              R"({"entity":"Project","name":"Web","color":"mint","client_name":"ACME",)"
              R"("hourly_rate":100.0,"currency_code":"EUR","created_at":"2026-03-04T12:00:00.000000Z",)"
              R"("updated_at":"2026-03-04T12:00:00.000000Z","is_archived":false,)"
              R"("cloud_kit_record_id":null,"fill":"#BDF0DA","accent":"#12B886"})");
}

TEST_F(ProjectsCommandTest, ChangesWhatTheOptionsNameAndArchives) {
    load(std::string(row) + "}\n");
    const auto expectAfter = [&](const Arguments& arguments, const Json& changes, const char* instant = now) {
        SCOPED_TRACE(arguments[1]);
        Json expected = parseJson(list()).value_or(Json())[0];
        expected.update(changes);
        Arguments all{"--now", instant};
        all.insert(all.end(), arguments.begin(), arguments.end());
        EXPECT_EQ(outputOf(all), "");
        EXPECT_EQ(parseJson(list()).value_or(Json())[0], expected);
    };
    const std::string updated = "2026-03-04T12:00:00.000000Z";
    expectAfter({"projects", "edit", id, "--client", "", "--rate", "0"},
                {{"client_name", nullptr}, {"hourly_rate", 0.0}, {"updated_at", updated}});
    expectAfter({"projects", "edit", id, "--color", "rose", "--name", "Site"},
                {{"name", "Site"}, {"color", "rose"}, {"fill", "#FBD1D8"}, {"accent", "#E64980"}});
    expectAfter({"projects", "archive", id}, {{"is_archived", true}});
    expectAfter({"projects", "archive", id}, Json::object(), "2026-03-05T12:00:00Z");
}

TEST_F(ProjectsCommandTest, RefusesWhatIsNotThereAndNamesOfBlanks) {
    const char* other = "20000000-0000-4000-8000-000000000000";
    load(std::string(row) + "}\n");
    const std::string before = outputOf({"dump"});
    expectRefusal({"projects", "edit", other, "--name", "x"}, 1, "there is no project 20000000-");
    expectRefusal({"projects", "archive", other}, 1, "there is no project 20000000-");
    expectRefusal({"projects", "add", "--name", " \n"}, 1, "the name can't be empty");
    expectRefusal({"projects", "edit", id, "--rate", "1", "--name", ""}, 1, "the name can't be empty");
    expectRefusal({"projects", "edit", id, "--currency", " "}, 1, "the currency can't be empty");
    EXPECT_EQ(outputOf({"dump"}), before);
}

}  // namespace
}  // namespace quorvane
