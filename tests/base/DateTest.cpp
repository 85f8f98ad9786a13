#include "base/Date.h"

#include <gtest/gtest.h>
#include <limits>

namespace quorvane {
namespace {

TEST(DateTest, WhatNoIntegerHoldsIsClamped) {
    using Doubles = std::numeric_limits<double>;
    using Integers = std::numeric_limits<std::int64_t>;
    const auto microseconds = [](double seconds) { return microsecondsSince1970(dateFromSecondsSince1970(seconds)); };
    for (const double large : {1e13, Doubles::infinity(), 9223372036854.775807}) {
        EXPECT_EQ(microseconds(large), Integers::max());
        EXPECT_EQ(microseconds(-large), Integers::min());
    }
    EXPECT_EQ(microseconds(Doubles::quiet_NaN()), 0);
}

TEST(DateTest, ADescriptionCutsFractionsOffInBothDirections) {
    EXPECT_EQ(describe(dateFromSecondsSince1970(1772636400.999)), "2026-03-04 15:00:00 +0000");
    EXPECT_EQ(describe(dateFromSecondsSince1970(-0.25)), "1969-12-31 23:59:59 +0000");
}

}  // namespace
}  // namespace quorvane
