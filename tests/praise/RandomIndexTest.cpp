#include "praise/RandomIndex.h"

#include "support/Matching.h"

#include <limits>
#include <set>
#include <vector>

namespace quorvane {
namespace {

TEST(RandomIndexTest, DrawsAgainWhatWouldFavourTheFirstPlaces) {
    // 2^64 is 1 more than a multiple of 3 and of 5, and 6 more than one of 10; it is a multiple of 4.
    constexpr std::uint64_t last = std::numeric_limits<std::uint64_t>::max();
    const std::tuple<std::size_t, std::vector<std::uint64_t>, std::size_t, std::size_t> rows[] = {
        {1, {7}, 0, 1},    {3, {0, 7}, 1, 2},         {3, {1}, 1, 1},  {5, {0, 0, 9}, 4, 3},
        {4, {0, 1}, 0, 1}, {10, {0, 5, 16, 3}, 6, 3}, {10, {6}, 6, 1}, {10, {last}, last % 10, 1},
    };
    for (const auto& [count, words, expected, most] : rows) {
        SCOPED_TRACE(testing::PrintToString(words) + " for " + std::to_string(count));
        std::size_t used = 0;
        EXPECT_EQ(randomIndex(count, [&, &given = words] { return given[used++]; }), expected);
        EXPECT_EQ(used, most);
    }
}

TEST(RandomIndexTest, TheSystemsSourceReachesEveryPlace) {
    std::set<std::size_t> drawn;
    for (int i = 0; i < 1000; ++i)
        drawn.insert(randomIndex(5, secureRandomWord));
    EXPECT_THAT(drawn, ElementsAre(0, 1, 2, 3, 4));
}

}  // namespace
}  // namespace quorvane
