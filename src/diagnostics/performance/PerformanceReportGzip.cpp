#include "diagnostics/performance/PerformanceReportGzip.h"

#include <array>
#include <limits>
#include <stdexcept>
#include <zlib.h>

namespace quorvane::PerformanceReportGzip {
namespace {

/// Magic, method deflate, no flags, no time, no extra flags, Unix.
constexpr std::string_view header("\x1f\x8b\x08\0\0\0\0\0\0\x03", 10);

using Table = std::array<std::uint32_t, 256>;

/// What each byte does to the checksum.
Table makeTable() {
    Table table{};
    for (std::uint32_t byte = 0; byte < table.size(); ++byte) {
        std::uint32_t remainder = byte;
        for (int bit = 0; bit < 8; ++bit)
            remainder = remainder >> 1 ^ ((remainder & 1) != 0 ? 0xEDB88320U : 0U);
        table[byte] = remainder;
    }
    return table;
}

void appendLittleEndian(std::string& out, std::uint32_t number) {
    for (int i = 0; i < 4; ++i, number >>= 8)
        out += static_cast<char>(number & 0xff);
}

/// Raw deflate, appended.
void appendDeflated(std::string& out, std::string_view bytes) {
    constexpr int rawWindow = -15;    // 32 KiB; negative: without zlib's wrapper
    constexpr int defaultMemory = 8;  // what zlib takes by itself
    if (bytes.size() > std::numeric_limits<uInt>::max()) throw std::runtime_error("too long to be packed");
    z_stream stream{};
    if (deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, rawWindow, defaultMemory, Z_DEFAULT_STRATEGY) != Z_OK)
        throw std::runtime_error("deflate can't begin");
    const auto before = out.size();
    const auto bound = deflateBound(&stream, static_cast<uLong>(bytes.size()));
    out.resize(before + bound);
    // zlib takes what it only reads as not constant.
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(out.data() + before);
    stream.avail_out = static_cast<uInt>(bound);
    const int status = deflate(&stream, Z_FINISH);
    const auto written = stream.total_out;
    deflateEnd(&stream);
    if (status != Z_STREAM_END) throw std::runtime_error("deflate did not end");
    out.resize(before + written);
}

}  // namespace

std::uint32_t crc32(std::string_view bytes) {
    static const Table table = makeTable();
    std::uint32_t checksum = ~0U;
    for (const char byte : bytes)
        checksum = checksum >> 8 ^ table[(checksum ^ static_cast<unsigned char>(byte)) & 0xff];
    return ~checksum;
}

std::string compress(std::string_view bytes) {
    std::string member(header);
    appendDeflated(member, bytes);
    appendLittleEndian(member, crc32(bytes));
    appendLittleEndian(member, static_cast<std::uint32_t>(bytes.size()));
    return member;
}

}  // namespace quorvane::PerformanceReportGzip
