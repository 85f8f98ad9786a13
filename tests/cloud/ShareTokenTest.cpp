#include "cloud/ShareToken.h"

#include "support/Matching.h"

namespace quorvane {
namespace {

TEST(ShareTokenTest, IsTheFirstHalfOfAnIdentifierWithoutDashesInLowerCase) {
    EXPECT_EQ(ShareToken::from(*Uuid::parse("C0FEA20C-DB32-40C6-A0CC-CF6118205BB6")), "c0fea20cdb3240c6");
}

}  // namespace
}  // namespace quorvane
