#include "base/LocalTimeZone.h"

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <set>

// The C library reads the same files and the same forms of TZ. It is asked here alone.
namespace quorvane {
namespace {

constexpr std::int64_t week = 604'800;
constexpr std::int64_t of1970 = 0;
constexpr std::int64_t of2038 = 2'145'916'800;

class SystemZonesTest : public testing::Test {
protected:
    ~SystemZonesTest() override { use("UTC"); }

    static void use(const std::string& value) {
        setenv("TZ", value.c_str(), 1);
        tzset();
    }

    static std::int64_t offsetOfLibrary(std::int64_t second) {
        const std::time_t time = second;
        std::tm local{};
        localtime_r(&time, &local);
        return local.tm_gmtoff;
    }

    /// Compares offsets each week, and at each change that the library knows the seconds around it.
    static void expectSame(const std::string& value, std::int64_t from, std::int64_t to) {
        use(value);
        const TimeZone zone = timeZone(value);
        const auto same = [&](std::int64_t second) {
            const Date date{std::chrono::seconds{second}};
            return zone.wallTime(date) == date + std::chrono::seconds{offsetOfLibrary(second)};
        };
        for (std::int64_t second = from + week; second < to; second += week) {
            ASSERT_TRUE(same(second)) << value << " " << second;
            std::int64_t before = second - week;
            if (offsetOfLibrary(before) == offsetOfLibrary(second)) continue;
            std::int64_t after = second;
            while (after - before > 1) {
                const std::int64_t middle = (before + after) / 2;
                (offsetOfLibrary(middle) == offsetOfLibrary(second) ? after : before) = middle;
            }
            ASSERT_TRUE(same(before) && same(after)) << value << " " << after;
        }
    }

    /// All files with rules by their names, without those that count leap seconds and those that are links to others.
    static std::set<std::string> names() {
        namespace fs = std::filesystem;
        const fs::path folder("/usr/share/zoneinfo");
        std::set<std::string> found;
        for (auto file = fs::recursive_directory_iterator(folder); file != fs::recursive_directory_iterator(); ++file) {
            const auto name = file->path().lexically_relative(folder).string();
            if (name == "right" || name == "posix") file.disable_recursion_pending();
            if (!file->is_regular_file() || file->is_symlink()) continue;
            char magic[4] = {};
            std::ifstream(file->path(), std::ios::binary).read(magic, sizeof magic);
            if (std::string_view(magic, sizeof magic) == "TZif") found.insert(name);
        }
        return found;
    }
};

TEST_F(SystemZonesTest, ClocksShowWhatTheCLibrarySays) {
    const auto zones = names();
    EXPECT_GT(zones.size(), 300U);
    for (const std::string& name : zones)
        expectSame(name, of1970, of2038);
}

TEST_F(SystemZonesTest, EachFormOfTheVariableMeansWhatItMeansThere) {
    for (const char* value : {"America/Mexico_City",
                              ":America/Mexico_City",
                              "/usr/share/zoneinfo/Africa/Cairo",
                              ":/etc/localtime",
                              "EST5EDT,M3.2.0,M11.1.0",
                              ":CET-1CEST,M3.5.0,M10.5.0/3",
                              "NZST-12:00:00NZDT-13,M9.5.0,M4.1.0/3",
                              "<-02>2<-01>,M3.5.0/-1,M10.5.0/0",
                              "IST-2IDT,M3.4.4/26,M10.5.0",
                              "AAA+5:30:15",
                              "<+0330>-3:30",
                              "GMT+3",
                              "EST5EDT,J60,J300/1:30:30",
                              "EST5EDT,59,300/+1",
                              "",
                              ":",
                              "Mars/Olympus",
                              "Europe",
                              "EST",
                              "🕰",
                              "AB5",
                              "../../../etc/passwd"})
        expectSame(value, of1970, of2038);
}

}  // namespace
}  // namespace quorvane
