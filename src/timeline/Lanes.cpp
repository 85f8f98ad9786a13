#include "timeline/Lanes.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <numeric>
#include <queue>
#include <tuple>
#include <utility>

namespace quorvane {
namespace {

template <class Value>
using SmallestFirst = std::priority_queue<Value, std::vector<Value>, std::greater<>>;

/// The lanes of one group while its items come by start.
class Group {
public:
    [[nodiscard]] int take(DateInterval stretch) {
        for (; !taken_.empty() && taken_.top().first <= stretch.start; taken_.pop())
            free_.push(taken_.top().second);
        if (free_.empty()) free_.push(count_++);
        const int lane = free_.top();
        free_.pop();
        taken_.emplace(stretch.end, lane);
        end_ = std::max(end_, stretch.end);
        return lane;
    }
    [[nodiscard]] int count() const { return count_; }
    [[nodiscard]] bool isOver(Date start) const { return end_ <= start; }

private:
    SmallestFirst<std::pair<Date, int>> taken_;  ///< until when
    SmallestFirst<int> free_;
    int count_ = 0;
    Date end_ = Date::min();
};

std::vector<std::size_t> byStart(std::span<const LaneItem> items) {
    std::vector<std::size_t> order(items.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return std::tie(items[a].stretch.start, items[a].id) < std::tie(items[b].stretch.start, items[b].id);
    });
    return order;
}

}  // namespace

std::vector<Lane> lanesOf(std::span<const LaneItem> items) {
    std::vector<Lane> lanes(items.size());
    const auto order = byStart(items);
    for (auto first = order.begin(); first != order.end();) {
        Group group;
        auto next = first;
        do
            lanes[*next].index = group.take(items[*next].stretch);
        while (++next != order.end() && !group.isOver(items[*next].stretch.start));
        for (; first != next; ++first)
            lanes[*first].count = group.count();
    }
    return lanes;
}

}  // namespace quorvane
