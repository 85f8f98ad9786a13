#include "praise/ColorScheme.h"

#include <gmock/gmock.h>
#include <vector>

namespace quorvane {
namespace {

std::vector<std::string> hexTexts(ColorScheme scheme) {
    std::vector<std::string> texts;
    for (const Color color : colors(scheme))
        texts.push_back(hexText(color));
    return texts;
}

TEST(ColorSchemeTest, EachSchemeHasTheTenColoursOfItsTable) {
    using testing::ElementsAre;
    EXPECT_THAT(hexTexts(ColorScheme::pastel), ElementsAre("#91A7FF", "#FFA8A8", "#63E6BE", "#FFC078", "#B197FC",
                                                           "#66D9E8", "#FAA2C1", "#C0EB75", "#8CE99A", "#EEBEFA"));
    EXPECT_THAT(hexTexts(ColorScheme::vibrant), ElementsAre("#7B2127", "#AA3234", "#E8493F", "#E66038", "#F76707",
                                                            "#F98C19", "#FBAD3C", "#D6336C", "#F26A8A", "#FFB498"));
    EXPECT_THAT(hexTexts(ColorScheme::ocean), ElementsAre("#0A345D", "#0E5282", "#0E74AA", "#1D96CF", "#4DB4DD",
                                                          "#1098AD", "#3BC9DB", "#0CA696", "#66D9E8", "#99E9F2"));
    EXPECT_THAT(hexTexts(ColorScheme::forest), ElementsAre("#144C2D", "#166438", "#15803D", "#16A34A", "#2F9E44",
                                                           "#0CA678", "#4ACD66", "#66A80F", "#84CC16", "#8CE99A"));
    EXPECT_THAT(hexTexts(ColorScheme::purple), ElementsAre("#4C1D95", "#5B21B6", "#6D28D9", "#8B5CF6", "#A78BFA",
                                                           "#AE3EC9", "#C94FDD", "#E28FF5", "#B5179E", "#EEBEFA"));
    EXPECT_THAT(hexTexts(ColorScheme::monochrome), ElementsAre("#16191C", "#343A40", "#495057", "#656D73", "#80888E",
                                                               "#9CA4AA", "#B5BCC2", "#585E6A", "#737A87", "#8F96A2"));
    EXPECT_THAT(hexTexts(ColorScheme::random), ElementsAre("#C73C3C", "#3CC764", "#8D3CC7", "#C7B63C", "#3CB0C7",
                                                           "#C73C87", "#5EC73C", "#423CC7", "#C76A3C", "#3CC793"));
}

TEST(ColorSchemeTest, VibrantAndSunsetShareTheirColours) {
    EXPECT_EQ(colors(ColorScheme::vibrant), colors(ColorScheme::sunset));
}

TEST(ColorSchemeTest, ANameHasTheSameColourInAnyCase) {
    EXPECT_EQ(stableAppColor("Firefox"), stableAppColor("fireFOX"));
    EXPECT_NE(stableAppColor("Firefox"), stableAppColor("Figma"));
    // FNV-1a of "a" is 0xAF63DC4C8601EC8C: a hue of 311.52 degrees, saturation 0.68, brightness 0.70.
    EXPECT_EQ(hexText(stableAppColor("A")), "#B3399B");
}

}  // namespace
}  // namespace quorvane
