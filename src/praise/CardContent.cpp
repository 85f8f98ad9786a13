#include "praise/CardContent.h"

#include "base/DateText.h"
#include "base/TimeText.h"

#include <algorithm>
#include <fmt/format.h>

namespace quorvane {
namespace {

double part(double value, double of) {
    return of > 0 ? std::clamp(value / of, 0.0, 1.0) : 0;
}

/// The ones that there is room for, in their order.
std::vector<const AppStat*> shownStats(const ShareImageConfig& config, std::size_t limit) {
    std::vector<const AppStat*> shown;
    for (const AppStat& stat : config.appStats) {
        const bool isHighlighted = config.highlightedAppKey && appKey(stat) == *config.highlightedAppKey;
        if (shown.size() < limit)
            shown.push_back(&stat);
        else if (isHighlighted && limit > 0)
            shown.back() = &stat;
    }
    return shown;
}

bool hasHighlight(const ShareImageConfig& config) {
    return config.highlightedAppKey &&
           std::ranges::find(config.appStats, *config.highlightedAppKey, appKey) != config.appStats.end();
}

std::vector<CardContent::Row> rowsOf(const ShareImageConfig& config, std::size_t limit) {
    double most = 0;
    for (const AppStat& stat : config.appStats)
        most = std::max(most, stat.hours);
    const bool isHighlighting = hasHighlight(config);
    std::vector<CardContent::Row> rows;
    for (const AppStat* stat : shownStats(config, limit)) {
        const bool isIt = isHighlighting && appKey(*stat) == *config.highlightedAppKey;
        rows.push_back({.name = stat->appName,
                        .value = config.showTimeDistribution ? fmt::format("{:.1f}%", stat->percentage)
                                                             : fmt::format("{:.1f} h", stat->hours),
                        .ofMost = part(stat->hours, most),
                        .ofAll = part(stat->percentage, 100),
                        .color = stat->color,
                        .isHighlighted = isIt,
                        .isFaded = isHighlighting && !isIt});
    }
    return rows;
}

/// As a sentence tells hours: minutes below a tenth of an hour, whole hours from ten on.
void setHours(CardContent& content, double given, const Localization& localization) {
    const double hours = std::max(0.0, given);
    if (wholeSeconds(hours * 1h) < 360) {
        content.hours = fmt::format("{}", wholeMinutes(hours * 1h));
        content.unit = localization.text("share_card_minutes");
    } else {
        content.unit = std::string("h");
        content.hours = hours < 10 ? fmt::format("{:.1f}", hours) : fmt::format("{:.0f}", hours);
    }
}

}  // namespace

CardContent cardContent(const ShareImageConfig& config, const Localization& localization, std::size_t rowLimit) {
    CardContent content{.message = config.praiseMessage,
                        .reason = config.praiseReason.value_or(""),
                        .date = longDate(config.date),
                        .isoDate = localDateText(config.date, "yyyy-MM-dd")};
    setHours(content, config.totalHours, localization);
    if (config.showTimeDistribution)
        content.title = localization.text("share_card_distribution_title");
    else if (config.shouldShowAppChart)
        content.title = localization.text("app_usage_title");
    if (config.appStats.empty())
        content.note = localization.text("app_usage_empty");
    else if (!content.title.empty())
        content.rows = rowsOf(config, rowLimit);
    return content;
}

}  // namespace quorvane
