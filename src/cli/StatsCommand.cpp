#include "base/Calendar.h"
#include "base/Json.h"
#include "base/TerminalText.h"
#include "cli/Arguments.h"
#include "cli/CommandContext.h"
#include "cli/Commands.h"
#include "cli/JsonList.h"
#include "cli/Output.h"
#include "cli/TextTable.h"
#include "platform/Clock.h"
#include "session/TerminalColor.h"
#include "store/ModelContext.h"
#include "store/StoredNames.h"
#include "timeline/AppStatistics.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cmath>
#include <fmt/format.h>

namespace quorvane::cli {
namespace {

constexpr int barWidth = 16;
constexpr std::string_view gap = "  ";

/// A bar for a part of 1, drawn in eighths of a column; whatever is above nothing can be seen.
std::string bar(double part) {
    constexpr std::array<std::string_view, 8> ends{"", "▏", "▎", "▍", "▌", "▋", "▊", "▉"};
    const auto eighths = static_cast<std::size_t>(std::ceil(std::clamp(part, 0.0, 1.0) * barWidth * 8));
    std::string text;
    for (std::size_t column = 0; column < eighths / 8; ++column)
        text += "█";
    return text.append(ends[eighths % 8]);
}

void writeJson(const AppStatistics& statistics, Output& output) {
    JsonList list(output);
    for (const AppStat& stat : statistics.appStats)
        list.add(jsonText({{"app_name", stat.appName},
                           {"hours", stat.hours},
                           {"percentage", stat.percentage},
                           {"color", hexText(stat.color)}}));
    list.finish();
}

void writeTable(const AppStatistics& statistics, Output& output) {
    const auto color = TerminalColor::ofStandardOutput();
    const auto localization = Localization::fromEnvironment();
    auto width = terminalWidth();
    if (width) *width -= barWidth + static_cast<int>(gap.size());
    std::vector<std::string> bars{""};  // one a line; the titles have none
    std::size_t line = 0;
    TextTable table({{.title = "APP", .maxWidth = 40, .minWidth = 8},
                     {.title = "HOURS", .maxWidth = 10, .isNumber = true},
                     {.title = "SHARE", .maxWidth = 6, .isNumber = true}},
                    width, [&](std::string_view text) {
                        const std::string& end = bars[line++];
                        text.remove_suffix(1);
                        output.write(fmt::format("{}{}{}\n", text, end.empty() ? "" : gap, end));
                    });
    const auto& stats = statistics.appStats;
    for (const AppStat& stat : stats) {
        const double most = stats.front().hours;
        bars.push_back(most > 0 ? color.colored(bar(stat.hours / most), stat.color) : "");
        table.add({harmlessLine(StoredNames::shownApp(stat.appName, localization)), fmt::format("{:.2f}", stat.hours),
                   fmt::format("{:.1f}%", stat.percentage)});
    }
    table.finish();
}

void stats(const CommandContext& context, const std::optional<CivilDate>& chosen) {
    ModelContext store(context.open(StoreAccess::read));
    const Date now = platform::currentDate();
    const auto calendar = Calendar::current();
    const auto day = calendar.day(chosen ? calendar.date(*chosen) : now);
    const auto statistics = appStatistics(recordsStartingIn(store, day), now);
    Output output;
    if (context.json)
        writeJson(statistics, output);
    else
        writeTable(statistics, output);
    output.finish();
}

}  // namespace

void addStatsCommand(CLI::App& app, CommandContext& context) {
    auto* command = app.add_subcommand("stats", "Hours and share of each application on a day");
    const auto day = std::make_shared<std::optional<CivilDate>>();
    addDateOption(*command, "--date", *day, "The day on which the records start; today if left out");
    command->callback([&context, day] { context.command = [&context, day] { stats(context, *day); }; });
}

}  // namespace quorvane::cli
