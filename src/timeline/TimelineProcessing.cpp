#include "timeline/TimelineProcessing.h"

#include "timeline/AppColorPalette.h"
#include "timeline/ClockHours.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <utility>

namespace quorvane::TimelineProcessing {
namespace {

constexpr Seconds shortestBlock = 60s;
constexpr Seconds longestGap = 120s;
constexpr double equalDurations = 0.0001;  // hours
constexpr Seconds shortestLabelled = 90s;
constexpr double labelDistance = 100;  // points

bool isOnChart(const TimelineRecordSnapshot& record, DateInterval day, Date now) {
    return record.startTime >= day.start && record.startTime < day.end &&
           record.endTime.value_or(now) > record.startTime && !record.isLoginWindow();
}

void sortByStart(std::vector<TimelineRecordSnapshot>& records) {
    const auto isEarlier = [](const auto& a, const auto& b) {
        return std::tie(a.startTime, a.id) < std::tie(b.startTime, b.id);
    };
    // They mostly come in order, and moving them costs more than looking.
    if (!std::is_sorted(records.begin(), records.end(), isEarlier))
        std::stable_sort(records.begin(), records.end(), isEarlier);
}

bool isSameApplication(const TimelineRecordSnapshot& a, const TimelineRecordSnapshot& b) {
    return a.bundleId == b.bundleId || (a.appName && a.appName == b.appName);
}

bool continues(const TimelineRecordSnapshot& current, const TimelineRecordSnapshot& next, Date now) {
    if (!isSameApplication(current, next)) return false;
    const Seconds gap = next.startTime - current.endTime.value_or(now);
    return gap >= 0s && gap <= longestGap;
}

/// `next`'s where `current` has none.
void fill(std::optional<std::string>& current, std::optional<std::string>& next) {
    if (!current) current = std::move(next);
}

void absorb(TimelineRecordSnapshot& current, TimelineRecordSnapshot&& next, Date now) {
    current.endTime = std::max(current.endTime.value_or(now), next.endTime.value_or(now));
    fill(current.windowTitle, next.windowTitle);
    fill(current.documentPath, next.documentPath);
    fill(current.url, next.url);
    fill(current.category, next.category);
    if (current.tags.empty()) current.tags = std::move(next.tags);
}

/// `records` are in order.
std::vector<TimelineRecordSnapshot> joined(std::vector<TimelineRecordSnapshot> records, Date now) {
    std::vector<TimelineRecordSnapshot> merged;
    merged.reserve(records.size());
    for (auto& next : records) {
        if (!merged.empty() && continues(merged.back(), next, now))
            absorb(merged.back(), std::move(next), now);
        else
            merged.push_back(std::move(next));
    }
    return merged;
}

/// What the draw order looks at, so that sorting doesn't move whole blocks.
struct DrawKey {
    double duration;
    double startHour;
    std::size_t index;
};

bool isDrawnBefore(const DrawKey& a, const DrawKey& b) {
    if (std::abs(a.duration - b.duration) < equalDurations) return a.startHour < b.startHour;
    return a.duration > b.duration;
}

/// Names must not repeat too densely: the distance counts from the last labelled block of the same name.
void chooseLabels(std::vector<ProcessedActivityItem>& items) {
    std::vector<std::size_t> downwards(items.size());
    std::iota(downwards.begin(), downwards.end(), std::size_t{0});
    std::stable_sort(downwards.begin(), downwards.end(),
                     [&](std::size_t a, std::size_t b) { return items[a].yTop < items[b].yTop; });
    std::unordered_map<std::string_view, double> lastMiddle;
    for (const auto index : downwards) {
        auto& item = items[index];
        item.shouldShowName = false;
        if (item.duration * 3600 < shortestLabelled.count()) continue;
        const double middle = (item.yTop + item.yBottom) * 0.5;
        const auto [last, isFirst] = lastMiddle.try_emplace(item.appName, middle);
        if (!isFirst && std::abs(middle - last->second) < labelDistance) continue;
        item.shouldShowName = true;
        last->second = middle;
    }
}

}  // namespace

std::vector<TimelineRecordSnapshot> snapshotsOfDay(std::vector<TimelineRecordSnapshot> records, Date selectedDate,
                                                   Date now, const Calendar& calendar) {
    // This runs on the main thread: the calendar is asked once, not for each record.
    const auto day = calendar.day(selectedDate);
    std::erase_if(records, [&](const auto& record) { return !isOnChart(record, day, now); });
    sortByStart(records);
    return records;
}

std::vector<TimelineRecordSnapshot> mergeAdjacentRecords(std::vector<TimelineRecordSnapshot> snapshots, Date now) {
    sortByStart(snapshots);
    auto blocks = joined(std::move(snapshots), now);
    std::erase_if(blocks,
                  [&](const auto& block) { return block.endTime.value_or(now) - block.startTime < shortestBlock; });
    return joined(std::move(blocks), now);  // a glance at something else does not part them
}

std::vector<TimelineProcessedSnapshot> placeSnapshots(std::vector<TimelineRecordSnapshot> snapshots, Date now,
                                                      const Calendar& calendar) {
    std::vector<LaneItem> items;
    items.reserve(snapshots.size());
    for (const auto& snapshot : snapshots)
        items.push_back(
            {snapshot.id, {snapshot.startTime, std::max(snapshot.startTime, snapshot.endTime.value_or(now))}});
    const auto lanes = lanesOf(items);
    std::vector<TimelineProcessedSnapshot> placed;
    placed.reserve(snapshots.size());
    for (std::size_t i = 0; i < snapshots.size(); ++i) {
        auto& snapshot = snapshots[i];
        const DateInterval stretch = items[i].stretch;
        const TimeRange hours = clockHours(stretch, calendar);
        placed.push_back({.id = snapshot.id,
                          .stretch = stretch,
                          .startHour = hours.startHour,
                          .endHour = hours.endHour,
                          .duration = (stretch.end - stretch.start) / 1h,
                          .lane = lanes[i],
                          .bundleId = std::move(snapshot.bundleId),
                          .appName = snapshot.displayName(),
                          .windowTitle = std::move(snapshot.windowTitle),
                          .documentPath = std::move(snapshot.documentPath),
                          .url = std::move(snapshot.url),
                          .category = std::move(snapshot.category),
                          .tags = std::move(snapshot.tags)});
    }
    return placed;
}

void sortByDrawOrder(std::vector<TimelineProcessedSnapshot>& blocks) {
    std::vector<DrawKey> keys;
    keys.reserve(blocks.size());
    for (const auto& block : blocks)
        keys.push_back({block.duration, block.startHour, keys.size()});
    std::stable_sort(keys.begin(), keys.end(), [](const DrawKey& a, const DrawKey& b) {
        return std::pair(-a.duration, a.startHour) < std::pair(-b.duration, b.startHour);
    });
    // "About as long" doesn't carry over from one pair to the next, which a sort of the library would rely on. Moving
    // each up past its neighbours is always defined, and goes no farther than those that are about as long.
    for (auto key = keys.begin(); key != keys.end(); ++key) {
        const auto moved = *key;
        auto place = key;
        for (; place != keys.begin() && isDrawnBefore(moved, place[-1]); --place)
            *place = place[-1];
        *place = moved;
    }
    std::vector<TimelineProcessedSnapshot> sorted;
    sorted.reserve(blocks.size());
    for (const auto& key : keys)
        sorted.push_back(std::move(blocks[key.index]));
    blocks = std::move(sorted);
}

std::vector<TimelineProcessedSnapshot> process(std::vector<TimelineRecordSnapshot> snapshots, Date now,
                                               const Calendar& calendar, const std::stop_token& stop) {
    auto merged = mergeAdjacentRecords(std::move(snapshots), now);
    if (stop.stop_requested()) return {};
    auto blocks = placeSnapshots(std::move(merged), now, calendar);
    sortByDrawOrder(blocks);
    return blocks;
}

std::vector<ProcessedActivityItem> makeItems(std::vector<TimelineProcessedSnapshot> blocks) {
    std::vector<ProcessedActivityItem> items;
    items.reserve(blocks.size());
    for (auto& block : blocks) {
        const auto color = AppColorPalette::appColor(block.bundleId, block.appName);
        items.push_back({.id = block.id,
                         .stretch = block.stretch,
                         .startHour = block.startHour,
                         .endHour = block.endHour,
                         .duration = block.duration,
                         .lane = block.lane,
                         .bundleId = std::move(block.bundleId),
                         .appName = std::move(block.appName),
                         .windowTitle = std::move(block.windowTitle),
                         .documentPath = std::move(block.documentPath),
                         .url = std::move(block.url),
                         .color = color,
                         .category = std::move(block.category),
                         .tags = std::move(block.tags)});
    }
    return items;
}

std::set<int> activityHours(const std::vector<ProcessedActivityItem>& items) {
    std::array<bool, 24> isActive{};
    for (const auto& item : items)
        for (int hour = 0; hour < 24; ++hour)
            if (item.startHour < hour + 1 && item.endHour > hour) isActive[static_cast<std::size_t>(hour)] = true;
    std::set<int> hours;
    for (int hour = 0; hour < 24; ++hour)
        if (isActive[static_cast<std::size_t>(hour)]) hours.insert(hour);
    return hours;
}

void layOut(std::vector<ProcessedActivityItem>& items, const HourLayout& layout) {
    for (auto& item : items) {
        item.yTop = layout.yPosition(item.startHour);
        item.yBottom = layout.yPosition(item.endHour);
    }
    chooseLabels(items);
}

}  // namespace quorvane::TimelineProcessing
