#pragma once

#include <string>
#include <vector>

namespace quorvane {

/// The modules of a QR code, row after row.
struct QrCode {
    int side = 0;            ///< 0: there is none
    std::vector<bool> dark;  ///< side times side
    [[nodiscard]] bool isEmpty() const { return side == 0; }
    [[nodiscard]] bool isDark(int x, int y) const {
        return dark[static_cast<std::size_t>(y) * static_cast<std::size_t>(side) + static_cast<std::size_t>(x)];
    }
};

/// With error correction for about 15 % of it. None for an empty text, and for one that no code can hold.
[[nodiscard]] QrCode qrCode(const std::string& text);

}  // namespace quorvane
