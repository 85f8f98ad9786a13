#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

namespace quorvane {

/// Gives 64 random bits with each call.
using RandomWords = std::function<std::uint64_t()>;

/// From the system's secure source. Throws `std::system_error` on a system that has none.
[[nodiscard]] std::uint64_t secureRandomWord();

/// A number from 0 to below `count` (> 0), each as likely as the others.
[[nodiscard]] std::size_t randomIndex(std::size_t count, const RandomWords& words);

}  // namespace quorvane
