#include "shell/state/RecordingState.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

using platform::Obstacle;
using platform::Sight;

TEST(RecordingStateTest, NobodyIsToldOfARecordingWhileNothingCanBeSeen) {
    const Localization texts[] = {Localization("en"), Localization("zh")};
    for (const Obstacle obstacle :
         {Obstacle::none, Obstacle::wayland, Obstacle::noDisplay, Obstacle::displayRefused, Obstacle::displayGone,
          Obstacle::noWindowManager, Obstacle::noExtension, Obstacle::afterLogin, Obstacle::other}) {
        for (const Sight sight : {Sight::nothing, Sight::applications, Sight::titles, Sight::documents, Sight::pages}) {
            CaptureHealth health{.sight = sight, .obstacle = obstacle, .reason = "why", .remedy = "Do this."};
            const bool isBlind = sight == Sight::nothing;
            EXPECT_EQ(recordingState(true, health), isBlind ? RecordingState::blind : RecordingState::recording);
            EXPECT_EQ(missingSight(health, texts[0]).empty(), isBlind || sight == Sight::pages);
            health.isPartial = true;
            EXPECT_EQ(recordingState(true, health), isBlind ? RecordingState::blind : RecordingState::partial);
            EXPECT_EQ(missingSight(health, texts[0]).empty(), isBlind);
            EXPECT_EQ(recordingState(true, health, true),
                      sight == Sight::nothing ? RecordingState::blind : RecordingState::away);
            EXPECT_EQ(recordingState(false, health, true), RecordingState::paused);
            for (const Localization& language : texts) {
                EXPECT_FALSE(captureTrouble(health, language).reason.empty());
                EXPECT_FALSE(captureTrouble(health, language).remedy.empty());
            }
        }
    }
}

}  // namespace
}  // namespace quorvane
