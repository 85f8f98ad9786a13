#include "store/StoreLoad.h"

#include "base/Text.h"
#include "platform/Clock.h"
#include "store/ModelContext.h"
#include "support/Matchers.h"
#include "transfer/TransferStore.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <sstream>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;

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
    EXPECT_THAT(store.dump(), testing::Not(HasSubstr("00000000-0000-0000-0000-000000000000")));
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
    struct Row {
        const char* name;
        std::vector<std::string> loads;
        std::size_t rowCount;
        std::vector<std::string> expected;
    };
    const Row rows[] = {
        {"an attribute that is left out takes its default",
         {web + ofWeb, recordWith(R"("app_name":"New")")},
         2,
         {R"("app_name":"New")", R"("window_title":null)", R"("project_id":null)"}},
        {"what refers to a replaced project stays",
         {web + ofWeb, renamed},
         2,
         {R"("name":"Renamed","color":null)", inWeb}},
        {"the last line wins",
         {recordWith(R"("tags":"First")") + recordWith(R"("tags":"Last")")},
         1,
         {R"("tags":"Last")"}},
        {"a project that follows later", {ofWeb + web}, 2, {inWeb}},
        {"a project that is taken away before it follows",
         {ofWeb + recordWith(R"("project_id":null)") + web},
         2,
         {R"("project_id":null)"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        TransferStore store;
        for (const std::string& lines : row.loads)
            store.load(lines);
        EXPECT_EQ(store.rowCount(), row.rowCount);
        for (const std::string& expected : row.expected)
            EXPECT_THAT(store.dump(), HasSubstr(expected));
    }
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
    struct Row {
        const char* line;
        const char* cause;
    };
    const Row rows[] = {
        {"not json", "this is not JSON \\(byte 2: .*\\)"},
        {R"({"entity":"Rule")", "this is not JSON \\(byte 17: .*unexpected end of input.*\\)"},
        {R"({"entity":"Rule"} x)", "this is not JSON .*"},
        {"{\"entity\":\"Rule\",\"name\":\"\xFF\"}", "this is not JSON .*"},
        {R"({"entity":"Rule","name":"\ud800"})", "this is not JSON .*"},
        {R"({"entity":"Project","hourly_rate":1e999})", "this is not JSON .*"},
        {"[]", "this is not an object"},
        {"7", "this is not an object"},
        {"", "the line is empty"},
        {" \t\r", "the line is empty"},
        {R"({"entity":"Rule","name":"a","name":"a"})", "the key \"name\" stands twice"},
        {R"({"entity":"Rule","entity":"Rule"})", "the key \"entity\" stands twice"},
        {R"({"name":"a"})", "there is no \"entity\""},
        {R"({"entity":null})", "\"entity\" must be a text"},
        {R"({"entity":"rule"})", "there is no entity \"rule\""},
        {R"({"entity":"Bad\nname\u0007"})", "there is no entity \"Bad name \""},
        {R"({"entity":"Rule","Name":"a"})", "Rule has no \"Name\""},
        {R"({"entity":"Rule","project_id":null})", "Rule has no \"project_id\""},
        {R"({"entity":"Rule","pk":1})", "Rule has no \"pk\""},
        {R"({"entity":"ActivityRecord","project":1})", "ActivityRecord has no \"project\""},
        {R"({"entity":"Rule","name":null})", "\"name\" can't be null"},
        {R"({"entity":"Rule","id":null})", "\"id\" can't be null"},
        {R"({"entity":"ActivityShare","project_ids":null})", "\"project_ids\" can't be null"},
        {R"({"entity":"Rule","name":1})", "\"name\" must be a text"},
        {R"({"entity":"Rule","name":{"a":"b"}})", "\"name\" must be a text"},
        {R"({"entity":"Rule","name":["a"]})", "\"name\" must be a text"},
        {R"({"entity":"Rule","priority":1.5})", "\"priority\" must be a whole number"},
        {R"({"entity":"Rule","priority":1e2})", "\"priority\" must be a whole number"},
        {R"({"entity":"Rule","priority":"1"})", "\"priority\" must be a whole number"},
        {R"({"entity":"Rule","priority":9223372036854775808})", "\"priority\" is out of the range of 64-bit integers"},
        {R"({"entity":"Rule","priority":-99999999999999999999})",
         "\"priority\" is out of the range of 64-bit integers"},
        {R"({"entity":"Rule","is_enabled":1})", "\"is_enabled\" must be true or false"},
        {R"({"entity":"Project","hourly_rate":true})", "\"hourly_rate\" must be a number"},
        {R"({"entity":"Project","hourly_rate":"1"})", "\"hourly_rate\" must be a number"},
        {R"({"entity":"Rule","id":"98C2DF4C"})", "\"id\" must be a UUID like .*"},
        {R"({"entity":"Rule","created_at":"2026-03-02"})", "\"created_at\" must be an instant like .*"},
        {R"({"entity":"Rule","created_at":"2026-02-30T00:00:00Z"})", "\"created_at\" must be an instant like .*"},
        {R"({"entity":"Rule","created_at":"2026-03-02T00:00:00"})", "\"created_at\" must be an instant like .*"},
        {R"({"entity":"Rule","created_at":1772442000})", "\"created_at\" must be an instant like .*"},
        {R"({"entity":"ActivityShare","project_ids":["x"]})", "\"project_ids\" must be a list of UUIDs"},
        {R"({"entity":"ActivityShare","project_ids":[1]})", "\"project_ids\" must be a list of UUIDs"},
        {R"({"entity":"ActivityShare","project_ids":[["a"]]})", "\"project_ids\" must be a list of UUIDs"},
        {R"({"entity":"ActivityRecord","project_id":"nobody"})", "\"project_id\" must be a UUID like .*"},
        {R"({"entity":"ActivityRecord","project_id":"11111111-1111-4111-8111-111111111111"})",
         "\"project_id\" names no project: 11111111-1111-4111-8111-111111111111"},
        {R"({"entity":"Schema","version":"2.0.0"})",
         "the lines are of version \"2.0.0\"; only \"1.0.0\" can be loaded"},
        {R"({"entity":"Schema"})", "\"version\" must be a text"},
        {R"({"entity":"Schema","version":"1.0.0","x":1})", "Schema has no \"x\""},
    };
    TransferStore store;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.line);
        const std::string refusal = store.refusalOf(web + row.line + "\n" + recordWith("\"tags\":\"\""));
        EXPECT_THAT(refusal, testing::MatchesRegex(std::string("line 2: ") + row.cause));
        EXPECT_EQ(store.rowCount(), 0U);
    }
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
        EXPECT_THAT(store.refusalOf(lines), testing::StartsWith(fmt::format("line {}: ", bad)));
        EXPECT_EQ(store.dump(), before);
    }
}

TEST(StoreLoadTest, NamesTheFirstLineWhoseProjectIsNowhere) {
    TransferStore store;
    const std::string lost = recordWith(R"("project_id":"11111111-1111-4111-8111-111111111111")");
    EXPECT_THAT(store.refusalOf(web + lost + web + lost), testing::StartsWith("line 2: "));
    // Also when a later line has replaced the row.
    EXPECT_THAT(store.refusalOf(lost + recordWith("\"project_id\":null")), testing::StartsWith("line 1: "));
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
