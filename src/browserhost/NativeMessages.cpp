#include "browserhost/NativeMessages.h"

#include <cstring>

namespace quorvane {

void NativeMessages::append(std::string_view bytes) {
    buffer_.erase(0, begin_);
    begin_ = 0;
    if (!refusedLength_) buffer_ += bytes;
}

std::optional<std::string> NativeMessages::next() {
    const std::string_view rest = std::string_view(buffer_).substr(begin_);
    std::uint32_t length = 0;
    if (refusedLength_ || rest.size() < sizeof length) return std::nullopt;
    std::memcpy(&length, rest.data(), sizeof length);
    if (length > longest) {
        refusedLength_ = length;
        return std::nullopt;
    }
    if (rest.size() - sizeof length < length) return std::nullopt;
    begin_ += sizeof length + length;
    return std::string(rest.substr(sizeof length, length));
}

}  // namespace quorvane
