#include "timeline/Lanes.h"

#include "support/Builders.h"
#include "support/Mapped.h"
#include "support/Matching.h"

#include <algorithm>
#include <fmt/format.h>
#include <random>

namespace quorvane {
namespace {

using Items = std::vector<LaneItem>;

Items itemsAt(const std::vector<std::pair<double, double>>& hours) {
    Items items;
    for (const auto& [start, end] : hours)
        items.push_back({Uuid::random(), {at("00:00:00") + start * 1h, at("00:00:00") + end * 1h}});
    return items;
}

std::vector<std::string> lanes(const std::vector<std::pair<double, double>>& hours) {
    return mapped(lanesOf(itemsAt(hours)),
                  [](const Lane& lane) { return fmt::format("{}/{}", lane.index, lane.count); });
}

TEST(LanesTest, AreSharedByWhatOverlapsOnly) {
    EXPECT_THAT(lanes({}), IsEmpty());
    EXPECT_THAT(lanes({{9, 10}, {10, 11}, {11, 12}}), ElementsAre("0/1", "0/1", "0/1"));
    EXPECT_THAT(lanes({{9, 10}, {9.5, 11}, {10, 12}, {12, 13}}), ElementsAre("0/2", "1/2", "0/2", "0/1"));
    EXPECT_THAT(lanes({{11, 12}, {9.5, 10}, {9, 12}, {9.75, 11}}), ElementsAre("1/3", "1/3", "0/3", "2/3"));
}

TEST(LanesTest, HoldNoOverlapAndAreAsFewAsThereCanBe) {
    std::mt19937 random(1);
    for (int round = 0; round < 300; ++round) {
        SCOPED_TRACE(round);
        std::vector<std::pair<double, double>> hours(random() % 40);
        for (auto& [start, end] : hours) {
            start = static_cast<double>(random() % 96) / 4;
            end = start + static_cast<double>(1 + random() % 8) / 4;
        }
        Items items = itemsAt(hours);
        const auto lanes = lanesOf(items);
        const auto overlap = [&](std::size_t a, std::size_t b) {
            return items[a].stretch.start < items[b].stretch.end && items[b].stretch.start < items[a].stretch.end;
        };
        for (std::size_t a = 0; a < items.size(); ++a) {
            ASSERT_TRUE(0 <= lanes[a].index && lanes[a].index < lanes[a].count);
            for (std::size_t b = 0; b < a; ++b)
                ASSERT_TRUE(!overlap(a, b) || (lanes[a].count == lanes[b].count && lanes[a].index != lanes[b].index));
            // The item that took the last lane found all the others taken.
            int present = 0;
            for (std::size_t b = 0; b < items.size(); ++b)
                present +=
                    items[b].stretch.start <= items[a].stretch.start && items[b].stretch.end > items[a].stretch.start;
            ASSERT_LT(lanes[a].index, present);
        }
        std::ranges::reverse(items);
        const auto again = lanesOf(items);
        ASSERT_TRUE(std::equal(lanes.begin(), lanes.end(), again.rbegin())) << "whatever their order";
    }
}

}  // namespace
}  // namespace quorvane
