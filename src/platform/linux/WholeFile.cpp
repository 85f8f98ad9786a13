#include "platform/linux/WholeFile.h"

#include <array>
#include <fcntl.h>
#include <unistd.h>

namespace quorvane::platform {

std::optional<std::string> wholeFile(const std::filesystem::path& path) {
    constexpr std::size_t limit = 1 << 20;
    // A pipe in a place where files are expected must not stop us.
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) return std::nullopt;
    std::string bytes;
    std::array<char, 16384> buffer{};
    ssize_t count = 0;
    while (bytes.size() <= limit && (count = read(descriptor, buffer.data(), buffer.size())) > 0)
        bytes.append(buffer.data(), static_cast<std::size_t>(count));
    close(descriptor);
    if (count < 0 || bytes.size() > limit) return std::nullopt;
    return bytes;
}

}  // namespace quorvane::platform
