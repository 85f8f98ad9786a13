#include "cli/DayDrawing.h"

#include "base/DateText.h"
#include "base/TerminalText.h"
#include "base/Text.h"
#include "base/TimeText.h"
#include "cli/TextTable.h"
#include "session/LocalTime.h"
#include "session/TerminalColor.h"
#include "store/StoredNames.h"
#include "timeline/ProjectTone.h"

#include <algorithm>
#include <fmt/format.h>
#include <numeric>

namespace quorvane::cli {
namespace {

constexpr int quartersOfDay = 96;
constexpr int defaultWidth = 100;  // of a line, where nobody says how wide the terminal is
constexpr Color gapColor = colorFromRgb(0x8E8E93);

double middle(int quarter) {
    return (quarter + 0.5) / 4;
}

using Blocks = std::vector<const ProcessedActivityItem*>;

/// The blocks over the middle of the quarter, from the first lane to the last.
Blocks blocksAt(const DayChart& chart, int quarter) {
    Blocks found;
    for (const ProcessedActivityItem& item : chart.items)
        if (item.startHour <= middle(quarter) && middle(quarter) < item.endHour) found.push_back(&item);
    std::ranges::stable_sort(found, {}, [](const auto* item) { return item->lane.index; });
    return found;
}

std::vector<const ProjectAnnotation*> annotationsAt(const DayChart& chart, int quarter) {
    std::vector<const ProjectAnnotation*> found;
    for (const PlacedProjectAnnotation& placed : chart.annotations)
        if (placed.annotation.startHour <= middle(quarter) && middle(quarter) < placed.annotation.endHour)
            found.push_back(&placed.annotation);
    return found;
}

bool isIn(const Blocks& blocks, const ProcessedActivityItem* block) {
    return std::ranges::find(blocks, block) != blocks.end();
}

std::string padded(const std::string& text, int width) {
    const std::string fitted = text::fittedTo(text, width);
    return fitted + std::string(static_cast<std::size_t>(width - text::displayWidth(fitted)), ' ');
}

/// How many projects have time at one moment, at most.
int annotationColumns(const DayChart& chart) {
    std::size_t most = 0;
    for (int quarter = 0; quarter < quartersOfDay; ++quarter)
        most = std::max(most, annotationsAt(chart, quarter).size());
    return static_cast<int>(most);
}

/// Draws the lines of one day. What only continues from the line above isn't named again.
class DayLines {
public:
    DayLines(const DayChart& chart, int width)
        : chart_(chart), color_(TerminalColor::ofStandardOutput()),
          columns_(std::clamp((width - timeWidth - nameWidth) / (projectWidth + 1), 0, annotationColumns(chart))),
          titleWidth_(std::max(0, width - timeWidth - nameWidth - 1 - columns_ * (projectWidth + 1))) {}

    [[nodiscard]] std::string line(int quarter, bool isFirst) const {
        const auto blocks = blocksAt(chart_, quarter);
        const auto above = isFirst ? Blocks() : blocksAt(chart_, quarter - 1);
        std::string out = quarter % 4 == 0 || isFirst ? clockText(quarter * 15min) + " " : std::string(timeWidth, ' ');
        out += blocksText(blocks, above) + " " + annotationsText(quarter, isFirst) + titlesOf(blocks, above);
        out.erase(out.find_last_not_of(' ') + 1);
        return out + "\n";
    }

private:
    static constexpr int timeWidth = 6;
    static constexpr int nameWidth = 28;
    static constexpr int leastLane = 7;
    static constexpr int projectWidth = 14;

    /// A cell on its colour; where there are no colours, with an edge.
    [[nodiscard]] std::string cell(const std::string& label, int width, Color ground, std::string_view edge) const {
        const std::string text = fmt::format(" {}", label);
        return color_.isOn() ? color_.onGround(padded(text, width), ground)
                             : fmt::format("{}{}", edge, padded(text, width - 1));
    }

    /// Each in its lane, as far as lanes are wide enough to be told apart.
    [[nodiscard]] std::string blocksText(const Blocks& blocks, const Blocks& above) const {
        if (blocks.empty()) return color_.colored("·", gapColor) + std::string(nameWidth - 1, ' ');
        const int laneWidth = std::max(nameWidth / blocks.front()->lane.count, leastLane);
        std::string out;
        int used = 0;
        for (const ProcessedActivityItem* block : blocks) {
            const int left = block->lane.index * laneWidth;
            if (left < used || left + laneWidth > nameWidth) continue;
            out += std::string(static_cast<std::size_t>(left - used), ' ') +
                   cell(isIn(above, block) ? std::string()
                                           : harmlessLine(StoredNames::shownApp(block->appName, localization_)),
                        laneWidth, block->color, "▌");
            used = left + laneWidth;
        }
        return out + std::string(static_cast<std::size_t>(nameWidth - used), ' ');
    }

    [[nodiscard]] std::string annotationsText(int quarter, bool isFirst) const {
        const auto present = annotationsAt(chart_, quarter);
        const auto above = isFirst ? std::vector<const ProjectAnnotation*>() : annotationsAt(chart_, quarter - 1);
        std::string out;
        for (int column = 0; column < columns_; ++column) {
            if (column >= std::ssize(present)) {
                out += std::string(projectWidth + 1, ' ');
                continue;
            }
            const ProjectAnnotation* annotation = present[static_cast<std::size_t>(column)];
            const bool isNew = std::ranges::find(above, annotation) == above.end();
            const Color fill = AppColorPalette::projectColor(annotation->project->color().value_or(""), false);
            out += cell(isNew ? harmlessLine(annotation->project->name()) : std::string(), projectWidth, fill, "│");
            out += ' ';
        }
        return out;
    }

    /// Of the blocks that are new on this line.
    [[nodiscard]] std::string titlesOf(const Blocks& blocks, const Blocks& above) const {
        std::string out;
        for (const ProcessedActivityItem* block : blocks)
            if (!isIn(above, block))
                out += fmt::format("{}{}  {}", out.empty() ? "" : "  ", durationText(block->duration * 1h),
                                   harmlessLine(block->windowTitle.value_or("")));
        return text::fittedTo(out, titleWidth_);
    }

    const DayChart& chart_;
    TerminalColor color_;
    Localization localization_ = Localization::fromEnvironment();
    int columns_;
    int titleWidth_;
};

}  // namespace

double DayChart::totalHours() const {
    return std::accumulate(items.begin(), items.end(), 0.0,
                           [](double sum, const ProcessedActivityItem& item) { return sum + item.duration; });
}

void drawDay(const DayChart& chart, const std::function<void(std::string_view)>& write) {
    const DayLines lines(chart, terminalWidth().value_or(defaultWidth));
    write(fmt::format("{}  {:.1f} h\n", mediumDate(chart.date), chart.totalHours()));
    const auto isDrawn = [&](int quarter) {
        return chart.activeHours.contains(quarter / 4) || !annotationsAt(chart, quarter).empty();
    };
    bool isFirst = true;
    for (int quarter = 0; quarter < quartersOfDay; ++quarter) {
        if (isDrawn(quarter)) {
            if (isFirst) write("\n");
            write(lines.line(quarter, isFirst));
        }
        isFirst = !isDrawn(quarter);
    }
}

}  // namespace quorvane::cli
