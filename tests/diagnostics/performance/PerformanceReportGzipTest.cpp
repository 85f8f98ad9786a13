#include "diagnostics/performance/PerformanceReportGzip.h"

#include "diagnostics/performance/PackedBytes.h"
#include "support/Matching.h"

#include <random>

namespace quorvane {
namespace {

std::string noise(std::size_t size) {
    std::mt19937 random(7);
    std::string bytes;
    bytes.reserve(size);
    while (bytes.size() < size)
        bytes += static_cast<char>(random() & 0xff);
    return bytes;
}

TEST(PerformanceReportGzipTest, TheFramingIsFixedToTheByte) {
    const std::string expected("\x1f\x8b\x08\0\0\0\0\0\0\x03"
                               "\x4b\x4c\x4a\x06\0"
                               "\xc2\x41\x24\x35\x03\0\0\0",
                               23);
    EXPECT_EQ(PerformanceReportGzip::compress("abc"), expected);
}

TEST(PerformanceReportGzipTest, OtherProgramsFindTheSameBytesAgain) {
    std::string stacks;
    while (stacks.size() < 6'291'456)
        stacks += "#0  0x00007f320ddd5503 clock_nanosleep\n日志";
    for (const auto& plain : {std::string(), std::string("{}"), noise(100'000), stacks}) {
        const auto member = PerformanceReportGzip::compress(plain);
        EXPECT_TRUE(unpacked(member) == plain) << plain.size() << " bytes";
        EXPECT_LE(member.size(), plain.size() + plain.size() / 1000 + 64);
    }
    EXPECT_EQ(unpacked("no member"), "?");
}

}  // namespace
}  // namespace quorvane
