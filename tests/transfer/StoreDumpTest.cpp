#include "store/StoreDump.h"
#include "base/Text.h"
#include "store/Schema.h"
#include "support/Matching.h"
#include "transfer/TransferStore.h"

#include <fmt/format.h>
#include <random>

namespace quorvane {
namespace {

constexpr std::string_view schemaLine = "{\"entity\":\"Schema\",\"version\":\"1.0.0\"}\n";

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
    for (const char* name : {"every-field-filled.jsonl", "every-field-empty.jsonl"}) {
        const std::string lines = contentOf(std::filesystem::path(QUORVANE_TRANSFER_DATA) / name);
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
    for (const auto& [name, json] : rows)
        EXPECT_EQ(dumpedName(store, json), json) << name;
    EXPECT_EQ(dumpedName(store, R"("\ud83c\udfa8\u00e9\/")"), "\"🎨é/\"");
}

TEST(StoreDumpTest, WritesBytesThatAreNoTextAsReplacementCharacters) {
    TransferStore store;
    store.load(projectNamed("\"x\""));
    store.database().execute("UPDATE project SET name = CAST(x'61FF62C3' AS TEXT)");
    EXPECT_THAT(store.dump(), HasSubstr("\"name\":\"a\uFFFDb\uFFFD\""));
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
        EXPECT_THAT(store.dump(), HasSubstr(fmt::format("\"hourly_rate\":{},", expected)));
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
    TransferStore second;
    EXPECT_THAT(second.load(before), ElementsAre(Pair("ActivityRecord", 2000)));
    EXPECT_TRUE(second.dump() == before);  // nobody wants to read the difference of two long texts
}

}  // namespace
}  // namespace quorvane
