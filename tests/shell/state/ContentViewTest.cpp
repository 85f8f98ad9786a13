#include "shell/state/ContentView.h"

#include "shell/state/TrackedScene.h"
#include "support/Matching.h"

namespace quorvane {
namespace {

constexpr const char* startLine = "ContentView: 启动活动追踪器";

TEST(ContentViewTest, TheFirstContentStartsTrackingIntoTheStoreAndALaterOneLeavesItAlone) {
    TrackedScene scene;
    auto& tracker = scene.session.tracker();
    ContentView first(scene.store.context(), tracker, scene.console);
    first.runFirstTask();
    first.runSecondTask();
    EXPECT_TRUE(tracker.isTracking());
    EXPECT_THAT(scene.console.lines(), Contains(startLine).Times(1));
    EXPECT_THAT(scene.console.lines(), Contains("ActivityTracker: Starting tracking with modelContext: true"));
    scene.console.clear();
    ContentView second(scene.store.context(), tracker, scene.console);
    second.runFirstTask();
    second.runSecondTask();
    EXPECT_THAT(scene.console.lines(), Not(Contains(startLine)));
    EXPECT_THAT(scene.console.lines(), Not(Contains("ActivityTracker: Already tracking")));
    tracker.toggle();
    ContentView third(scene.store.context(), tracker, scene.console);
    third.runFirstTask();
    third.runSecondTask();
    EXPECT_FALSE(tracker.isTracking()) << "the user has paused it";
}

}  // namespace
}  // namespace quorvane
