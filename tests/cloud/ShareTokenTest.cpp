#include "cloud/ShareToken.h"

#include "support/Matching.h"

#include <set>

namespace quorvane {
namespace {

TEST(ShareTokenTest, IsTheFirstHalfOfAnIdentifierWithoutDashesInLowerCase) {
    EXPECT_EQ(ShareToken::from(*Uuid::parse("C0FEA20C-DB32-40C6-A0CC-CF6118205BB6")), "c0fea20cdb3240c6");
}

TEST(ShareTokenTest, NeverComesTwice) {
    std::set<std::string> tokens;
    for (int i = 0; i < 10'000; ++i)
        tokens.insert(ShareToken::random());
    EXPECT_THAT(tokens, SizeIs(10'000));
    EXPECT_THAT(tokens, Each(MatchesRegex("[0-9a-f]{16}")));
}

}  // namespace
}  // namespace quorvane
