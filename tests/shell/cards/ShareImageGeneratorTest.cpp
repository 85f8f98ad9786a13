#include "shell/cards/ShareImageGenerator.h"

#include "praise/CardColors.h"
#include "praise/CardContent.h"
#include "shell/cards/SampleCards.h"
#include "shell/support/Offscreen.h"
#include "support/Matching.h"
#include "support/TemporaryFolder.h"

#include <QImage>
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>

namespace quorvane {
namespace {

class ShareImageGeneratorTest : public testing::Test {
protected:
    ShareImageGeneratorTest() { needApplication(); }

    template <class Check>
    static void forEachCard(const Check& check) {
        for (const SampleCard& sample : sampleCards())
            for (const auto& [style, name] : RawValues<CardStyle>::table) {
                SCOPED_TRACE(sample.name + " " + std::string(name));
                check(sample, style);
            }
    }

    Localization english_{"en"};
    ShareImageGenerator generator_{english_, sampleAddress};
    const QRectF card_{0, 0, ShareImageGenerator::width, ShareImageGenerator::height};
};

TEST_F(ShareImageGeneratorTest, EveryTextStandsInItsBoxOnTheCardLargeEnoughAndSentencesAreWhole) {
    const auto check = [this](const SampleCard& sample, CardStyle style, const Localization& localization) {
        const auto config = configOf(sample, style);
        const auto layout = ShareImageGenerator(localization, sampleAddress).layOut(config);
        const CardContent content = cardContent(config, localization);
        EXPECT_GE(layout.texts.size(), 4U);
        for (const PlacedText& text : layout.texts) {
            const std::string words = text.text.toStdString();
            SCOPED_TRACE(words);
            const bool isSentence = words == config.praiseMessage;
            EXPECT_GE(text.size, !isSentence ? 12 : sample.name == "german" ? 14 : 20);
            EXPECT_FALSE(text.isCut && (isSentence || words == config.praiseReason || words == content.title ||
                                        words == content.note || words == content.unit));
            EXPECT_TRUE(card_.adjusted(20, 20, -20, -20).contains(text.box));
            for (const QRectF& line : text.lines)
                EXPECT_TRUE(text.box.adjusted(-1.5, -1.5, 1.5, 1.5).contains(line))
                    << line.left() << " " << line.top() << " " << line.right() << " " << line.bottom() << " in "
                    << text.box.left() << " " << text.box.top() << " " << text.box.right() << " " << text.box.bottom();
        }
    };
    forEachCard([&](const SampleCard& sample, CardStyle style) {
        check(sample, style, english_);
        check(sample, style, Localization("zh"));
    });
}

/// The letters' own part of a line: ascent and descent leave room above and below them.
QRectF core(const QRectF& line) {
    return line.adjusted(0, 0.2 * line.height(), 0, -0.2 * line.height());
}

TEST_F(ShareImageGeneratorTest, NoTwoTextsTouch) {
    forEachCard([this](const SampleCard& sample, CardStyle style) {
        const auto texts = generator_.layOut(configOf(sample, style)).texts;
        for (std::size_t i = 0; i < texts.size(); ++i)
            for (std::size_t j = i + 1; j < texts.size(); ++j)
                for (const QRectF& a : texts[i].lines)
                    for (const QRectF& b : texts[j].lines) {
                        EXPECT_FALSE(core(a).intersects(core(b)))
                            << texts[i].text.toStdString() << " | " << texts[j].text.toStdString();
                    }
    });
}

/// The lowest contrast of the ink with what lies below it, where the text changed the card.
double lowestContrast(const PlacedText& text, const ShareImage& ground, const ShareImage& whole) {
    double lowest = 21;
    for (const QRectF& line : text.lines) {
        const QRect area = line.toAlignedRect().intersected(QRect(0, 0, ground.width, ground.height));
        for (int y = area.top(); y <= area.bottom(); ++y)
            for (int x = area.left(); x <= area.right(); ++x) {
                const auto at = static_cast<std::size_t>(y * ground.width + x);
                const Color below = colorFromRgb(ground.pixels[at]);
                const Color shown = colorFromRgb(whole.pixels[at]);
                if (contrast(below, shown) > 1.5) lowest = std::min(lowest, contrast(text.ink, below));
            }
    }
    return lowest;
}

TEST_F(ShareImageGeneratorTest, TextsCanBeReadOnWhatLiesBelowThemInEveryStyleAndScheme) {
    const SampleCard sample = sampleCard("rich");
    for (const auto& [style, styleName] : RawValues<CardStyle>::table)
        for (const auto& [scheme, schemeName] : RawValues<ColorScheme>::table) {
            const auto config = configOf(sample, style, scheme);
            const auto layout = generator_.layOut(config);
            const auto whole = generator_.generateShareImage(config);
            ASSERT_TRUE(whole);
            for (const PlacedText& text : layout.texts) {
                const bool isLarge = text.size >= 24 || (text.size >= 18.66 && text.weight >= 700);
                EXPECT_GE(lowestContrast(text, layout.ground, *whole), isLarge ? 3 : 4.5)
                    << styleName << " " << schemeName << ": " << text.text.toStdString();
            }
        }
}

TEST_F(ShareImageGeneratorTest, TheSameCardHasTheSamePixelsAndOtherStylesHaveOthers) {
    std::vector<ShareImage> seen;
    for (const auto& [style, name] : RawValues<CardStyle>::table) {
        const auto first = generator_.generateShareImage(configOf(sampleCard("rich"), style));
        ASSERT_TRUE(first);
        EXPECT_EQ(first->width, 600);
        EXPECT_EQ(first->height, 900);
        EXPECT_TRUE(first == generator_.generateShareImage(configOf(sampleCard("rich"), style))) << name;
        EXPECT_THAT(seen, Not(Contains(*first))) << name;
        seen.push_back(*first);
    }
}

TEST_F(ShareImageGeneratorTest, EmptyConfigurationsAndHostileTextsGiveACard) {
    const std::string texts[] = {
        "", "\n\t", std::string(4000, 'W'), "\xFF\xFE", "\u202Eright \u2066 left", "😀👩‍👩‍👧"};
    for (const std::string& text : texts)
        for (const auto& [style, name] : RawValues<CardStyle>::table) {
            auto config = configOf(sampleCard("light"), style);
            config.praiseMessage = text;
            config.praiseReason = text;
            config.appStats.front().appName = text;
            config.totalHours = 99999;
            for (const PlacedText& placed : generator_.layOut(config).texts)
                for (const QRectF& line : placed.lines)
                    EXPECT_TRUE(card_.contains(line)) << name << ": " << placed.text.left(20).toStdString();
        }
    EXPECT_TRUE(generator_.generateShareImage({}));
}

/// What a reader of codes finds in the picture.
std::string decoded(const ShareImage& image) {
    const TemporaryFolder folder;
    const auto file = folder / "card.png";
    std::ofstream(file, std::ios::binary) << pngOf(image);
    const std::string command = "zbarimg --quiet --raw '" + file.string() + "' 2>/dev/null";
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(::popen(command.c_str(), "r"), &::pclose);
    std::array<char, 200> text{};
    return std::fgets(text.data(), text.size(), pipe.get()) == nullptr ? "" : text.data();
}

TEST_F(ShareImageGeneratorTest, AReaderOfCodesFindsTheAddressOnEveryCardThatHasOne) {
    const ShareImageGenerator without(english_, "");
    for (const auto& [style, name] : RawValues<CardStyle>::table) {
        const auto config = configOf(sampleCard("light"), style);
        EXPECT_EQ(decoded(generator_.generateShareImage(config).value()), std::string(sampleAddress) + "\n") << name;
        EXPECT_EQ(decoded(without.generateShareImage(config).value()), "") << name;
    }
}

}  // namespace
}  // namespace quorvane
