#include "shell/state/LaunchTask.h"

#include "store/AppSettings.h"
#include "store/Database.h"
#include "support/StoreTest.h"

#include <fmt/format.h>

namespace quorvane {
namespace {

class LaunchTaskTest : public StoreTest {
protected:
    LaunchTaskTest() {
        hooks_.applyDockVisibility = [this](bool hide) { note(fmt::format("hide {}", hide)); };
        hooks_.startMemoryMonitor = [this](Seconds interval) { note(fmt::format("monitor {}", interval.count())); };
    }

    void note(const std::string& what) {
        events_.push_back(fmt::format("{}: {}", (runLoop.now() - at("12:00:00")).count(), what));
    }

    void run() { LaunchTask(context(), runLoop, console, hooks_).run(); }

    LaunchHooks hooks_;
    std::vector<std::string> events_;
};

TEST_F(LaunchTaskTest, AppliesTheDockSettingAtOnceAndStartsTheRestLaterAndOnce) {
    const auto settings = std::make_shared<AppSettings>();
    settings->hideDockIcon = true;
    context().insert(settings);
    LaunchTask task(context(), runLoop, console, hooks_);
    task.run();
    task.run();
    runLoop.playFor(60s);
    EXPECT_THAT(events_, ElementsAre("0: hide true", "1: monitor 30"));
    EXPECT_THAT(console.lines(), IsEmpty());
}

TEST_F(LaunchTaskTest, ShowsTheDockIconWithoutASettingAndWhereItCannotBeReadAndStartsNothingOnceItIsGone) {
    run();
    EXPECT_THAT(console.lines(), IsEmpty());
    Database other({.file = store.file()});
    other.execute("ALTER TABLE " + AppSettings::description().table + " RENAME TO elsewhere");
    run();
    runLoop.playFor(60s);
    EXPECT_THAT(events_, ElementsAre("0: hide false", "0: hide false"));
    EXPECT_THAT(console.lines(),
                ElementsAre(StartsWith("⚠️ 读取 Dock 显示偏好失败，按默认显示 Dock：")));
}

}  // namespace
}  // namespace quorvane
