#include "base/Iso8601.h"

#include "support/Matching.h"

#include <random>

namespace quorvane {
namespace {

TEST(Iso8601Test, ReadsInstantsWithTheirOffset) {
    const std::pair<const char*, const char*> rows[] = {
        {"2026-03-04t15:00:00z", "2026-03-04T15:00:00.000000Z"},
        {"2026-03-04 15:00:00Z", "2026-03-04T15:00:00.000000Z"},
        {"2026-03-04T15:00:00+05:30", "2026-03-04T09:30:00.000000Z"},
        {"2026-03-04T15:00:00-0330", "2026-03-04T18:30:00.000000Z"},
        {"2026-03-01T00:00:00+01", "2026-02-28T23:00:00.000000Z"},
        {"2026-03-04T15:00:00.1234564999Z", "2026-03-04T15:00:00.123456Z"},
        {"2026-03-04T15:00:00.1234565001Z", "2026-03-04T15:00:00.123457Z"},
        {"2026-12-31T23:59:59.9999999-00:00", "2027-01-01T00:00:00.000000Z"},
        {"2016-12-31T23:59:60Z", "2017-01-01T00:00:00.000000Z"},
    };
    for (const auto& [written, utc] : rows) {
        SCOPED_TRACE(written);
        const auto date = parseIso8601(written);
        ASSERT_TRUE(date);
        EXPECT_EQ(iso8601Microseconds(*date), utc);
    }
}

TEST(Iso8601Test, RefusesEverythingElse) {
    std::vector<std::string> texts = {"", "2026-03-04", "20260304T150000Z", "2026-03-04_15:00:00Z"};
    for (const char* day : {"2026-02-29", "2026-13-01", "2026-00-01", "2026-01-00", "0000-01-01", "2026-3-4",
                            "+2026-03-04", "12026-03-04", " 2026-03-04"})
        texts.push_back(day + std::string("T15:00:00Z"));
    for (const char* time : {"24:00:00", "15:60:00", "15:00:61", "15:00", "-1:00:00"})
        texts.push_back("2026-03-04T" + std::string(time) + "Z");
    for (const char* rest : {"", ".Z", ",5Z", "+24:00", "+05:60", "+5", "+05:", "+05:3", "Z ", " Z", "ZZ", "−05:00"})
        texts.push_back("2026-03-04T15:00:00" + std::string(rest));
    for (const std::string& text : texts)
        EXPECT_EQ(parseIso8601(text), std::nullopt) << text;
}

TEST(Iso8601Test, WhatIsWrittenReadsBackExactly) {
    std::mt19937_64 random(20260302);
    std::uniform_int_distribution<std::int64_t> ourTime(-2'208'988'800'000'000, 7'258'118'400'000'000);
    std::uniform_int_distribution<std::int64_t> allTime(-62'135'596'800'000'000, 253'402'300'799'999'999);
    for (int i = 0; i < 50'000; ++i) {
        const auto nearby = ourTime(random);
        ASSERT_EQ(microsecondsSince1970(dateFromMicroseconds(nearby)), nearby);
        ASSERT_THAT(parseIso8601(iso8601Microseconds(dateFromMicroseconds(nearby))),
                    Optional(dateFromMicroseconds(nearby)));
        const auto microseconds = allTime(random);
        std::string text;
        appendIso8601Microseconds(text, microseconds);
        ASSERT_THAT(parseIso8601Microseconds(text), Optional(microseconds)) << text;
    }
}

TEST(Iso8601Test, SecondsAreCutOffAndMicrosecondsRoundedWithinTheYearsThatCanBeWritten) {
    struct Row {
        double seconds;
        const char* whole;
        const char* fine;
    };
    const Row rows[] = {
        {1772636400.9999996, "2026-03-04T15:00:00Z", "2026-03-04T15:00:01.000000Z"},
        {-0.25, "1969-12-31T23:59:59Z", "1969-12-31T23:59:59.750000Z"},
        {-1e15, "0001-01-01T00:00:00Z", "0001-01-01T00:00:00.000000Z"},
        {1e15, "9999-12-31T23:59:59Z", "9999-12-31T23:59:59.999999Z"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(iso8601Seconds(dateFromSecondsSince1970(row.seconds)), row.whole);
        EXPECT_EQ(iso8601Microseconds(dateFromSecondsSince1970(row.seconds)), row.fine);
    }
    std::string text;
    appendIso8601Seconds(text, std::int64_t{-250'000});
    EXPECT_EQ(text, "1969-12-31T23:59:59Z");
}

TEST(Iso8601Test, CivilDatesAreDaysThatExist) {
    EXPECT_THAT(parseCivilDate("2024-02-29"), Optional(CivilDate{2024, 2, 29}));
    EXPECT_EQ(civilDateText({7, 3, 4}), "0007-03-04");
    for (const char* text : {"1900-02-29", "2026-04-31", "2026-3-04", "2026-03-04 ", "2026-03-04T", "0000-01-01", ""})
        EXPECT_EQ(parseCivilDate(text), std::nullopt) << text;
}

}  // namespace
}  // namespace quorvane
