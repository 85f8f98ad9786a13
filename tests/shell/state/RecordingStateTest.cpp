#include "shell/state/RecordingState.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

using platform::Obstacle;
using platform::Sight;

TEST(RecordingStateTest, NobodyIsToldOfARecordingWhileNothingCanBeSeen) {
    const Localization texts[] = {Localization("en"), Localization("zh")};
    for (const Obstacle obstacle : {Obstacle::none, Obstacle::wayland, Obstacle::noDisplay, Obstacle::displayRefused,
                                    Obstacle::displayGone, Obstacle::noWindowManager, Obstacle::other}) {
        for (const Sight sight : {Sight::nothing, Sight::applications, Sight::titles, Sight::documents, Sight::pages}) {
            const CaptureHealth health{.sight = sight, .obstacle = obstacle, .reason = "why", .remedy = "Do this."};
            const auto expected = sight == Sight::nothing ? RecordingState::blind : RecordingState::recording;
            EXPECT_EQ(recordingState(true, health), expected);
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
