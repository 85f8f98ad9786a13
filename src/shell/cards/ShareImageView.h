#pragma once

#include "l10n/Localization.h"
#include "praise/ShareImageConfig.h"
#include "shell/cards/CardCanvas.h"

#include <string>

namespace quorvane {

/// The card itself: what it shows follows from its configuration and the language alone.
struct ShareImageView {
    ShareImageConfig config;
    const Localization& localization;
    std::string address;  ///< to which the code in the foot leads; empty: there is no code

    void paint(CardCanvas& canvas) const;
};

}  // namespace quorvane
