#include "store/StoreDump.h"
#include "base/Text.h"
#include "store/Schema.h"
#include "transfer/TransferStore.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <random>

using testing::ElementsAre;

namespace quorvane {
namespace {

constexpr std::string_view schemaLine = "{\"entity\":\"Schema\",\"version\":\"1.0.0\"}\n";

/// One row of each entity with every attribute filled, in the order and form of a dump.
const std::string everyFieldFilled =
    std::string(schemaLine) +
    R"({"entity":"Project","id":"98C2DF4C-7D2A-432C-942F-16386AD609B0","name":"Web","color":"sky","client_name":"ACME","hourly_rate":85.5,"currency_code":"EUR","created_at":"2026-01-05T08:00:00.000001Z","updated_at":"2026-02-05T08:00:00.999999Z","is_archived":true,"cloud_kit_record_id":"P-1"})"
    "\n"
    R"({"entity":"AppSettings","id":"00000000-0000-4000-8000-000000000001","only_track_work_hours":true,"work_days":"0,2","work_start_hour":8,"work_start_minute":30,"work_end_hour":17,"work_end_minute":45,"created_at":"2026-01-05T08:00:00.000000Z","updated_at":"2026-01-05T08:00:00.000000Z","preferred_language":"de","enable_idle_detection":false,"idle_threshold_minutes":9223372036854775807,"hide_dock_icon":true})"
    "\n"
    R"({"entity":"AppPreference","id":"00000000-0000-4000-8000-000000000002","idle_threshold_seconds":-9223372036854775808,"min_activity_seconds":7,"collect_window_title":false,"collect_document_path":false,"collect_url":false,"ask_after_long_idle":false,"i_cloud_container_url":"https://c.example","created_at":"2026-01-05T08:00:00.000000Z","updated_at":"2026-01-05T08:00:00.000000Z"})"
    "\n"
    R"({"entity":"Rule","id":"00000000-0000-4000-8000-000000000003","name":"Code","priority":9007199254740993,"is_enabled":false,"type":"or","condition":"{\"conditions\":[]}","action":"{\"category\":\"工作\"}","created_at":"2026-01-05T08:00:00.000000Z","updated_at":"2026-01-05T08:00:00.000000Z"})"
    "\n"
    R"({"entity":"ProjectTimeAnnotation","id":"00000000-0000-4000-8000-000000000004","start_time":"2026-03-02T09:00:00.000000Z","end_time":"2026-03-02T08:00:00.000000Z","project_id":"98C2DF4C-7D2A-432C-942F-16386AD609B0","created_at":"2026-01-05T08:00:00.000000Z","updated_at":"2026-01-05T08:00:00.000000Z"})"
    "\n"
    R"({"entity":"ActivityShare","id":"00000000-0000-4000-8000-000000000005","share_token":"tok","title":"For ACME","is_active":false,"created_at":"2026-01-05T08:00:00.000000Z","expires_at":"9999-12-31T23:59:59.999999Z","project_ids":["98C2DF4C-7D2A-432C-942F-16386AD609B0","00000000-0000-0000-0000-000000000000"],"cloud_kit_record_id":"S-1"})"
    "\n"
    R"({"entity":"ActivityRecord","id":"00000000-0000-4000-8000-000000000006","start_time":"0001-01-01T00:00:00.000001Z","end_time":"9999-12-31T23:59:59.123457Z","activity_type":"document","app_bundle_id":"com.example.editor","app_name":"Editor","window_title":"main.cpp","document_path":"/home/mia/main.cpp","url":"https://example.com/?q=1","category":"工作","tags":"a,,b","source":"system|rule:Code","confidence":0.1,"billing_status":"odd","device_id":"D","user_local_id":"U","created_at":"1969-12-31T23:59:59.999999Z","updated_at":"2026-03-02T09:00:00.000000Z","cloud_kit_record_id":"R-1","project_id":"98C2DF4C-7D2A-432C-942F-16386AD609B0"})"
    "\n";

/// The same entities with nothing in any attribute that may be absent or empty.
const std::string everyFieldEmpty =
    std::string(schemaLine) +
    R"({"entity":"Project","id":"00000000-0000-0000-0000-000000000000","name":"","color":null,"client_name":null,"hourly_rate":0.0,"currency_code":"","created_at":"1970-01-01T00:00:00.000000Z","updated_at":"1970-01-01T00:00:00.000000Z","is_archived":false,"cloud_kit_record_id":null})"
    "\n"
    R"({"entity":"ProjectTimeAnnotation","id":"00000000-0000-4000-8000-000000000004","start_time":"1970-01-01T00:00:00.000000Z","end_time":"1970-01-01T00:00:00.000000Z","project_id":null,"created_at":"1970-01-01T00:00:00.000000Z","updated_at":"1970-01-01T00:00:00.000000Z"})"
    "\n"
    R"({"entity":"ActivityShare","id":"00000000-0000-4000-8000-000000000005","share_token":"","title":"","is_active":true,"created_at":"1970-01-01T00:00:00.000000Z","expires_at":null,"project_ids":[],"cloud_kit_record_id":null})"
    "\n"
    R"({"entity":"ActivityRecord","id":"00000000-0000-4000-8000-000000000006","start_time":"1970-01-01T00:00:00.000000Z","end_time":null,"activity_type":"","app_bundle_id":null,"app_name":null,"window_title":null,"document_path":null,"url":null,"category":null,"tags":"","source":null,"confidence":0.0,"billing_status":"","device_id":null,"user_local_id":null,"created_at":"1970-01-01T00:00:00.000000Z","updated_at":"1970-01-01T00:00:00.000000Z","cloud_kit_record_id":null,"project_id":null})"
    "\n";

/// A line whose project has this value as its name, as JSON writes it.
std::string projectNamed(std::string_view json) {
    return fmt::format(R"({{"entity":"Project","id":"98C2DF4C-7D2A-432C-942F-16386AD609B0","name":{}}})"
                       "\n",
                       json);
}

/// What the project's name looks like in the dump after a line that writes it as `json`.
std::string dumpedName(TransferStore& store, std::string_view json) {
    store.load(projectNamed(json));
    const std::string dump = store.dump();
    const auto begin = dump.find("\"name\":") + 7;
    return dump.substr(begin, dump.find(",\"color\"") - begin);
}

/// Records as a busy history has them, some with one start, from a fixed seed.
std::string manyRecords(int count) {
    std::mt19937_64 random(42);
    const auto uuid = [&] {
        return fmt::format("{:08X}-{:04X}-4{:03X}-A{:03X}-{:012X}", random() & 0xFFFFFFFF, random() & 0xFFFF,
                           random() & 0xFFF, random() & 0xFFF, random() & 0xFFFFFFFFFFFF);
    };
    std::string lines(schemaLine);
    for (int i = 0; i < count; ++i) {
        const auto minute = (i / 2) % 60;  // two records share each start
        lines +=
            fmt::format(R"({{"entity":"ActivityRecord","id":"{}","start_time":"2026-03-{:02}T{:02}:{:02}:00.{:06}Z",)"
                        R"("window_title":"Window {} — \"main\", line\n{}","confidence":{}}})"
                        "\n",
                        uuid(), 1 + i / 2880, i / 120 % 24, minute, (i / 2) % 1000, i, random() % 100,
                        static_cast<double>(random() % 1000) / 997.0);
    }
    return lines;
}

TEST(StoreDumpTest, WritesBackLetterForLetterWhatWasLoaded) {
    for (const std::string& lines : {everyFieldFilled, everyFieldEmpty}) {
        TransferStore store;
        store.load(lines);
        EXPECT_EQ(store.dump(), lines);
    }
}

TEST(StoreDumpTest, KeepsTextsByteForByte) {
    const std::pair<const char*, std::string> rows[] = {
        {"control characters", R"("\b\f\n\r\t\u0000\u0001\u001f")"},
        {"quotes and backslashes", R"("\"C:\\odd\\path\"")"},
        {"beyond the basic plane", "\"🎨𝄞\""},
        {"line separators and a byte order mark", "\"\u2028\u2029\uFEFF\""},
        {"right to left, combining, blanks", "\" مشروع e\u0301 \""},
        {"delete and C1", "\"\x7F\u0085\""},
    };
    TransferStore store;
    for (const auto& [name, json] : rows) {
        SCOPED_TRACE(name);
        EXPECT_EQ(dumpedName(store, json), json);
    }
    EXPECT_EQ(dumpedName(store, R"("\ud83c\udfa8\u00e9\/")"), "\"🎨é/\"");
}

TEST(StoreDumpTest, WritesBytesThatAreNoTextAsReplacementCharacters) {
    TransferStore store;
    store.load(projectNamed("\"x\""));
    store.database().execute("UPDATE project SET name = CAST(x'61FF62C3' AS TEXT)");
    EXPECT_THAT(store.dump(), testing::HasSubstr("\"name\":\"a\uFFFDb\uFFFD\""));
}

TEST(StoreDumpTest, WritesNumbersThatReadBackAsTheSame) {
    const std::pair<const char*, const char*> rows[] = {
        {"0.1", "0.1"},
        {"85", "85.0"},
        {"1e300", "1e+300"},
        {"5e-324", "5e-324"},
        {"0.30000000000000004", "0.30000000000000004"},
        {"12345678901234567890", "1.2345678901234567e+19"},
    };
    TransferStore store;
    for (const auto& [written, expected] : rows) {
        SCOPED_TRACE(written);
        store.load(fmt::format(R"({{"entity":"Project","id":"98C2DF4C-7D2A-432C-942F-16386AD609B0","hourly_rate":{}}})",
                               written));
        EXPECT_THAT(store.dump(), testing::HasSubstr(fmt::format("\"hourly_rate\":{},", expected)));
    }
}

TEST(StoreDumpTest, OrdersRecordsByStartAndThenByIdAndTheOthersAsTheyCame) {
    TransferStore store;
    store.load(
        R"({"entity":"ActivityRecord","id":"BBBBBBBB-0000-0000-0000-000000000000","start_time":"2026-03-02T09:00:00Z"}
{"entity":"ActivityRecord","id":"AAAAAAAA-0000-0000-0000-000000000000","start_time":"2026-03-02T09:00:00Z"}
{"entity":"ActivityRecord","id":"CCCCCCCC-0000-0000-0000-000000000000","start_time":"2026-03-01T09:00:00Z"}
{"entity":"Rule","id":"DDDDDDDD-0000-0000-0000-000000000000"}
{"entity":"Project","id":"FFFFFFFF-0000-0000-0000-000000000000"}
{"entity":"Project","id":"EEEEEEEE-0000-0000-0000-000000000000"}
)");
    std::string order;
    for (const std::string& line : text::split(store.dump(), '\n'))
        if (const auto id = line.find("\"id\":\""); id != std::string::npos) order += line[id + 6];
    EXPECT_EQ(order, "FEDCAB");
}

TEST(StoreDumpTest, ShowsOneMomentInSmallPiecesWhileAnotherProgramWrites) {
    TransferStore store;
    store.load(manyRecords(2000));
    Database other({.file = store.file()});
    const std::string before = store.dump();
    std::string during;
    std::size_t longest = 0;
    std::size_t rows = 0;
    StoreDump::write(store.database(), [&](std::string_view piece, std::size_t soFar) {
        if (during.empty()) other.execute("DELETE FROM activity_record");
        during += piece;
        longest = std::max(longest, piece.size());
        rows = soFar;
    });
    EXPECT_EQ(during, before);
    EXPECT_LT(longest, 100'000U);
    EXPECT_EQ(rows, 2000U);
    EXPECT_EQ(store.dump(), schemaLine);
}

TEST(StoreDumpTest, TwentyThousandRecordsMakeTheWayToAnotherStoreAndBack) {
    TransferStore first;
    first.load(manyRecords(20'000));
    const std::string dump = first.dump();
    TransferStore second;
    const auto counts = second.load(dump);
    EXPECT_THAT(counts, ElementsAre(std::pair<std::string, std::size_t>("ActivityRecord", 20'000)));
    // Not EXPECT_EQ: nobody wants to read the difference of two long texts.
    EXPECT_TRUE(second.dump() == dump);
}

}  // namespace
}  // namespace quorvane
