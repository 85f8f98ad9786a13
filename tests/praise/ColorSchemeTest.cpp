#include "praise/ColorScheme.h"

#include <gtest/gtest.h>
#include <set>
#include <string>

namespace quorvane {
namespace {

TEST(ColorSchemeTest, EachSchemeHasTenColoursOfItsOwnButTwoShareThem) {
    std::set<std::string> schemes;
    for (const auto& [scheme, name] : RawValues<ColorScheme>::table) {
        EXPECT_EQ(colors(scheme).size(), 10U) << name;
        std::string texts;
        for (const Color color : colors(scheme))
            texts += hexText(color);
        schemes.insert(texts);
    }
    EXPECT_EQ(schemes.size() + 1, std::size(RawValues<ColorScheme>::table));
    EXPECT_EQ(colors(ColorScheme::vibrant), colors(ColorScheme::sunset));
    EXPECT_EQ(hexText(colors(ColorScheme::ocean)[0]), "#0A345D");
    EXPECT_EQ(hexText(colors(ColorScheme::random)[9]), "#3CC793");
}

TEST(ColorSchemeTest, ANameHasTheSameColourInAnyCase) {
    EXPECT_EQ(stableAppColor("Firefox"), stableAppColor("fireFOX"));
    EXPECT_NE(stableAppColor("Firefox"), stableAppColor("Figma"));
    // FNV-1a of "a" is 0xAF63DC4C8601EC8C: a hue of 311.52 degrees, saturation 0.68, brightness 0.70.
    EXPECT_EQ(hexText(stableAppColor("A")), "#B3399B");
}

}  // namespace
}  // namespace quorvane
