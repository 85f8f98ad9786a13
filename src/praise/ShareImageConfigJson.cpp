#include "praise/ShareImageConfigJson.h"

#include <stdexcept>

namespace quorvane {
namespace {

/// Something is missing, or no value of its kind.
class Misfit : public std::runtime_error {
public:
    Misfit() : std::runtime_error("no configuration of a share card") {}
};

template <class Value>
Value valueOr(const std::optional<Value>& value) {
    if (!value) throw Misfit();
    return *value;
}

Json jsonOf(Color color) {
    return color.red << 16 | color.green << 8 | color.blue;
}

Color colorFrom(const Json& json) {
    return colorFromRgb(json.get<std::uint32_t>());
}

Json jsonOf(const AppStat& stat) {
    return {{"id", stat.id.string()},
            {"appName", stat.appName},
            {"hours", stat.hours},
            {"color", jsonOf(stat.color)},
            {"percentage", stat.percentage}};
}

AppStat statFrom(const Json& json) {
    return {.id = valueOr(Uuid::parse(json.at("id").get<std::string>())),
            .appName = json.at("appName").get<std::string>(),
            .hours = json.at("hours").get<double>(),
            .color = colorFrom(json.at("color")),
            .percentage = json.at("percentage").get<double>()};
}

std::optional<std::string> textFrom(const Json& json) {
    return json.is_null() ? std::nullopt : std::optional(json.get<std::string>());
}

ShareImageConfig configFrom(const Json& json) {
    ShareImageConfig config{.cardStyle = valueOr(fromRawValue<CardStyle>(json.at("cardStyle").get<std::string>())),
                            .praiseMessage = json.at("praiseMessage").get<std::string>(),
                            .praiseReason = textFrom(json.at("praiseReason")),
                            .totalHours = json.at("totalHours").get<double>(),
                            .date = dateFromSecondsSince1970(json.at("date").get<double>()),
                            .backgroundColor = colorFrom(json.at("backgroundColor")),
                            .textColor = colorFrom(json.at("textColor")),
                            .accentColor = colorFrom(json.at("accentColor")),
                            .shouldShowAppChart = json.at("shouldShowAppChart").get<bool>(),
                            .highlightedAppKey = textFrom(json.at("highlightedAppKey")),
                            .showTimeDistribution = json.at("showTimeDistribution").get<bool>(),
                            .colorScheme =
                                valueOr(fromRawValue<ColorScheme>(json.at("colorScheme").get<std::string>()))};
    for (const Json& stat : json.at("appStats"))
        config.appStats.push_back(statFrom(stat));
    if (!json.at("topApp").is_null()) config.topApp = statFrom(json.at("topApp"));
    return config;
}

}  // namespace

Json jsonOf(const ShareImageConfig& config) {
    Json stats = Json::array();
    for (const AppStat& stat : config.appStats)
        stats.push_back(jsonOf(stat));
    return {{"cardStyle", rawValue(config.cardStyle)},
            {"praiseMessage", config.praiseMessage},
            {"praiseReason", config.praiseReason ? Json(*config.praiseReason) : Json()},
            {"totalHours", config.totalHours},
            {"appStats", std::move(stats)},
            {"date", secondsSince1970(config.date)},
            {"backgroundColor", jsonOf(config.backgroundColor)},
            {"textColor", jsonOf(config.textColor)},
            {"accentColor", jsonOf(config.accentColor)},
            {"shouldShowAppChart", config.shouldShowAppChart},
            {"topApp", config.topApp ? jsonOf(*config.topApp) : Json()},
            {"highlightedAppKey", config.highlightedAppKey ? Json(*config.highlightedAppKey) : Json()},
            {"showTimeDistribution", config.showTimeDistribution},
            {"colorScheme", rawValue(config.colorScheme)}};
}

std::optional<ShareImageConfig> shareImageConfigFrom(const Json& json) {
    try {
        return configFrom(json);
    } catch (const Misfit&) {
        return std::nullopt;
    } catch (const Json::exception&) {
        return std::nullopt;
    }
}

}  // namespace quorvane
