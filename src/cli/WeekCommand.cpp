#include "base/Json.h"
#include "base/TerminalText.h"
#include "base/Text.h"
#include "cli/Arguments.h"
#include "cli/CommandContext.h"
#include "cli/Commands.h"
#include "cli/JsonList.h"
#include "cli/Output.h"
#include "cli/OverviewInput.h"
#include "cli/TextTable.h"
#include "diagnostics/ConsoleSink.h"
#include "l10n/Localization.h"
#include "platform/Clock.h"
#include "session/LocalTime.h"
#include "session/TerminalColor.h"
#include "store/ModelContext.h"
#include "timeline/CalendarTitles.h"
#include "timeline/WeekTimeline.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <fmt/format.h>

namespace quorvane::cli {
namespace {

struct WeekOptions {
    std::optional<CivilDate> day;
    double columnWidth = 120;
};

template <class Bar>
Json barsJson(const std::vector<Bar>& bars) {
    Json list = Json::array();
    for (const Bar& bar : bars)
        list.push_back({{"id", bar.id.string()},
                        {"start_hour", bar.geometry.startHour},
                        {"end_hour", bar.geometry.endHour},
                        {"lane", bar.geometry.lane.index},
                        {"lanes", bar.geometry.lane.count},
                        {"height", bar.geometry.frame.height},
                        {"center_y", bar.geometry.frame.y},
                        {"label", bar.label ? Json(bar.label->text) : Json()}});
    return list;
}

void writeJson(const std::vector<WeekTimelineColumn>& week, Output& output) {
    JsonList list(output);
    for (const WeekTimelineColumn& column : week)
        list.add(jsonText({{"date", civilDateText(timelineCalendar().civilDate(column.date))},
                           {"activities", barsJson(column.activities)},
                           {"annotations", barsJson(column.projects)}}));
    list.finish();
}

/// A bar as a line for people.
struct TextBar {
    WeekBarGeometry geometry;
    std::string name;
    Color mark;
};

std::vector<TextBar> textBars(const WeekTimelineColumn& column, const Localization& localization) {
    std::vector<TextBar> bars;
    for (const auto& bar : column.activities)
        bars.push_back({bar.geometry, harmlessLine(bar.name), bar.color});
    for (const auto& bar : column.projects)
        bars.push_back({bar.geometry, localization.text("project") + ": " + harmlessLine(bar.name), bar.tone.accent});
    std::stable_sort(bars.begin(), bars.end(),
                     [](const TextBar& a, const TextBar& b) { return a.geometry.startHour < b.geometry.startHour; });
    return bars;
}

/// Each day with what stands in its column, from morning to evening.
void writeText(const std::vector<WeekTimelineColumn>& week, Output& output) {
    const LocalTime local;
    const auto localization = Localization::fromEnvironment();
    const auto color = TerminalColor::ofStandardOutput();
    const auto width = terminalWidth();
    for (const WeekTimelineColumn& column : week) {
        output.write(weekdayAndDay(column.date) + "\n");
        for (const TextBar& bar : textBars(column, localization)) {
            const Date start = column.date + bar.geometry.startHour * 1h;
            const Date end = column.date + bar.geometry.endHour * 1h;
            const auto times =
                fmt::format("  {}  {}  {:>8}  ", local.time(start), local.time(end), durationText(end - start));
            const int used = text::displayWidth(times) + 2;
            output.write(times + color.colored("▌", bar.mark) + " " +
                         (width ? text::fittedTo(bar.name, std::max(*width - used, 8)) : bar.name) + "\n");
        }
    }
}

void week(const CommandContext& context, const WeekOptions& options) {
    const Date date = chosenDate(options.day);
    StreamConsole console(stderr);
    ModelContext store(context.open(StoreAccess::read));
    const auto input = readOverview(store, timelineCalendar().week(date));
    const auto columns = WeekTimeline::columns(date,
                                               {.records = input.records,
                                                .annotations = input.annotations,
                                                .now = platform::currentDate(),
                                                .columnWidth = options.columnWidth},
                                               console);
    Output output;
    if (context.json)
        writeJson(columns, output);
    else
        writeText(columns, output);
    output.finish();
}

}  // namespace

void addWeekCommand(CLI::App& app, CommandContext& context) {
    auto* command = app.add_subcommand("week", "What stands in the seven columns of a week");
    const auto options = std::make_shared<WeekOptions>();
    addDateOption(*command, "--date", options->day, "A day of the week; today if left out");
    addTextOption(
        *command, "--column-width", "POINTS", "How wide a column is, which decides the labels; 120",
        [options](const std::string& text) { options->columnWidth = readNonNegative("--column-width", text); });
    command->callback([&context, options] { context.command = [&context, options] { week(context, *options); }; });
}

}  // namespace quorvane::cli
