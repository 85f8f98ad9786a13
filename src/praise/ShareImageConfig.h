#pragma once

#include "praise/CardStyle.h"
#include "praise/ColorScheme.h"
#include "timeline/AppStatistics.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvane {

/// All that a share card shows.
struct ShareImageConfig {
    CardStyle cardStyle = CardStyle::clean;
    std::string praiseMessage;
    std::optional<std::string> praiseReason{};
    double totalHours = 0;
    std::vector<AppStat> appStats;  ///< in the order in which they stand, with the colours of the scheme
    Date date;
    Color backgroundColor;  ///< these three from `cardColors`
    Color textColor;
    Color accentColor;
    bool shouldShowAppChart = true;
    std::optional<AppStat> topApp{};               ///< the one that the card is about
    std::optional<std::string> highlightedAppKey;  ///< of `appKey`
    bool showTimeDistribution = false;             ///< shares instead of hours
    ColorScheme colorScheme = ColorScheme::ocean;  ///< for what is painted beside the applications
    friend bool operator==(const ShareImageConfig&, const ShareImageConfig&) = default;
};

/// What a card is made of; the rest follows from it.
struct ShareImageChoice {
    CardStyle style = CardStyle::clean;
    ColorScheme scheme = ColorScheme::ocean;
    std::string message;
    std::optional<std::string> reason{};
    double totalHours = 0;
    std::vector<AppStat> appStats;
    Date date;
    bool forceShowAppChart = false;
    bool showTimeDistribution = false;
    std::optional<std::string> selectedAppKey;  ///< none: no application is highlighted
};

/// The application's key in maps of images: its id as text.
[[nodiscard]] std::string appKey(const AppStat& stat);

/// Gives each application its colour of the scheme in their order; after the last colour comes the first again.
void colorStats(std::vector<AppStat>& stats, ColorScheme scheme);

/// The chart is there when it is forced or there is an application. `topApp` is the chosen application, without a
/// choice the one with the most hours, the first of several.
[[nodiscard]] ShareImageConfig shareImageConfig(const ShareImageChoice& choice);

}  // namespace quorvane
