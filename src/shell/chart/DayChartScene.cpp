#include "shell/chart/DayChartScene.h"

#include "base/TimeText.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"
#include "store/StoredNames.h"

#include <algorithm>
#include <numeric>

namespace quorvane {
namespace {

constexpr double leastBlock = 8;
constexpr double leastGap = 2;
constexpr double activeLabel = 10;  // from the row's top to the label's centre
constexpr double collapsedLabel = 8;
constexpr double closeTarget = 28;

DayChartBlock blockOf(const ProcessedActivityItem& item, double width, const Localization& localization) {
    const double height = std::max(item.yBottom - item.yTop, leastBlock);
    const auto lane = DayTimelineGeometry::laneSpan(item.lane, width);
    return {.id = item.id,
            .frame = {lane.left, item.yTop, lane.width, height},
            .color = toQColor(item.color),
            .name = qt(StoredNames::shownApp(item.appName, localization)),
            .title = qt(item.windowTitle.value_or("")),
            .duration = qt(lengthText(item.duration * 1h)),
            .startHour = item.startHour,
            .endHour = item.endHour,
            .showsName = item.shouldShowName};
}

DayChartBar barOf(const PlacedProjectAnnotation& placed, const DayTimelineChart& chart, double width,
                  const Localization& localization) {
    const ProjectAnnotation& annotation = placed.annotation;
    const BarFrame frame = barFrame(placed, chart.hourHeight(), width, chart.layout().yPosition(annotation.startHour));
    const std::string& name = annotation.project->name();
    return {.annotation = annotation.dbAnnotation,
            .id = annotation.id,
            .frame = {frame.x - frame.width / 2, frame.y - frame.height / 2, frame.width, frame.height},
            .name = qt(name.empty() ? localization.text("unknown_project") : name),
            .tone = AppColorPalette::projectTone(annotation.project->color().value_or("")),
            .startHour = annotation.startHour,
            .endHour = annotation.endHour,
            .column = placed.columnIndex};
}

DayChartGap gapOf(const AwayGap& gap, const DayTimelineChart& chart, double width, const Localization& localization) {
    const double top = chart.layout().yPosition(gap.hours.startHour);
    const double bottom = chart.layout().yPosition(gap.hours.endHour);
    constexpr double left = DayTimelineGeometry::gutterWidth;
    return {.id = gap.id,
            .frame = {left, top + 1, width - left, std::max(bottom - top - 2, leastGap)},
            .text = qt(localization.text("timeline_gap", clockText(gap.hours.startHour * 1h),
                                         clockText(gap.hours.endHour * 1h))),
            .duration = qt(lengthText(gap.time.end - gap.time.start)),
            .startHour = gap.hours.startHour,
            .endHour = gap.hours.endHour,
            .isLeftEmpty = gap.isLeftEmpty};
}

std::array<DayChartHour, 24> hoursOf(const DayTimelineChart& chart) {
    std::array<DayChartHour, 24> hours;
    for (std::size_t hour = 0; hour < hours.size(); ++hour) {
        const bool isCollapsed = chart.layout().heights()[hour] <= HourLayout::inactiveHeight;
        hours[hour] = {.centre = chart.layout().offsets()[hour] + (isCollapsed ? collapsedLabel : activeLabel),
                       .isActive = chart.activityHours().contains(static_cast<int>(hour))};
    }
    return hours;
}

template <class Item>
const Item* withId(const std::vector<Item>& items, const Uuid& id) {
    const auto found = std::ranges::find(items, id, &Item::id);
    return found == items.end() ? nullptr : &*found;
}

}  // namespace

const DayChartBlock* DayChartScene::block(const Uuid& id) const {
    return withId(blocks, id);
}

const DayChartBar* DayChartScene::bar(const Uuid& id) const {
    return withId(bars, id);
}

const DayChartGap* DayChartScene::gap(const Uuid& id) const {
    return withId(gaps, id);
}

const DayChartBar* DayChartScene::barAt(QPointF point) const {
    const auto found =
        std::find_if(bars.rbegin(), bars.rend(), [&](const DayChartBar& bar) { return bar.frame.contains(point); });
    return found == bars.rend() ? nullptr : &*found;
}

DayChartScene dayChartScene(const DayTimelineChart& chart, double width, const Localization& localization) {
    DayChartScene scene;
    scene.width = width;
    scene.rowsHeight = chart.layout().totalHeight();
    scene.height = scene.rowsHeight;
    scene.isEmpty = chart.isDayKnown() && chart.processedRecords().empty();
    scene.grid = DayTimelineGeometry::gridLines(chart.layout(), chart.activityHours(), width);
    scene.hours = hoursOf(chart);
    for (const AwayGap& gap : chart.gaps())
        scene.gaps.push_back(gapOf(gap, chart, width, localization));
    scene.blocks.reserve(chart.processedRecords().size());
    for (const ProcessedActivityItem& item : chart.processedRecords())
        scene.blocks.push_back(blockOf(item, width, localization));
    scene.bars.reserve(chart.projectAnnotations().size());
    for (const PlacedProjectAnnotation& placed : chart.projectAnnotations())
        scene.bars.push_back(barOf(placed, chart, width, localization));
    for (const DayChartBlock& block : scene.blocks)
        scene.height = std::max(scene.height, block.frame.bottom());
    for (const DayChartBar& bar : scene.bars)
        scene.height = std::max(scene.height, bar.frame.bottom());
    scene.blocksByStart.resize(scene.blocks.size());
    std::iota(scene.blocksByStart.begin(), scene.blocksByStart.end(), std::size_t{0});
    std::ranges::stable_sort(scene.blocksByStart, {}, [&](std::size_t i) { return scene.blocks[i].startHour; });
    return scene;
}

QRectF closeCircleTarget(const QRectF& bar) {
    return {bar.right() - closeTarget / 2, bar.top() - closeTarget / 2, closeTarget, closeTarget};
}

}  // namespace quorvane
