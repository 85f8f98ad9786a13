#pragma once

#include "base/Deployment.h"
#include "l10n/Localization.h"
#include "praise/ShareImage.h"
#include "praise/ShareImageConfig.h"
#include "shell/cards/CardCanvas.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvane {

/// Renders share cards, without a display if need be; a `QGuiApplication` has to be there for its fonts. Main thread
/// only.
class ShareImageGenerator {
public:
    static constexpr int width = 600;
    static constexpr int height = 900;

    /// `address` is where the code in the foot leads; empty: there is none. The localization outlives it.
    explicit ShareImageGenerator(const Localization& localization,
                                 std::string address = std::string(deployment().makerAddress));

    /// The card, or a smaller picture of it (`scale` up to 1). None where there is no memory for it.
    [[nodiscard]] std::optional<ShareImage> generateShareImage(const ShareImageConfig& config, double scale = 1) const;

    /// The card without its texts, and where they would stand: for those who check that they can be read.
    struct Layout {
        ShareImage ground;
        std::vector<PlacedText> texts;
    };
    [[nodiscard]] Layout layOut(const ShareImageConfig& config) const;

private:
    const Localization& localization_;
    std::string address_;
};

/// The bytes of a PNG file.
[[nodiscard]] std::string pngOf(const ShareImage& image);

}  // namespace quorvane
