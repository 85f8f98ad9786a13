#include "capture/CaptureHealth.h"

#include <gtest/gtest.h>
#include <vector>

namespace quorvane {
namespace {

using platform::Channel;
using platform::Obstacle;
using platform::Sight;

Channel channel(Sight gives, bool isAvailable) {
    if (isAvailable) return {.isAvailable = true, .gives = gives};
    return {.reason = "why", .remedy = "Do this.", .gives = gives, .obstacle = Obstacle::other};
}

// Every combination of four channels, one for each kind of sight.
TEST(CaptureHealthTest, SightReachesUpToTheFirstKindThatNobodyGives) {
    const Sight kinds[] = {Sight::applications, Sight::titles, Sight::documents, Sight::pages};
    for (unsigned available = 0; available < 16; ++available) {
        SCOPED_TRACE(available);
        std::vector<Channel> channels{channel(Sight::nothing, false)};
        Sight expected = Sight::nothing;
        bool isUnbroken = true;
        for (unsigned i = 0; i < 4; ++i) {
            const bool isAvailable = (available >> i & 1U) != 0;
            channels.insert(channels.begin(), channel(kinds[i], isAvailable));
            isUnbroken = isUnbroken && isAvailable;
            if (isUnbroken) expected = kinds[i];
        }
        const CaptureHealth health = captureHealth(channels);
        EXPECT_EQ(health.sight, expected);
        EXPECT_EQ(health.canSee(), (available & 1U) != 0);
        EXPECT_EQ(health.sentence(), isUnbroken ? "" : "why. Do this.");
    }
}

TEST(CaptureHealthTest, OneOfSeveralChannelsIsEnoughAndWhatWasNotAskedAboutIsNoTrouble) {
    EXPECT_FALSE(captureHealth({}).canSee());
    const std::vector both{channel(Sight::applications, false), channel(Sight::applications, true)};
    EXPECT_EQ(captureHealth(both), CaptureHealth{.sight = Sight::applications});
}

TEST(CaptureHealthTest, WhoSeesOnlySomeApplicationsSaysSoBeforeAllElse) {
    const Channel part{.isAvailable = true, .reason = "only some", .gives = Sight::applications};
    const std::vector channels{part, channel(Sight::titles, true), channel(Sight::documents, false)};
    const CaptureHealth health = captureHealth(channels);
    EXPECT_EQ(health.sight, Sight::titles);
    EXPECT_TRUE(health.isPartial);
    EXPECT_EQ(health.reason, "only some");
    const std::vector both{part, channel(Sight::applications, true)};
    EXPECT_EQ(captureHealth(both).isPartial, true) << "the first that answers is the one that is asked";
}

TEST(CaptureHealthTest, OnlyWhatCannotComeByItselfLasts) {
    for (const Obstacle obstacle : {Obstacle::noDisplay, Obstacle::displayRefused, Obstacle::displayGone})
        EXPECT_TRUE(CaptureHealth{.obstacle = obstacle}.isLasting());
    for (const Obstacle obstacle : {Obstacle::none, Obstacle::wayland, Obstacle::noWindowManager, Obstacle::noExtension,
                                    Obstacle::afterLogin, Obstacle::other})
        EXPECT_FALSE(CaptureHealth{.obstacle = obstacle}.isLasting());
}

}  // namespace
}  // namespace quorvane
