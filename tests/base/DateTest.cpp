#include "base/Date.h"

#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace quorvane {
namespace {

TEST(DateTest, EveryMicrosecondOfOurTimeSurvivesBeingADate) {
    std::mt19937_64 random(20260302);
    std::uniform_int_distribution<std::int64_t> microseconds(-2'208'988'800'000'000, 7'258'118'400'000'000);
    for (int i = 0; i < 200'000; ++i) {
        const auto expected = microseconds(random);  // 1900 to 2200
        ASSERT_EQ(microsecondsSince1970(dateFromMicroseconds(expected)), expected);
    }
}

TEST(DateTest, WhatNoIntegerHoldsIsClamped) {
    constexpr auto largest = std::numeric_limits<std::int64_t>::max();
    constexpr auto smallest = std::numeric_limits<std::int64_t>::min();
    constexpr double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(microsecondsSince1970(dateFromSecondsSince1970(1e13)), largest);
    EXPECT_EQ(microsecondsSince1970(dateFromSecondsSince1970(-1e13)), smallest);
    EXPECT_EQ(microsecondsSince1970(dateFromSecondsSince1970(infinity)), largest);
    EXPECT_EQ(microsecondsSince1970(dateFromSecondsSince1970(-infinity)), smallest);
    EXPECT_EQ(microsecondsSince1970(dateFromSecondsSince1970(9223372036854.775807)), largest);
    EXPECT_EQ(microsecondsSince1970(dateFromSecondsSince1970(std::numeric_limits<double>::quiet_NaN())), 0);
}

TEST(DateTest, ADescriptionCutsFractionsOffInBothDirections) {
    EXPECT_EQ(describe(dateFromSecondsSince1970(1772636400.999)), "2026-03-04 15:00:00 +0000");
    EXPECT_EQ(describe(dateFromSecondsSince1970(-0.25)), "1969-12-31 23:59:59 +0000");
    EXPECT_EQ(describe(distantPast), "0001-01-01 00:00:00 +0000");
}

}  // namespace
}  // namespace quorvane
