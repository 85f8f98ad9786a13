#include "praise/ShareImageConfig.h"

#include "praise/CardColors.h"

#include <algorithm>

namespace quorvane {
namespace {

std::optional<AppStat> topAppOf(const std::vector<AppStat>& stats, const std::optional<std::string>& selectedKey) {
    if (stats.empty()) return std::nullopt;
    if (selectedKey) {
        const auto selected = std::ranges::find(stats, *selectedKey, appKey);
        if (selected != stats.end()) return *selected;
    }
    return *std::ranges::max_element(stats, {}, &AppStat::hours);
}

}  // namespace

std::string appKey(const AppStat& stat) {
    return stat.id.string();
}

void colorStats(std::vector<AppStat>& stats, ColorScheme scheme) {
    const Palette& palette = colors(scheme);
    for (std::size_t i = 0; i < stats.size(); ++i)
        stats[i].color = palette[i % palette.size()];
}

ShareImageConfig shareImageConfig(const ShareImageChoice& choice) {
    std::vector<AppStat> stats = choice.appStats;
    colorStats(stats, choice.scheme);
    const CardColors chosen = cardColors(choice.style, choice.scheme);
    auto topApp = topAppOf(stats, choice.selectedAppKey);
    const bool shouldShowAppChart = choice.forceShowAppChart || !stats.empty();
    return {.cardStyle = choice.style,
            .praiseMessage = choice.message,
            .praiseReason = choice.reason,
            .totalHours = choice.totalHours,
            .appStats = std::move(stats),
            .date = choice.date,
            .backgroundColor = chosen.background,
            .textColor = chosen.text,
            .accentColor = chosen.accent,
            .shouldShowAppChart = shouldShowAppChart,
            .topApp = std::move(topApp),
            .highlightedAppKey = choice.selectedAppKey,
            .showTimeDistribution = choice.showTimeDistribution,
            .colorScheme = choice.scheme};
}

}  // namespace quorvane
