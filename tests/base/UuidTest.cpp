#include "base/Uuid.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unordered_set>
#include <vector>

namespace quorvane {
namespace {

TEST(UuidTest, ReadsEitherCaseAndWritesCapitals) {
    const auto uuid = Uuid::parse("0a1B2c3d-4e5F-6789-aBcD-eF0123456789");
    ASSERT_TRUE(uuid);
    EXPECT_EQ(uuid->string(), "0A1B2C3D-4E5F-6789-ABCD-EF0123456789");
    EXPECT_EQ(Uuid().string(), "00000000-0000-0000-0000-000000000000");
}

TEST(UuidTest, RefusesEveryOtherForm) {
    for (const char* text : {"", "0A1B2C3D4E5F6789ABCDEF0123456789", "{0A1B2C3D-4E5F-6789-ABCD-EF0123456789}",
                             "0A1B2C3D-4E5F-6789-ABCD-EF012345678", "0A1B2C3D-4E5F-6789-ABCD-EF01234567890",
                             "0A1B2C3D-4E5F-6789-ABCD-EF012345678G", "0A1B2C3D-4E5F-6789-ABCDEEF0123456789",
                             "0A1B2C3D4-E5F-6789-ABCD-EF0123456789", "0A1B2C3D-4E5F-6789-ABCD-EF01234567 9",
                             "-A1B2C3D-4E5F-6789-ABCD-EF0123456789"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(Uuid::parse(text), std::nullopt);
    }
}

TEST(UuidTest, FreshOnesAreDistinctVersionFourAndReadBack) {
    std::unordered_set<Uuid> seen;
    for (int i = 0; i < 10'000; ++i) {
        const Uuid uuid = Uuid::random();
        const std::string text = uuid.string();
        ASSERT_EQ(text[14], '4');
        ASSERT_NE(std::string("89AB").find(text[19]), std::string::npos);
        ASSERT_EQ(Uuid::parse(text), uuid);
        seen.insert(uuid);
    }
    EXPECT_EQ(seen.size(), 10'000U);
}

TEST(UuidTest, OrdersAsItsText) {
    std::vector<Uuid> uuids;
    for (int i = 0; i < 1000; ++i)
        uuids.push_back(Uuid::random());
    std::ranges::sort(uuids);
    EXPECT_TRUE(std::ranges::is_sorted(uuids, {}, &Uuid::string));
}

}  // namespace
}  // namespace quorvane
