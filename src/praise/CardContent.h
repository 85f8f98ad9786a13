#pragma once

#include "l10n/Localization.h"
#include "praise/ShareImageConfig.h"

#include <string>
#include <vector>

namespace quorvane {

/// The texts and figures of a card, ready to be placed.
struct CardContent {
    /// An application.
    struct Row {
        std::string name;
        std::string value;  ///< "2.7 h", or "40.2%"
        double ofMost = 0;  ///< its hours as a part of the most hours, 0 to 1
        double ofAll = 0;   ///< of all of them, 0 to 1
        Color color;
        bool isHighlighted = false;
        bool isFaded = false;  ///< another one is highlighted
        friend bool operator==(const Row&, const Row&) = default;
    };

    std::string message;
    std::string reason;   ///< empty: none
    std::string date;     ///< as the user's locale writes it out
    std::string isoDate;  ///< "2026-03-12"
    std::string hours;    ///< "6.8"
    std::string unit;     ///< "h"
    std::string title;    ///< of the rows; empty: there are none to see
    std::string note;     ///< stands for the rows where there are none
    std::vector<Row> rows;
    friend bool operator==(const CardContent&, const CardContent&) = default;
};

/// At most `rowLimit` rows. A highlighted application that isn't among the first takes the place of the last.
[[nodiscard]] CardContent cardContent(const ShareImageConfig& config, const Localization& localization,
                                      std::size_t rowLimit = 6);

}  // namespace quorvane
