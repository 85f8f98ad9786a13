#pragma once

#include "praise/CardColors.h"
#include "praise/CardContent.h"
#include "shell/cards/CardCanvas.h"
#include "shell/cards/QrCode.h"

#include <string>
#include <vector>

namespace quorvane {

/// What a style paints, and on what. The card's size is fixed.
struct CardScene {
    static constexpr int width = 600;
    static constexpr int height = 900;

    CardCanvas& canvas;
    const ShareImageConfig& config;
    const CardContent& content;
    const Palette& palette;      ///< of the scheme
    const QrCode& code;          ///< may be empty
    const std::string& address;  ///< to which the code leads, without "https://"; may be empty

    [[nodiscard]] QPainter& painter() const { return canvas.painter(); }
    [[nodiscard]] Color ground() const { return config.backgroundColor; }
    [[nodiscard]] Color text() const { return config.textColor; }
    [[nodiscard]] Color accent() const { return config.accentColor; }
    [[nodiscard]] Color quietText() const { return quiet(config.textColor, config.backgroundColor); }

    /// The look of the sentence, which goes down to 20 pixels and then takes up to five lines, and of the reason.
    [[nodiscard]] TextLook sentence(double size, int weight, CardFace face = CardFace::sans) const;
    [[nodiscard]] TextLook reason(double size, CardFace face = CardFace::sans) const;
};

/// The rows that fit into a height, and their distance.
struct FittingRows {
    std::vector<CardContent::Row> rows;
    double pitch = 0;
    [[nodiscard]] double top(std::size_t row) const { return static_cast<double>(row) * pitch; }
};

/// `pitch` is the least distance; where there is room it is up to a third more. The highlighted row takes the place of
/// the last where it wouldn't be among them.
[[nodiscard]] FittingRows fittingRows(const CardContent& content, double height, double pitch);

}  // namespace quorvane
