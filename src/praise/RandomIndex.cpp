#include "praise/RandomIndex.h"

#include <cassert>
#include <cerrno>
#include <system_error>
#include <unistd.h>

namespace quorvane {

std::uint64_t secureRandomWord() {
    std::uint64_t word = 0;
    if (getentropy(&word, sizeof word) != 0)
        throw std::system_error(errno, std::generic_category(), "no random numbers");
    return word;
}

std::size_t randomIndex(std::size_t count, const RandomWords& words) {
    assert(count > 0);
    // 2^64 is seldom a multiple of the count. What is left over would favour the first places, so it is drawn again.
    const std::uint64_t leftOver = (0 - std::uint64_t{count}) % count;
    std::uint64_t word = words();
    while (word < leftOver)
        word = words();
    return static_cast<std::size_t>(word % count);
}

}  // namespace quorvane
