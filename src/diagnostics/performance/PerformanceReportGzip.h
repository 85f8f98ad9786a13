#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Packs reports. The framing is fixed to the byte, so that equal reports are equal files.
namespace quorvane::PerformanceReportGzip {

/// One gzip member (RFC 1952) without name and time around raw deflate of default strength. Throws
/// `std::runtime_error` if it can't be packed.
[[nodiscard]] std::string compress(std::string_view bytes);

/// Reflected, polynomial 0xEDB88320, all ones before and inverted after; 0 for no bytes.
[[nodiscard]] std::uint32_t crc32(std::string_view bytes);

}  // namespace quorvane::PerformanceReportGzip
