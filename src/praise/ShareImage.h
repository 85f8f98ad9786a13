#pragma once

#include <cstdint>
#include <vector>

namespace quorvane {

/// A rendered card.
struct ShareImage {
    int width = 0;  ///< in pixels
    int height = 0;
    std::vector<std::uint32_t> pixels;  ///< 0xAARRGGBB, opaque; row after row from the top
    friend bool operator==(const ShareImage&, const ShareImage&) = default;
};

}  // namespace quorvane
