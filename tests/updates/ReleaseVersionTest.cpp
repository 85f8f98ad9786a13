#include "updates/ReleaseVersion.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

TEST(ReleaseVersionTest, NumbersDecideAndThenTheBuild) {
    struct Row {
        ReleaseVersion a;
        ReleaseVersion b;
        std::optional<int> expected;  ///< the sign of a - b; none: not comparable
    };
    const Row rows[] = {
        {{"1.10"}, {"1.9"}, 1},
        {{"2"}, {"1.99.99"}, 1},
        {{"1.2"}, {"1.2.0"}, 0},
        {{"1.2.0.1"}, {"1.2"}, 1},
        {{"01.2"}, {"1.2"}, 0},
        {{"1.2", "345"}, {"1.2", "99"}, 1},
        {{"1.2", "1"}, {"1.3", "0"}, -1},
        {{"18446744073709551615"}, {"18446744073709551614"}, 1},
        {{"18446744073709551616"}, {"1"}, std::nullopt},
        {{"1.2-beta"}, {"1.2"}, std::nullopt},
        {{"-1"}, {"1"}, std::nullopt},
        {{"1..2"}, {"1"}, std::nullopt},
        {{""}, {"1"}, std::nullopt},
        {{"1", "x"}, {"2", "1"}, std::nullopt},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(describe(row.a) + " and " + describe(row.b));
        const auto order = compareReleases(row.a, row.b);
        const auto sign = order ? std::optional(*order > 0 ? 1 : *order < 0 ? -1 : 0) : std::nullopt;
        EXPECT_EQ(sign, row.expected);
    }
}

}  // namespace
}  // namespace quorvane
