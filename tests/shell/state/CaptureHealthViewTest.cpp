#include "shell/state/CaptureHealthView.h"

#include "shell/state/TrackedScene.h"
#include "support/Matching.h"

#include <stdexcept>

namespace quorvane {
namespace {

using platform::Channel;
using platform::Mend;
using platform::Obstacle;
using platform::Sight;
using State = CaptureHealthView::State;

class CaptureHealthViewTest : public testing::Test, protected TrackedScene {
protected:
    Localization localization{"en"};
    bool fails = false;
    CaptureHealthView health{desktop, runLoop, session.tracker(), permissions, localization, [this]() -> std::string {
                                 if (fails) throw std::runtime_error("the folder is full");
                                 return "installed";
                             }};
};

TEST_F(CaptureHealthViewTest, FollowsEachChannelAndSaysTheWorstAndWhatMendsIt) {
    session.start();
    health.refresh();
    EXPECT_EQ(health.state(), State::works);
    EXPECT_EQ(health.mend(), Mend::nothing);
    ASSERT_THAT(health.rows(), SizeIs(4));
    EXPECT_EQ(health.rows()[0].title, "Application in front");
    EXPECT_EQ(health.rows()[0].answer, "simulated, since 09:00");
    runLoop.playUntil("09:30:00");
    const auto seePart = [this](Obstacle obstacle, Mend mend) {
        desktop.setForegroundChannel(
            {"front window", "a part", true, "some are hidden", "", Sight::applications, obstacle, mend});
    };
    seePart(Obstacle::noExtension, Mend::desktopAid);
    int changes = 0;
    const auto subscription = health.changed.subscribe([&] { ++changes; });
    runLoop.playFor(60s);
    EXPECT_GE(changes, 1) << "nobody had to ask";
    EXPECT_EQ(health.state(), State::inPart);
    EXPECT_EQ(health.title(), "Some apps not seen");
    EXPECT_EQ(health.mend(), Mend::desktopAid);
    EXPECT_THAT(health.rows()[0].answer, testing::StartsWith("a part: some are hidden, since 09:30"));
    EXPECT_EQ(health.rows()[1].answer, "simulated, since 09:00");
    EXPECT_EQ(health.installAid(), (CaptureHealthView::Outcome{"Done", "installed"}));
    seePart(Obstacle::afterLogin, Mend::nothing);
    EXPECT_THAT(health.installAid().says, testing::EndsWith("with your next login. Log out and in again."));
    EXPECT_EQ(health.mend(), Mend::nothing);
    fails = true;
    EXPECT_EQ(health.installAid(), (CaptureHealthView::Outcome{"That did not work", "the folder is full"}));
    desktop.setForegroundChannel({.question = "front window", .reason = "gone", .gives = Sight::applications});
    runLoop.playFor(60s);
    EXPECT_EQ(health.state(), State::missing);
    EXPECT_EQ(health.title(), "Can't record");
}

}  // namespace
}  // namespace quorvane
