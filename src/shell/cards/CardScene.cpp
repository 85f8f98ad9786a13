#include "shell/cards/CardScene.h"

#include <algorithm>

namespace quorvane {

TextLook CardScene::sentence(double size, int weight, CardFace face) const {
    return {.face = face,
            .size = size,
            .leastSize = 20,
            .lastSize = 14,
            .weight = weight,
            .ink = text(),
            .pitch = 1.28,
            .lines = 5,
            .isBalanced = true};
}

TextLook CardScene::reason(double size, CardFace face) const {
    return {
        .face = face, .size = size, .leastSize = 14, .ink = quietText(), .pitch = 1.4, .lines = 3, .isBalanced = true};
}

FittingRows fittingRows(const CardContent& content, double height, double pitch) {
    constexpr double roomiest = 1.3;
    const auto room = static_cast<std::size_t>(std::max(0.0, height / pitch));
    FittingRows fitting{.rows = content.rows, .pitch = pitch};
    auto& rows = fitting.rows;
    if (rows.size() > room) {
        const auto highlighted = std::ranges::find(rows, true, &CardContent::Row::isHighlighted);
        if (room > 0 && highlighted != rows.end() && highlighted >= rows.begin() + static_cast<std::ptrdiff_t>(room))
            rows[room - 1] = *highlighted;
        rows.resize(room);
    }
    if (!rows.empty()) fitting.pitch = std::clamp(height / static_cast<double>(rows.size()), pitch, pitch * roomiest);
    return fitting;
}

}  // namespace quorvane
