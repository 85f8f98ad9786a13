#include "base/Uuid.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <set>

namespace quorvane {
namespace {

TEST(UuidTest, ReadsEitherCaseWritesCapitalsAndRefusesEveryOtherForm) {
    const auto uuid = Uuid::parse("0a1B2c3d-4e5F-6789-aBcD-eF0123456789");
    ASSERT_TRUE(uuid);
    EXPECT_EQ(uuid->string(), "0A1B2C3D-4E5F-6789-ABCD-EF0123456789");
    for (const char* text : {"", "0A1B2C3D4E5F6789ABCDEF0123456789", "{0A1B2C3D-4E5F-6789-ABCD-EF0123456789}",
                             "0A1B2C3D-4E5F-6789-ABCD-EF012345678", "0A1B2C3D-4E5F-6789-ABCD-EF01234567890",
                             "0A1B2C3D-4E5F-6789-ABCD-EF012345678G", "0A1B2C3D-4E5F-6789-ABCDEEF0123456789",
                             "0A1B2C3D4-E5F-6789-ABCD-EF0123456789", "-A1B2C3D-4E5F-6789-ABCD-EF0123456789"})
        EXPECT_EQ(Uuid::parse(text), std::nullopt) << text;
}

TEST(UuidTest, FreshOnesAreDistinctVersionFourReadBackAndOrderAsTheirText) {
    std::set<Uuid> uuids;
    std::set<std::string> texts;
    for (int i = 0; i < 1000; ++i) {
        const Uuid uuid = Uuid::random();
        const std::string text = uuid.string();
        ASSERT_EQ(text[14], '4');
        ASSERT_NE(std::string("89AB").find(text[19]), std::string::npos);
        ASSERT_EQ(Uuid::parse(text), uuid);
        uuids.insert(uuid);
        texts.insert(text);
    }
    EXPECT_EQ(uuids.size(), 1000U);
    EXPECT_TRUE(std::ranges::equal(uuids, texts, {}, &Uuid::string));
}

}  // namespace
}  // namespace quorvane
