#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quorvane {

/// Takes apart what a browser writes to its native messaging host: 4 bytes of length in the machine's byte order, then
/// so many bytes of JSON, again and again.
class NativeMessages {
public:
    static constexpr std::uint32_t longest = 1 << 20;  ///< bytes of one message

    void append(std::string_view bytes);

    /// The next whole message; none until more bytes have come, and never again once one is too long.
    [[nodiscard]] std::optional<std::string> next();

    /// The length that a message announced which is too long.
    [[nodiscard]] std::optional<std::uint32_t> refusedLength() const { return refusedLength_; }

private:
    std::string buffer_;
    std::size_t begin_ = 0;  ///< of what has not been given out yet
    std::optional<std::uint32_t> refusedLength_;
};

}  // namespace quorvane
