#include "diagnostics/performance/CPUSustainedLoadDetector.h"

#include "support/Matching.h"

#include <algorithm>
#include <limits>
#include <random>

namespace quorvane {
namespace {

using Policy = CPUSustainedLoadDetector::Policy;
using Trigger = CPUSustainedLoadDetector::Trigger;

const Date launch = dateFromSecondsSince1970(1'772'000'000);

// A sample and a trigger, with their times after the launch.
using Sample = std::pair<Seconds, double>;
using Fired = std::pair<Seconds, Trigger>;

std::vector<Fired> play(CPUSustainedLoadDetector& detector, const std::vector<Sample>& samples) {
    std::vector<Fired> fired;
    for (const auto& [at, percent] : samples)
        if (const auto trigger = detector.observe(percent, launch + at)) fired.emplace_back(at, *trigger);
    return fired;
}

/// Every three seconds the same load.
std::vector<Sample> steady(Seconds from, Seconds to, double percent) {
    std::vector<Sample> samples;
    for (Seconds at = from; at <= to; at += 3s)
        samples.emplace_back(at, percent);
    return samples;
}

TEST(CPUSustainedLoadDetectorTest, TriggersOnlyAfterAnUnbrokenStreakBeyondTheGrace) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    const std::tuple<const char*, std::vector<Sample>, std::vector<Fired>> rows[] = {
        {"the second sample in a row", {{60s, 40}, {63s, 80}, {66s, 80}}, {{63s, {6s, 80, 60}}}},
        {"one alone", {{60s, 100}, {63s, 10}, {66s, 100}}, {}},
        {"the threshold itself ends a streak", {{60s, 100}, {63s, 30}, {66s, 100}}, {}},
        {"just above it does not", {{60s, 30.01}, {63s, 30.01}}, {{63s, {6s, 30.01, 30.01}}}},
        {"so does what is no number", {{60s, 100}, {63s, nan}, {66s, 100}}, {}},
        {"the grace lasts thirty seconds", {{24s, 50}, {27s, 50}, {29.9s, 50}}, {}},
        {"a streak that began in it counts whole", {{24s, 50}, {27s, 50}, {30s, 80}}, {{30s, {9s, 80, 60}}}},
        {"the first sample after it is one", {{30s, 100}, {33s, 10}}, {}},
        {"and the second a streak", {{30s, 100}, {33s, 90}}, {{33s, {6s, 100, 95}}}},
        {"samples that come late", {{60s, 50}, {62.9s, 50}, {64s, 50}}, {{64s, {7s, 50, 50}}}},
        {"a clock set back holds the streak", {{60s, 40}, {10s, 40}, {63s, 40}}, {{63s, {6s, 40, 40}}}}};
    for (const auto& [name, samples, expected] : rows) {
        SCOPED_TRACE(name);
        CPUSustainedLoadDetector detector({}, launch);
        EXPECT_EQ(play(detector, samples), expected);
    }
}

TEST(CPUSustainedLoadDetectorTest, LoadThatOutlastsTheCooldownTriggersWithTheFirstSampleAfterIt) {
    CPUSustainedLoadDetector detector({}, launch);
    EXPECT_EQ(play(detector, {{60s, 90}, {63s, 90}}), (std::vector<Fired>{{63s, {6s, 90, 90}}}));
    EXPECT_THAT(play(detector, steady(66s, 661.5s, 40)), IsEmpty());
    EXPECT_THAT(play(detector, {{662.9s, 40}}), IsEmpty());
    // The streak began after the trigger, empty; it lasts from the sample at 66 s and its interval.
    EXPECT_EQ(play(detector, {{663s, 40}}), (std::vector<Fired>{{663s, {600s, 40, 40}}}));
}

TEST(CPUSustainedLoadDetectorTest, PeakAndAverageAreThoseOfTheNewestSixtySamples) {
    CPUSustainedLoadDetector detector({.sustainedSeconds = 300s}, launch);
    auto samples = steady(60s, 120s, 100);                 // 21 samples
    const auto calmer = steady(123s, 123s + 3s * 59, 40);  // 60 more
    samples.insert(samples.end(), calmer.begin(), calmer.end());
    EXPECT_THAT(play(detector, samples), IsEmpty());
    EXPECT_EQ(play(detector, {{357s, 46}}), (std::vector<Fired>{{357s, {300s, 46, 40.1}}}));
}

TEST(CPUSustainedLoadDetectorTest, TheDaysLimitLastsUntilTheOldestIsADayOld) {
    CPUSustainedLoadDetector detector({.cooldown = 0s, .launchGrace = 0s, .maxTriggersPerDay = 2}, launch);
    ASSERT_THAT(play(detector, {{0s, 50}, {3s, 50}, {100s, 50}, {103s, 50}}), SizeIs(2));
    EXPECT_THAT(play(detector, {{200s, 50}, {203s, 50}, {86'402.9s, 50}}), IsEmpty());
    EXPECT_EQ(play(detector, {{86'403s, 50}}), (std::vector<Fired>{{86'403s, {86'206s, 50, 50}}}));
    EXPECT_THAT(play(detector, {{86'406s, 50}, {86'409s, 50}, {86'502s, 50}}), IsEmpty());
    EXPECT_THAT(play(detector, {{86'503s, 50}}), SizeIs(1));
}

TEST(CPUSustainedLoadDetectorTest, WhateverTheLoadNoTwoTriggersAreWithinTheCooldownAndNoThirtyOneWithinADay) {
    std::size_t all = 0;
    for (unsigned seed = 1; seed <= 40; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        // A third of the walks have a cooldown that would allow more than the day's limit does.
        const Policy policy{.cooldown = seed % 3 == 0 ? 60s : 600s};
        CPUSustainedLoadDetector detector(policy, launch);
        std::vector<Sample> walk;
        std::normal_distribution step(0.0, 12.0);
        std::uniform_real_distribution lateness(0.0, 1.0);
        double percent = 30;
        for (Seconds at = 3s; at < 3 * CPUSustainedLoadDetector::day; at += 3s + Seconds(lateness(random))) {
            percent = std::clamp(percent + step(random), 0.0, 200.0);
            walk.emplace_back(at, percent);
        }
        const auto fired = play(detector, walk);
        all += fired.size();
        for (std::size_t i = 1; i < fired.size(); ++i)
            EXPECT_GE(fired[i].first - fired[i - 1].first, policy.cooldown);
        for (std::size_t i = 30; i < fired.size(); ++i)
            EXPECT_GE(fired[i].first - fired[i - 30].first, CPUSustainedLoadDetector::day);
    }
    EXPECT_GT(all, 40U * 60) << "the walks have to reach the limits";
}

}  // namespace
}  // namespace quorvane
