#include "platform/linux/system/WholeFile.h"

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace quorvane::platform {

std::optional<std::string> wholeFile(const std::filesystem::path& path) {
    constexpr std::size_t limit = 1 << 20;
    auto bytes = beginningOfFile(path, limit + 1);
    return bytes && bytes->size() <= limit ? std::move(bytes) : std::nullopt;
}

std::optional<std::string> beginningOfFile(const std::filesystem::path& path, std::size_t most) {
    // A pipe in a place where files are expected must not stop us.
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) return std::nullopt;
    std::string bytes;
    std::array<char, 16384> buffer{};
    ssize_t count = 0;
    while (bytes.size() < most &&
           (count = read(descriptor, buffer.data(), std::min(buffer.size(), most - bytes.size()))) > 0)
        bytes.append(buffer.data(), static_cast<std::size_t>(count));
    close(descriptor);
    return count < 0 ? std::nullopt : std::optional(std::move(bytes));
}

}  // namespace quorvane::platform
