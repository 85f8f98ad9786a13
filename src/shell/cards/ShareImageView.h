#pragma once

#include "praise/ShareImageConfig.h"
#include "shell/cards/CardCanvas.h"

#include <string>

namespace quorvane {

/// The card itself: what it shows follows from its configuration alone.
struct ShareImageView {
    ShareImageConfig config;
    std::string address;  ///< to which the code in the foot leads; empty: there is no code

    void paint(CardCanvas& canvas) const;
};

}  // namespace quorvane
