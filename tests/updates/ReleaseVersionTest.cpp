#include "updates/ReleaseVersion.h"

#include "support/Matching.h"

namespace quorvane {
namespace {

TEST(ReleaseVersionTest, NumbersDecideAndThenTheBuild) {
    const std::pair<ReleaseVersion, ReleaseVersion> newerAndOlder[] = {
        {{"1.10"}, {"1.9"}},          {{"2"}, {"1.99.99"}},
        {{"1.2.0.1"}, {"1.2"}},       {{"1.2", "345"}, {"1.2", "99"}},
        {{"1.3", "0"}, {"1.2", "1"}}, {{"18446744073709551615"}, {"18446744073709551614"}}};
    for (const auto& [newer, older] : newerAndOlder) {
        EXPECT_TRUE(compareReleases(newer, older).value() > 0) << describe(newer);
        EXPECT_TRUE(compareReleases(older, newer).value() < 0) << describe(newer);
    }
    for (const char* same : {"1.2.0", "01.2"})
        EXPECT_TRUE(compareReleases({same}, {"1.2"}).value() == 0) << same;
    for (const char* none : {"18446744073709551616", "1.2-beta", "-1", "1..2", ""})
        EXPECT_EQ(compareReleases({none}, {"1"}), std::nullopt) << none;
    EXPECT_EQ(compareReleases({"1", "x"}, {"2", "1"}), std::nullopt);
}

}  // namespace
}  // namespace quorvane
