#include "shell/cards/QrCode.h"

#include <memory>
#include <qrencode.h>

namespace quorvane {

QrCode qrCode(const std::string& text) {
    if (text.empty()) return {};
    const std::unique_ptr<QRcode, decltype(&QRcode_free)> made(QRcode_encodeString8bit(text.c_str(), 0, QR_ECLEVEL_M),
                                                               &QRcode_free);
    if (made == nullptr) return {};
    QrCode code{.side = made->width, .dark = {}};
    const auto count = static_cast<std::size_t>(made->width) * static_cast<std::size_t>(made->width);
    code.dark.reserve(count);
    for (std::size_t i = 0; i < count; ++i)
        code.dark.push_back((made->data[i] & 1) != 0);
    return code;
}

}  // namespace quorvane
