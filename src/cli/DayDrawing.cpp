#include "cli/DayDrawing.h"

#include "base/DateText.h"
#include "base/Text.h"
#include "cli/TextTable.h"
#include "session/LocalTime.h"
#include "session/TerminalColor.h"
#include "session/TerminalText.h"
#include "timeline/ProjectTone.h"

#include <algorithm>
#include <fmt/format.h>
#include <numeric>

namespace quorvane::cli {
namespace {

constexpr int quartersOfDay = 96;
constexpr int nameWidth = 28;
constexpr int defaultWidth = 100;  // of a line, where nobody says how wide the terminal is
constexpr Color gapColor = colorFromRgb(0x8E8E93);

double middle(int quarter) {
    return (quarter + 0.5) / 4;
}

/// The block that is drawn last over the middle of the quarter.
const ProcessedActivityItem* blockAt(const DayChart& chart, int quarter) {
    const auto hit = std::find_if(chart.items.rbegin(), chart.items.rend(), [&](const ProcessedActivityItem& item) {
        return item.startHour <= middle(quarter) && middle(quarter) < item.endHour();
    });
    return hit == chart.items.rend() ? nullptr : &*hit;
}

std::vector<const ProjectAnnotation*> annotationsAt(const DayChart& chart, int quarter) {
    std::vector<const ProjectAnnotation*> found;
    for (const PlacedProjectAnnotation& placed : chart.annotations)
        if (placed.annotation.startHour <= middle(quarter) && middle(quarter) < placed.annotation.endHour)
            found.push_back(&placed.annotation);
    return found;
}

std::string padded(const std::string& text, int width) {
    const std::string fitted = text::fittedTo(text, width);
    return fitted + std::string(static_cast<std::size_t>(width - text::displayWidth(fitted)), ' ');
}

/// One line of the drawing. What only continues from the line above isn't named again.
class DayLine {
public:
    DayLine(const DayChart& chart, int quarter, bool isFirst, const TerminalColor& color, int width)
        : color_(color), rest_(width) {
        text_ = quarter % 4 == 0 || isFirst ? fmt::format("{:02}:{:02} ", quarter / 4, quarter % 4 * 15) : "      ";
        rest_ -= 6;
        const auto* block = blockAt(chart, quarter);
        const auto* above = isFirst ? nullptr : blockAt(chart, quarter - 1);
        addBlock(block, block != above);
        const auto annotations = annotationsAt(chart, quarter);
        const auto earlier = isFirst ? std::vector<const ProjectAnnotation*>() : annotationsAt(chart, quarter - 1);
        for (const auto* annotation : annotations)
            addAnnotation(*annotation, std::ranges::find(earlier, annotation) == earlier.end());
        if (block != nullptr && block != above) addTitle(*block);
    }

    [[nodiscard]] std::string text() const {
        std::string out = text_;
        out.erase(out.find_last_not_of(' ') + 1);
        return out + "\n";
    }

private:
    void addBlock(const ProcessedActivityItem* block, bool isNew) {
        rest_ -= nameWidth + 1;
        if (block == nullptr) {
            text_ += color_.colored("·", gapColor) + std::string(nameWidth, ' ');
            return;
        }
        const std::string label = isNew ? fmt::format(" {}", harmlessLine(block->appName)) : "";
        text_ += color_.onGround(fmt::format("▌{}", padded(label, nameWidth - 1)), block->color) + " ";
    }

    void addAnnotation(const ProjectAnnotation& annotation, bool isNew) {
        constexpr int width = 14;
        if (rest_ < width + 1) return;
        rest_ -= width + 1;
        const Color fill = AppColorPalette::projectColor(annotation.project->color().value_or(""), false);
        const std::string label = isNew ? fmt::format(" {}", harmlessLine(annotation.project->name())) : "";
        text_ += color_.onGround(fmt::format("│{}", padded(label, width - 1)), fill) + " ";
    }

    void addTitle(const ProcessedActivityItem& block) {
        const std::string title = fmt::format("{}  {}", durationText(Seconds{block.duration * 3600}),
                                              harmlessLine(block.windowTitle.value_or("")));
        text_ += text::fittedTo(title, std::max(rest_, 0));
    }

    const TerminalColor& color_;
    std::string text_;
    int rest_;  ///< columns that are left
};

}  // namespace

double DayChart::totalHours() const {
    return std::accumulate(items.begin(), items.end(), 0.0,
                           [](double sum, const ProcessedActivityItem& item) { return sum + item.duration; });
}

void drawDay(const DayChart& chart, const std::function<void(std::string_view)>& write) {
    const auto color = TerminalColor::ofStandardOutput();
    const int width = terminalWidth().value_or(defaultWidth);
    write(fmt::format("{}  {:.1f} h\n", mediumDate(chart.date), chart.totalHours()));
    const auto isDrawn = [&](int quarter) {
        return chart.activeHours.contains(quarter / 4) || !annotationsAt(chart, quarter).empty();
    };
    bool isFirst = true;
    for (int quarter = 0; quarter < quartersOfDay; ++quarter) {
        if (isDrawn(quarter)) {
            if (isFirst) write("\n");
            write(DayLine(chart, quarter, isFirst, color, width).text());
        }
        isFirst = !isDrawn(quarter);
    }
}

}  // namespace quorvane::cli
