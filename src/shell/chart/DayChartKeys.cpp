#include "shell/chart/DayChartKeys.h"

#include <Qt>
#include <algorithm>
#include <cmath>

namespace quorvane {
namespace {

constexpr double firstHour = 8;  // where a day begins on which nothing was recorded
constexpr double quarter = 0.25;

}  // namespace

bool DayChartKeys::press(int key) {
    switch (key) {
    case Qt::Key_Up: moveBetweenBlocks(-1); return true;
    case Qt::Key_Down: moveBetweenBlocks(1); return true;
    case Qt::Key_Left: moveBetweenBars(-1); return true;
    case Qt::Key_Right: moveBetweenBars(1); return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!hasChosen()) moveBetweenBlocks(1);
        return true;
    case Qt::Key_Escape: return letGo();
    case Qt::Key_A: assign(); return true;
    case Qt::Key_Delete:
    case Qt::Key_Backspace: takeAway(); return true;
    case Qt::Key_Home: chart_.selectDate(runLoop_.now()); return true;
    default: return false;
    }
}

void DayChartKeys::moveBetweenBlocks(int direction) {
    if (chart_.selectedProjectAnnotation() && block_) chart_.selectBlock(*block_);
    chart_.selectNeighbour(direction);
}

/// The bars that share time with the block the way led from; all of them where there is none.
std::vector<const DayChartBar*> DayChartKeys::barsBeside() const {
    const auto* block = block_ ? scene_.block(*block_) : nullptr;
    std::vector<const DayChartBar*> beside;
    beside.reserve(scene_.bars.size());
    for (const DayChartBar& bar : scene_.bars)
        if (block == nullptr || (bar.startHour < block->endHour && bar.endHour > block->startHour))
            beside.push_back(&bar);
    std::ranges::stable_sort(beside, {}, [](const auto* bar) { return bar->frame.left(); });
    return beside;
}

void DayChartKeys::moveBetweenBars(int direction) {
    const auto chosen = chart_.selectedProjectAnnotation();
    if (!chosen) {
        block_ = chart_.selectedActivity() ? std::optional(chart_.selectedActivity()->id) : std::nullopt;
        if (direction < 0) return;
    }
    auto bars = barsBeside();
    auto present = chosen ? std::ranges::find(bars, chosen->id(), &DayChartBar::id) : bars.end();
    if (chosen && present == bars.end()) {  // chosen by the pointer, beside another block
        block_.reset();
        bars = barsBeside();
        present = std::ranges::find(bars, chosen->id(), &DayChartBar::id);
    }
    const auto next = present == bars.end() ? 0 : present - bars.begin() + direction;
    if (next < 0) {
        if (block_) chart_.selectBlock(*block_);
    } else if (next < std::ssize(bars)) {
        chart_.select(bars[static_cast<std::size_t>(next)]->annotation);
    }
}

bool DayChartKeys::letGo() {
    if (chart_.projectSelector() != nullptr) {
        chart_.cancelProjectSelection();
    } else if (hasChosen()) {
        chart_.select(nullptr);
    } else {
        return false;
    }
    return true;
}

bool DayChartKeys::hasChosen() const {
    return chart_.selectedActivity() || chart_.selectedProjectAnnotation() || chart_.selectedGap();
}

void DayChartKeys::takeAway() {
    if (const auto gap = chart_.selectedGap())
        chart_.leaveGapEmpty(gap->time);
    else
        chart_.deleteSelectedProjectAnnotation();
}

void DayChartKeys::assign() {
    if (chart_.selectedActivity()) return chart_.selectTimeRangeOfActivity();
    if (const auto& gap = chart_.selectedGap()) return chart_.assignGap(gap->time);
    chart_.selectTimeRange(nextFreeQuarter(scene_));
}

TimeRange nextFreeQuarter(const DayChartScene& scene) {
    double start = scene.blocks.empty() ? firstHour : 0;
    for (const DayChartBlock& block : scene.blocks)
        start = std::max(start, std::ceil(block.endHour / quarter - 1e-9) * quarter);
    start = std::min(start, 24 - quarter);
    return {start, start + quarter};
}

}  // namespace quorvane
