#include "cli/CliFixture.h"

#include "base/Json.h"

#include <fmt/format.h>

namespace quorvane {
namespace {

constexpr const char* shared = "10000000-0000-4000-8000-000000000000";
constexpr const char* projectRow = R"({"entity":"Project","id":"10000000-0000-4000-8000-000000000000","name":"Web"})"
                                   "\n";

std::string shareRow(int number, const std::string& more) {
    return fmt::format(R"({{"entity":"ActivityShare","id":"{}0000000-0000-4000-8000-000000000000",)"
                       R"("share_token":"{:016}","title":"Share {}","created_at":"2026-03-0{}T12:00:00Z"{}}})"
                       "\n",
                       number, number, number, number, more);
}

/// On a machine without a cloud service.
class SharesCommandTest : public CliTest {
protected:
    [[nodiscard]] Json shares() { return parseJson(outputOf({"shares", "list", "--json"})).value_or(Json()); }
};

TEST_F(SharesCommandTest, ListsTheSharesOfTheStoreNewestFirst) {
    load("");
    EXPECT_EQ(outputOf({"shares", "list", "--json"}), "[]\n");
    load(projectRow + shareRow(1, R"(,"is_active":false,"cloud_kit_record_id":"0000000000000001")") +
         shareRow(2, R"(,"expires_at":"2026-03-04T12:00:00Z","cloud_kit_record_id":"0000000000000002")") +
         shareRow(3, R"(,"expires_at":"2026-03-04T12:00:01Z","cloud_kit_record_id":"0000000000000003")") +
         shareRow(4, fmt::format(R"(,"project_ids":["{}"])", shared)));
    expectOutput({"--now", "2026-03-04T12:00:00Z", "shares", "list"}, "shares.txt");
    EXPECT_THAT(outputOf({"dump"}), HasSubstr(jsonText(shares()[0])));
}

TEST_F(SharesCommandTest, WithoutAServiceCreatingFailsAndTheObjectStays) {
    load(projectRow);
    expectRefusal({"--now", "2026-03-04T12:00:00Z", "shares", "create", "--title", "March", "--project", shared,
                   "--project", shared, "--expires", "2026-04-01T00:00:00Z"},
                  1,
                  "The cloud is not available. Check how this computer signs in. (there is no libpq service quorvane ");
    Json share = shares().at(0);
    EXPECT_THAT(share["share_token"].get<std::string>(), MatchesRegex("[0-9a-f]{16}"));
    share.erase("id");
    share.erase("share_token");
    EXPECT_EQ(jsonText(share),
              R"({"entity":"ActivityShare","title":"March","is_active":true,)"
              R"("created_at":"2026-03-04T12:00:00.000000Z","expires_at":"2026-04-01T00:00:00.000000Z",)"
              R"("project_ids":["10000000-0000-4000-8000-000000000000"],"cloud_kit_record_id":null})");
}

TEST_F(SharesCommandTest, StopsWhatIsHereAndSaysWhenAPublicRecordStays) {
    load(shareRow(1, "") + shareRow(2, R"(,"cloud_kit_record_id":"0000000000000002")"));
    EXPECT_EQ(outputOf({"shares", "stop", "10000000-0000-4000-8000-000000000000"}), "");
    expectRefusal({"shares", "stop", "20000000-0000-4000-8000-000000000000"}, 1,
                  "its public record stays: there is no libpq service ");
    for (const Json& share : shares())
        EXPECT_FALSE(share["is_active"].get<bool>()) << jsonText(share);
}

TEST_F(SharesCommandTest, RefusesBeforeAnythingIsWritten) {
    load(projectRow + shareRow(2, ""));
    const std::string before = outputOf({"dump"});
    const auto expectRefused = [&](Arguments arguments, int status, const char* cause) {
        arguments.insert(arguments.begin(), {"--now", "2026-03-04T12:00:00Z", "shares"});
        expectRefusal(arguments, status, cause);
    };
    const std::string unknown = "20000000-0000-4000-8000-000000000000";
    expectRefused({"create", "--title", " \n"}, 1, "the title can't be empty");
    expectRefused({"create", "--title", "a", "--expires", "2026-03-04T12:00:00Z"}, 1,
                  "2026-03-04T12:00:00Z has passed");
    expectRefused({"create", "--title", "a", "--project", shared, "--project", unknown}, 1, "no project 20000000-");
    expectRefused({"create", "--title", "a", "--project", "Web"}, 2, "\"Web\" is no UUID");
    expectRefused({"create"}, 2, "--title is required");
    expectRefused({"stop", shared}, 1, "there is no share 10000000-");
    EXPECT_EQ(outputOf({"dump"}), before);
}

}  // namespace
}  // namespace quorvane
