#include "base/Json.h"
#include "base/TerminalText.h"
#include "base/Text.h"
#include "cli/Arguments.h"
#include "cli/CommandContext.h"
#include "cli/Commands.h"
#include "cli/Output.h"
#include "cli/OverviewInput.h"
#include "cli/TextTable.h"
#include "diagnostics/ConsoleSink.h"
#include "platform/Clock.h"
#include "session/TerminalColor.h"
#include "store/ModelContext.h"
#include "store/StoredNames.h"
#include "timeline/CalendarTitles.h"
#include "timeline/MonthTimeline.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <fmt/format.h>

namespace quorvane::cli {
namespace {

constexpr int defaultMonthWidth = 118;
constexpr int narrowestCell = 10;
constexpr std::string_view gap = "  ";

std::string jsonOf(const MonthGrid& month) {
    Json days = Json::array();
    for (const MonthSimpleCell& cell : month.cells) {
        Json lines = Json::array();
        for (const MonthCellLine& line : cell.lines)
            lines.push_back({{"name", line.name}, {"duration", line.duration}});
        days.push_back({{"date", civilDateText(timelineCalendar().civilDate(cell.date))},
                        {"lines", std::move(lines)},
                        {"more", cell.more},
                        {"fallback", cell.fallback ? Json(*cell.fallback) : Json()}});
    }
    return jsonText({{"leading", month.leading}, {"days", std::move(days)}}) + "\n";
}

/// A calendar in columns of equal width.
class TextCalendar {
public:
    explicit TextCalendar(Output& output) : output_(output) {
        const int gaps = 6 * static_cast<int>(gap.size());
        cellWidth_ = std::max((terminalWidth().value_or(defaultMonthWidth) - gaps) / 7, narrowestCell);
    }

    void write(const MonthGrid& month) {
        output_.write(monthAndYear(month.cells.front().date) + "\n\n");
        writeWeekdays(month);
        const auto& cells = month.cells;
        auto end = cells.begin();
        for (int leading = month.leading; end != cells.end(); leading = 0) {
            const auto begin = end;
            end += std::min<std::ptrdiff_t>(7 - leading, cells.end() - begin);
            writeWeek(leading, std::span(begin, end));
        }
    }

private:
    void writeWeekdays(const MonthGrid& month) {
        std::vector<std::string> names;
        for (std::size_t i = 0; i < 7; ++i)  // the first full week of the month
            names.push_back(
                padded(shortWeekday(month.cells[(7 - static_cast<std::size_t>(month.leading)) % 7 + i].date)));
        writeRow(names);
    }

    void writeWeek(int leading, std::span<const MonthSimpleCell> week) {
        std::vector<std::vector<std::string>> columns(static_cast<std::size_t>(leading));
        std::size_t height = 0;
        for (const MonthSimpleCell& cell : week) {
            columns.push_back(textOf(cell));
            height = std::max(height, columns.back().size());
        }
        output_.write("\n");
        for (std::size_t row = 0; row < height; ++row) {
            std::vector<std::string> texts;
            texts.reserve(columns.size());
            for (const auto& column : columns)
                texts.push_back(row < column.size() ? column[row] : padded(""));
            writeRow(texts);
        }
    }

    /// Each as wide as the cell.
    [[nodiscard]] std::vector<std::string> textOf(const MonthSimpleCell& cell) const {
        const auto more = cell.more > 0 ? fmt::format("+{}", cell.more) : std::string();
        std::vector<std::string> rows{
            spread(fmt::format("{}{}", cell.dayOfMonth, cell.isToday ? "*" : ""), more, cellWidth_)};
        for (const MonthCellLine& line : cell.lines)
            rows.push_back(
                color_.colored("▌", line.mark) +
                spread(harmlessLine(StoredNames::shownApp(line.name, localization_)), line.duration, cellWidth_ - 1));
        if (cell.fallback) rows.push_back(padded(*cell.fallback));
        return rows;
    }

    /// One text at the start and one at the end, which is never cut.
    [[nodiscard]] static std::string spread(const std::string& start, const std::string& end, int width) {
        const int forStart = std::max(width - text::displayWidth(end) - 1, 1);
        const auto fitted = text::fittedTo(start, forStart);
        const int missing = width - text::displayWidth(fitted) - text::displayWidth(end);
        return fitted + std::string(static_cast<std::size_t>(std::max(missing, 1)), ' ') + end;
    }

    [[nodiscard]] std::string padded(const std::string& text) const { return spread(text, "", cellWidth_); }

    void writeRow(const std::vector<std::string>& cells) {
        std::string line = text::joined(cells, gap);
        line.erase(line.find_last_not_of(' ') + 1);
        output_.write(line + "\n");
    }

    Output& output_;
    TerminalColor color_ = TerminalColor::ofStandardOutput();
    Localization localization_ = Localization::fromEnvironment();
    int cellWidth_ = 0;
};

void month(const CommandContext& context, const std::optional<CivilDate>& day) {
    const Date date = chosenDate(day);
    const auto calendar = Calendar::current();
    StreamConsole console(stderr);
    ModelContext store(context.open(StoreAccess::read));
    const auto input = readOverview(store, calendar.month(date));
    const auto grid = MonthTimeline::grid(
        date, {.records = input.records, .annotations = input.annotations, .now = platform::currentDate()}, console,
        calendar);
    Output output;
    if (context.json)
        output.write(jsonOf(grid));
    else
        TextCalendar(output).write(grid);
    output.finish();
}

}  // namespace

void addMonthCommand(CLI::App& app, CommandContext& context) {
    auto* command = app.add_subcommand("month", "The calendar of a month with the larger items of each day");
    const auto day = std::make_shared<std::optional<CivilDate>>();
    addDateOption(*command, "--date", *day, "A day of the month; today if left out");
    command->callback([&context, day] { context.command = [&context, day] { month(context, *day); }; });
}

}  // namespace quorvane::cli
