#include "base/TimeZone.h"

#include "base/Iso8601.h"
#include "base/LocalTimeZone.h"
#include "base/PosixTimeZone.h"
#include "base/TimeZoneFile.h"
#include "support/TemporaryFolder.h"

#include <cstdlib>
#include <gmock/gmock.h>

namespace quorvane {
namespace {

Date at(const char* text) {
    return parseIso8601(text).value();
}

/// What the clocks of the zone show then, as if they stood in UTC.
std::string shown(const std::string& zone, const char* instant) {
    return iso8601Seconds(timeZone(zone).wallTime(at(instant)));
}

TEST(TimeZoneTest, WhatTheClocksShowLeadsBackToItsFirstInstant) {
    struct Row {
        const char* name;
        const char* zone;
        const char* wallTime;
        const char* instant;
    };
    const Row rows[] = {
        {"once", "America/Mexico_City", "2026-07-10T23:10:00Z", "2026-07-11T05:10:00Z"},
        {"skipped: the end of the gap", "America/New_York", "2026-03-08T02:30:00Z", "2026-03-08T07:00:00Z"},
        {"twice: the first", "America/New_York", "2026-11-01T01:30:00Z", "2026-11-01T05:30:00Z"},
        {"after it", "America/New_York", "2026-11-01T02:00:00Z", "2026-11-01T07:00:00Z"},
        {"a day that is missing", "Pacific/Apia", "2011-12-30T12:00:00Z", "2011-12-30T10:00:00Z"},
        {"far ahead", "America/New_York", "2826-03-08T02:30:00Z", "2826-03-08T07:00:00Z"},
        {"by rules, long ago", "EST5EDT,M3.2.0,M11.1.0", "1901-07-01T00:00:00Z", "1901-07-01T04:00:00Z"},
        {"summer for good", "XXX3YYY2,0/0,J365/25", "2027-01-01T00:00:00Z", "2027-01-01T02:00:00Z"},
        {"summer without rules", "EST5EDT4:30", "2026-11-01T00:59:59Z", "2026-11-01T05:29:59Z"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(iso8601Seconds(timeZone(row.zone).instant(at(row.wallTime))), row.instant);
    }
}

TEST(TimeZoneTest, EveryInstantComesBackUnlessItsHourComesTwice) {
    for (const char* name : {"America/New_York", "Australia/Lord_Howe", "Africa/Casablanca", "Asia/Kolkata"}) {
        const TimeZone zone = timeZone(name);
        for (Date date = at("2026-01-01T00:00:00.25Z"); date < at("2426-01-01T00:00:00Z"); date += 1'000'003s) {
            const Date back = zone.instant(zone.wallTime(date));
            ASSERT_TRUE(back == date || (back < date && zone.wallTime(back) == zone.wallTime(date)))
                << name << " " << iso8601Seconds(date);
        }
    }
}

TEST(TimeZoneTest, WhatIsNoSuchTextHasNoRules) {
    for (const char* text :
         {"", "5", "EST", "ES5", "EST5EDT4x", "EST25", "EST5:60", "<EST5", "EST5EDT,M3.2.0", "EST5EDT,M3.2.0,M11.1.0,",
          "EST5EDT,M13.2.0,M11.1.0", "EST5EDT,M3.6.0,M11.1.0", "EST5EDT,J0,J1", "EST5EDT,366,1",
          "EST5EDT,M3.2.7,M11.1.0", "EST5EDT,M3.2.0/168,M11.1.0", "EST99999999999999999999"})
        EXPECT_FALSE(PosixTimeZone::parse(text)) << text;
}

TEST(TimeZoneTest, ABrokenFileIsNoZone) {
    const std::string whole = contentOf("/usr/share/zoneinfo/America/New_York");
    ASSERT_TRUE(readTimeZoneFile(whole));
    const auto lastLine = whole.rfind('\n', whole.size() - 2);
    for (std::size_t length = 0; length < lastLine; ++length)
        ASSERT_FALSE(readTimeZoneFile(whole.substr(0, length))) << length;
    for (std::size_t i = 0; i < lastLine; ++i) {  // whatever a byte says, nothing is read beyond the end
        std::string changed = whole;
        changed[i] = static_cast<char>(changed[i] ^ 0xFF);
        if (const auto zone = readTimeZoneFile(changed))
            (void)zone->instant(zone->wallTime(at("2026-07-10T00:00:00Z")));
    }
}

TEST(TimeZoneTest, LeapSecondsOfAFileAreNotCounted) {
    if (!std::filesystem::exists("/usr/share/zoneinfo/right/America/New_York")) GTEST_SKIP() << "no such files here";
    for (const char* instant : {"1987-04-05T06:59:59Z", "1987-04-05T07:00:00Z", "2026-03-08T07:00:00Z"})
        EXPECT_EQ(shown("right/America/New_York", instant), shown("America/New_York", instant));
}

/// Sets variables for a test, and puts TZ back.
class LocalTimeZoneTest : public testing::Test {
protected:
    ~LocalTimeZoneTest() override {
        setenv("TZ", "UTC", 1);
        unsetenv("TZDIR");
    }

    void copy(const std::string& zone, const std::string& name) const {
        std::filesystem::copy_file("/usr/share/zoneinfo/" + zone, folder_.path() / (name + ".new"));
        std::filesystem::rename(folder_.path() / (name + ".new"), folder_.path() / name);
    }

    TemporaryFolder folder_;
};

TEST_F(LocalTimeZoneTest, TheSystemsRulesComeBeforeIcus) {
    const char* summer = "2026-07-11T05:10:00Z";
    EXPECT_EQ(shown("America/Mexico_City", summer), "2026-07-10T23:10:00Z");
    setenv("TZDIR", folder_.path().c_str(), 1);
    copy("Asia/Tokyo", "Home");
    EXPECT_EQ(shown("Home", summer), "2026-07-11T14:10:00Z");
    EXPECT_EQ(shown("Europe/Berlin", summer), "2026-07-11T07:10:00Z") << "of ICU";
    EXPECT_EQ(shown("Europe/Berlin", "2426-12-11T05:10:00Z"), "2426-12-11T06:10:00Z");
    EXPECT_EQ(shown("Asia/Kolkata", summer), "2026-07-11T10:40:00Z");
}

TEST_F(LocalTimeZoneTest, AFileThatChangesCountsAtOnce) {
    const auto file = (folder_.path() / "localtime").string();
    setenv("TZ", (":" + file).c_str(), 1);
    const Date date = at("2026-07-11T05:10:00Z");
    EXPECT_EQ(localTimeZone()->wallTime(date), date) << "without it UTC";
    copy("Europe/Berlin", "localtime");
    const auto berlin = localTimeZone();
    EXPECT_EQ(berlin->wallTime(date), date + 2h);
    EXPECT_EQ(localTimeZone(), berlin);
    copy("Europe/Paris", "localtime");
    EXPECT_NE(localTimeZone(), berlin);
    std::filesystem::remove(file);
    std::filesystem::create_symlink("/usr/share/zoneinfo/Asia/Tokyo", file);
    EXPECT_EQ(localTimeZone()->wallTime(date), date + 9h);
}

}  // namespace
}  // namespace quorvane
