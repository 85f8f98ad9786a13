#include "timeline/SnapshotTimeSlots.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>
#include <utility>

namespace quorvane {
namespace {

using Blocks = std::vector<std::pair<double, double>>;  // start hour and duration

std::vector<double> startsOf(const Blocks& blocks) {
    SnapshotTimeSlots slots;
    std::vector<double> starts;
    for (const auto& [hour, duration] : blocks)
        starts.push_back(slots.take(hour, duration));
    return starts;
}

/// Step by step: a block that overlaps any other moves by 0.05 and looks at all of them again.
std::vector<double> startsStepByStep(const Blocks& blocks) {
    Blocks active;
    std::vector<double> starts;
    for (auto candidate : blocks) {
        std::erase_if(active, [&](const auto& slot) { return slot.first + slot.second <= candidate.first; });
        const auto overlaps = [&](const auto& slot) {
            return candidate.first < slot.first + slot.second && slot.first < candidate.first + candidate.second;
        };
        while (std::any_of(active.begin(), active.end(), overlaps))
            candidate.first += 0.05;
        active.push_back(candidate);
        starts.push_back(candidate.first);
    }
    return starts;
}

TEST(SnapshotTimeSlotsTest, AreTakenAsBySteppingThroughThemOneByOne) {
    std::mt19937 random(20260302);
    const auto below = [&](unsigned count) { return static_cast<double>(random() % count); };
    std::size_t pushed = 0;
    for (int day = 0; day < 2000; ++day) {
        SCOPED_TRACE(day);
        const bool isSorted = day % 4 != 0;  // they go back when the clock does
        const double longest = std::vector{200.0, 3600.0, 20000.0, 90000.0}[random() % 4];
        Blocks blocks;
        for (auto count = random() % 40; count > 0; --count) {
            const double seconds = random() % 10 == 0 ? 0 : longest * below(1000000) / 1e6;
            blocks.emplace_back(below(60) / 60.0 + below(random() % 2 == 0 ? 3 : 24), seconds / 3600);
        }
        if (isSorted) std::sort(blocks.begin(), blocks.end());
        const auto expected = startsStepByStep(blocks);
        ASSERT_EQ(startsOf(blocks), expected);
        for (std::size_t i = 0; i < blocks.size(); ++i)
            pushed += expected[i] != blocks[i].first ? 1 : 0;
    }
    EXPECT_GT(pushed, 10000U);
}

TEST(SnapshotTimeSlotsTest, LeadToTheSameHourHoweverFarAwayItIs) {
    for (int minute = 0; minute < 1440; minute += 41) {
        const int whole = minute / 60;
        const double start = minute % 60 / 60.0 + whole;
        double hour = start;
        for (const double end : {24.0, 31.999, 32.0, 100.7, 1024.0, 30000.3}) {
            SnapshotTimeSlots slots;
            slots.take(0, end);
            while (hour < end)
                hour += 0.05;
            ASSERT_EQ(slots.take(start, 1), hour) << start << " behind " << end;
        }
    }
}

TEST(SnapshotTimeSlotsTest, AreTakenOneBehindTheOtherWhenEverythingOverlaps) {
    // Looking at every slot after every step would take 20 * 24 * 4000^3 / 6 looks here.
    const Blocks blocks(4000, {9.25, 23.9});
    std::vector<double> expected;
    double hour = 9.25;
    for (double end = 0; expected.size() < blocks.size(); end = hour + 23.9) {
        while (hour < end)
            hour += 0.05;
        expected.push_back(hour);
    }
    EXPECT_EQ(startsOf(blocks), expected);
}

}  // namespace
}  // namespace quorvane
