#include "store/StoreLoad.h"

#include "base/Text.h"
#include "platform/Clock.h"
#include "store/ModelContext.h"
#include "support/Matchers.h"
#include "support/Matching.h"
#include "support/TextTable.h"
#include "transfer/TransferStore.h"

#include <fmt/format.h>
#include <sstream>

namespace quorvane {
namespace {

constexpr const char* webId = "98C2DF4C-7D2A-432C-942F-16386AD609B0";
const std::string web = R"({"entity":"Project","id":"98C2DF4C-7D2A-432C-942F-16386AD609B0","name":"Web","color":"sky"})"
                        "\n";

std::string recordWith(std::string_view members) {
    return fmt::format(R"({{"entity":"ActivityRecord","id":"00000000-0000-4000-8000-000000000006",{}}})"
                       "\n",
                       members);
}

TEST(StoreLoadTest, CountsTheRowsOfEachEntityThatOccurredInTheOrderOfTheSchema) {
    TransferStore store;
    EXPECT_THAT(store.load(""), IsEmpty());
    EXPECT_THAT(store.load("{\"entity\":\"Schema\",\"version\":\"1.0.0\"}\n"), IsEmpty());
    EXPECT_THAT(
        store.load(
            "{\"entity\":\"Rule\"}\n{\"entity\":\"Project\"}\n{\"entity\":\"ActivityRecord\"}\n{\"entity\":\"Rule\"}"),
        ElementsAre(Pair("ActivityRecord", 1), Pair("Project", 1), Pair("Rule", 2)));
    EXPECT_EQ(store.rowCount(), 4U);  // each without an id got one of its own
    EXPECT_THAT(store.dump(), Not(HasSubstr("00000000-0000-0000-0000-000000000000")));
}

TEST(StoreLoadTest, GivesWhatALineLeavesOutItsDefaultAndOneInstantToAllOfIt) {
    const platform::ClockOverride clock([now = at("2026-03-02T15:00:00Z")]() mutable { return now += 1s; });
    TransferStore store;
    store.load(recordWith(R"("app_name":"Editor")") +
               "{\"entity\":\"Rule\",\"id\":\"00000000-0000-4000-8000-000000000003\"}");
    EXPECT_EQ(store.dump(),
              R"({"entity":"Schema","version":"1.0.0"}
{"entity":"Rule","id":"00000000-0000-4000-8000-000000000003","name":"","priority":100,"is_enabled":true,"type":"and","condition":"{}","action":"{}","created_at":"2026-03-02T15:00:01.000000Z","updated_at":"2026-03-02T15:00:01.000000Z"}
{"entity":"ActivityRecord","id":"00000000-0000-4000-8000-000000000006","start_time":"2026-03-02T15:00:01.000000Z","end_time":null,"activity_type":"app","app_bundle_id":null,"app_name":"Editor","window_title":null,"document_path":null,"url":null,"category":null,"tags":"","source":null,"confidence":1.0,"billing_status":"review","device_id":null,"user_local_id":null,"created_at":"2026-03-02T15:00:01.000000Z","updated_at":"2026-03-02T15:00:01.000000Z","cloud_kit_record_id":null,"project_id":null}
)");
}

TEST(StoreLoadTest, ReplacesTheRowThatHasTheIdAndAllOfItAndFindsProjectsWhereverTheyStand) {
    const std::string ofWeb =
        recordWith(R"("app_name":"Old","window_title":"Old","project_id":")" + text::lowercased(webId) + '"');
    const std::string inWeb = fmt::format(R"("project_id":"{}")", webId);
    const std::string renamed =
        fmt::format(R"({{"entity":"Project","id":"{}","name":"Renamed"}})", text::lowercased(webId));
    const auto expectAfter = [](const std::vector<std::string>& loads, std::size_t rowCount,
                                const std::vector<std::string>& pieces) {
        TransferStore store;
        for (const std::string& lines : loads)
            store.load(lines);
        EXPECT_EQ(store.rowCount(), rowCount);
        for (const std::string& piece : pieces)
            EXPECT_THAT(store.dump(), HasSubstr(piece));
    };
    const std::string withoutProject = R"("project_id":null)";
    expectAfter({web + ofWeb, recordWith(R"("app_name":"New")")}, 2,
                {R"("app_name":"New")", R"("window_title":null)", withoutProject});
    expectAfter({web + ofWeb, renamed}, 2, {R"("name":"Renamed","color":null)", inWeb});
    expectAfter({recordWith(R"("tags":"First")") + recordWith(R"("tags":"Last")")}, 1, {R"("tags":"Last")"});
    expectAfter({ofWeb + web}, 2, {inWeb});
    expectAfter({ofWeb + recordWith(withoutProject) + web}, 2, {withoutProject});
}

TEST(StoreLoadTest, AcceptsTheFormsThatPeopleWrite) {
    const std::pair<const char*, const char*> rows[] = {
        {R"("start_time":"2026-03-02T10:00:00+01:00")", R"("start_time":"2026-03-02T09:00:00.000000Z")"},
        {R"("start_time":"2026-03-02T09:00:00.5z")", R"("start_time":"2026-03-02T09:00:00.500000Z")"},
        {R"( "confidence" : 1 )", R"("confidence":1.0)"},
        {R"("id":"abcdef00-0000-4000-8000-000000000006")", R"("id":"ABCDEF00-0000-4000-8000-000000000006")"},
        {R"("tags":"\u5de5")", R"("tags":"工")"},
    };
    for (const auto& [written, expected] : rows) {
        SCOPED_TRACE(written);
        TransferStore store;
        store.load(fmt::format("\t{{ {}, \"entity\" : \"ActivityRecord\" }} \r\n", written));
        EXPECT_THAT(store.dump(), HasSubstr(expected));
    }
}

TEST(StoreLoadTest, RefusesABadLineWithItsNumberAndCause) {
    TransferStore store;
    const auto expectRefused = [&](const std::string& line, const std::string& cause) {
        SCOPED_TRACE(line);
        const std::string refusal = store.refusalOf(web + line + "\n" + recordWith("\"tags\":\"\""));
        EXPECT_THAT(refusal, MatchesRegex("line 2: " + cause));
        EXPECT_EQ(store.rowCount(), 0U);
    };
    for (const auto& row : textTable(QUORVANE_TRANSFER_DATA "/bad-lines.txt"))
        expectRefused(row[0], row[1]);
    expectRefused("{\"entity\":\"Rule\",\"name\":\"\xFF\"}", "this is not JSON .*");
    expectRefused(" \t\r", "the line is empty");
}

TEST(StoreLoadTest, LeavesTheStoreAsItWasWhateverLineIsBad) {
    TransferStore store;
    store.load(web);
    const std::string before = store.dump();
    constexpr int count = 50;
    for (const int bad : {1, 2, count / 2, count}) {
        std::string lines;
        for (int i = 1; i <= count; ++i)
            lines += i == bad     ? "{\n"
                     : i % 2 == 0 ? recordWith("\"tags\":\"x\"")
                                  : R"({"entity":"Project","id":")" + std::string(webId) + "\",\"name\":\"changed\"}\n";
        EXPECT_THAT(store.refusalOf(lines), StartsWith(fmt::format("line {}: ", bad)));
        EXPECT_EQ(store.dump(), before);
    }
}

TEST(StoreLoadTest, NamesTheFirstLineWhoseProjectIsNowhere) {
    TransferStore store;
    const std::string lost = recordWith(R"("project_id":"11111111-1111-4111-8111-111111111111")");
    EXPECT_THAT(store.refusalOf(web + lost + web + lost), StartsWith("line 2: "));
    // Also when a later line has replaced the row.
    EXPECT_THAT(store.refusalOf(lost + recordWith("\"project_id\":null")), StartsWith("line 1: "));
}

TEST(StoreLoadTest, ReportsInputThatFailsInTheMiddle) {
    class Failing : public std::stringbuf {
    public:
        explicit Failing(const std::string& text) : std::stringbuf(text) {}

    protected:
        int_type underflow() override {
            if (in_avail() <= 0) throw std::runtime_error("the device is gone");
            return std::stringbuf::underflow();
        }
    };
    TransferStore store;
    Failing buffer(web);
    std::istream input(&buffer);
    EXPECT_THROW(static_cast<void>(StoreLoad::read(store.database(), input)), StoreLoad::Error);
    EXPECT_EQ(store.rowCount(), 0U);
}

TEST(StoreLoadTest, SurvivesLinesMadeToTireIt) {
    TransferStore store;
    std::string deep = R"({"entity":"Rule","name":)" + std::string(100'000, '[');
    EXPECT_THAT(store.refusalOf(deep), HasSubstr("this is not JSON"));
    std::string wide = R"({"entity":"Rule")";
    for (int i = 0; i < 100'000; ++i)
        wide += fmt::format(",\"k{}\":0", i);
    EXPECT_THAT(store.refusalOf(wide + "}"), HasSubstr("more than 100 keys"));
    EXPECT_LT(store.refusalOf(R"({"entity":")" + std::string(1'000'000, 'x') + "\"}").size(), 200U);
    store.load(R"({"entity":"Rule","name":")" + std::string(1'000'000, 'x') + "\"}");
    EXPECT_EQ(store.rowCount(), 1U);
}

TEST(StoreLoadTest, GivesUpWhileAnotherProgramHoldsTheStore) {
    TransferStore store;
    Database other({.file = store.file()});
    other.execute("BEGIN IMMEDIATE");
    const auto error = storeErrorOf([&] { store.load(web); });
    other.execute("ROLLBACK");
    EXPECT_EQ(error.code(), StoreError::Code::busy);
    EXPECT_EQ(store.rowCount(), 0U);
}

}  // namespace
}  // namespace quorvane
