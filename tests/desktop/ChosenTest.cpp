#include "desktop/support/BusMock.h"
#include "desktop/support/PrivateBus.h"
#include "desktop/support/Waiting.h"
#include "desktop/support/WestonSession.h"
#include "platform/linux/loop/QtRunLoop.h"
#include "platform/linux/session/ChosenIdle.h"
#include "platform/linux/session/ChosenToplevels.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "support/Builders.h"
#include "support/Matching.h"

namespace quorvane::platform {
namespace {

/// A session in which only who comes to the bus tells anything.
class ChosenTest : public testing::Test {
protected:
    ChosenTest() { session.environment().set("DBUS_SESSION_BUS_ADDRESS", bus.address()); }

    static std::unique_ptr<BusMock> extension(const std::string& windows) {
        auto mock = std::make_unique<BusMock>("com.quorvane.Focus");
        const std::string front = windows.empty() ? "" : "'app_id': 'editor', 'title': 'text'";
        mock->setAnswer("/com/quorvane/Focus", "com.quorvane.Focus1", "Get", "", "a{sv}aa{sv}",
                        "ret = (dbus.Dictionary({" + front + "}, signature='sv'), dbus.Array([" + windows +
                            "], signature='a{sv}'))");
        return mock;
    }

    QtRunLoop runLoop;
    WestonSession session;
    PrivateBus bus{session.folder() / "bus"};
    WaylandConnection connection{&runLoop};
    bool isSomebodyThere = true;
};

TEST(BestTellerTest, IsTheOneThatKnowsMost) {
    EXPECT_EQ(bestTeller({true, true, true, true}), ToplevelTeller::plasma);
    EXPECT_EQ(bestTeller({false, true, true, true}), ToplevelTeller::wlroots);
    EXPECT_EQ(bestTeller({false, false, true, true}), ToplevelTeller::gnomeExtension);
    EXPECT_EQ(bestTeller({false, false, false, true}), ToplevelTeller::kwinScript);
    EXPECT_EQ(bestTeller({}), ToplevelTeller::accessibility);
}

TEST_F(ChosenTest, WhoComesToTheBusIsAskedAndWhoLeavesItNoMore) {
    BusNames names(runLoop, ChosenToplevels::busNames());
    ChosenToplevels windows(runLoop, connection, names, [] { return true; });
    EXPECT_FALSE(windows.channel().isAvailable);
    EXPECT_THAT(windows.channel().reason, testing::StartsWith("this compositor tells no application which window"));
    auto shell = extension("{'app_id': 'editor', 'title': ''}");
    ASSERT_TRUE(waitUntil([&] { return windows.active() == ToplevelWindow{.appId = "editor", .title = "text"}; }));
    EXPECT_TRUE(windows.channel().isAvailable);
    shell.reset();
    ASSERT_TRUE(waitUntil([&] { return !windows.active() && !windows.channel().isAvailable; }));
    const BusMock kwin("org.kde.KWin");
    EXPECT_TRUE(waitUntil([&] { return windows.channel().name == "KWin script"; }));
}

TEST_F(ChosenTest, AnExtensionThatWasInstalledSinceTheLoginWaitsForTheNextOne) {
    const BusMock mutter("org.gnome.Mutter.IdleMonitor");
    BusNames names(runLoop, ChosenToplevels::busNames());
    const ChosenToplevels windows(runLoop, connection, names, [] { return true; });
    const auto expect = [&](Obstacle obstacle, Mend mend) {
        EXPECT_EQ(windows.channel().obstacle, obstacle);
        EXPECT_EQ(windows.channel().mend, mend);
    };
    expect(Obstacle::noExtension, Mend::desktopAid);
    const auto folder = session.folder() / "data/gnome-shell/extensions/focus@quorvane.com";
    std::filesystem::create_directories(folder);
    writeFile(folder / "metadata.json", "{}");
    expect(Obstacle::afterLogin, Mend::nothing);
    std::filesystem::last_write_time(folder / "metadata.json", std::filesystem::file_time_type::min());
    expect(Obstacle::noExtension, Mend::desktopAid);
}

TEST_F(ChosenTest, WhoTellsOfNoWindowWhileSomebodyIsAtWorkIsSaidToBeSilent) {
    SimulatedRunLoop simulated(at("09:00:00"));
    const auto shell = extension("");
    BusNames names(runLoop, ChosenToplevels::busNames());
    const ChosenToplevels windows(simulated, connection, names, [this] { return isSomebodyThere; });
    ASSERT_TRUE(waitUntil([&] { return windows.channel().isAvailable; }));
    simulated.playFor(119s);
    EXPECT_TRUE(windows.channel().isAvailable);
    simulated.playFor(2s);
    EXPECT_FALSE(windows.channel().isAvailable);
    isSomebodyThere = false;
    EXPECT_TRUE(windows.channel().isAvailable) << "nobody is there to be heard of";
}

TEST_F(ChosenTest, WhoIsSlowToTellTheIdleTimeIsWaitedForAllTheSame) {
    BusMock mutter("org.gnome.Mutter.IdleMonitor");
    mutter.hang();
    BusNames names(runLoop, ChosenToplevels::busNames());
    ChosenIdle idle(runLoop, connection, names);
    ChosenReturns returns(idle);
    EXPECT_FALSE(idle.channel().isAvailable);
    EXPECT_NE(returns.watch([] {}), nullptr);
}

}  // namespace
}  // namespace quorvane::platform
