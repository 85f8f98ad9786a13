#include "desktop/support/DesktopSession.h"
#include "desktop/support/LogindMock.h"
#include "desktop/support/Waiting.h"
#include "platform/linux/loop/QtRunLoop.h"
#include "platform/linux/session/LinuxDesktop.h"
#include "support/Matching.h"

namespace quorvane::platform {
namespace {

constexpr SystemEvent allEvents[] = {SystemEvent::willSleep,       SystemEvent::didWake,
                                     SystemEvent::screensDidSleep, SystemEvent::screensDidWake,
                                     SystemEvent::sessionDidLeave, SystemEvent::sessionDidReturn,
                                     SystemEvent::screenLocked,    SystemEvent::screenUnlocked};

/// Its uptime can be put ahead, so that nobody has to wait.
class ImpatientRunLoop : public QtRunLoop {
public:
    [[nodiscard]] Seconds uptime() const override { return QtRunLoop::uptime() + ahead; }
    Seconds ahead{};
};

/// What the desktop reports, in its order.
class EventList {
public:
    explicit EventList(Desktop& desktop) {
        for (const auto event : allEvents)
            subscriptions_.push_back(desktop.systemEvents().observe(event, [this, event] { events.push_back(event); }));
    }
    [[nodiscard]] bool waitFor(std::size_t count) {
        return waitUntil([&] { return events.size() >= count; });
    }

    std::vector<SystemEvent> events;

private:
    std::vector<Subscription> subscriptions_;
};

std::string reasonFor(Desktop& desktop, const std::string& question) {
    for (const auto& channel : desktop.systemEvents().channels())
        if (channel.question == question) return channel.isAvailable ? "" : channel.reason;
    return "no such question";
}

class SystemEventsTest : public testing::Test {
protected:
    ImpatientRunLoop runLoop;
    const DesktopSession session{{.display = false}};
    LogindMock logind;
};

TEST_F(SystemEventsTest, TheMachineSleepsOnlyWhenTheHandlersHaveRun) {
    LinuxDesktop desktop(runLoop);
    ASSERT_TRUE(waitUntil([&] { return logind.inhibitors() == 1; }));
    ASSERT_TRUE(staysTrue([&] { return logind.inhibitors() == 1; }, 0.1s)) << "it has arrived here too";
    EXPECT_THAT(reasonFor(desktop, "sleep and wake"), IsEmpty());
    EventList list(desktop);
    int inhibitorsInHandler = 0;
    const auto subscription =
        desktop.systemEvents().observe(SystemEvent::willSleep, [&] { inhibitorsInHandler = logind.inhibitors(); });

    logind.prepareForSleep(true);
    ASSERT_TRUE(list.waitFor(1));
    EXPECT_EQ(inhibitorsInHandler, 1);
    EXPECT_TRUE(waitUntil([&] { return logind.inhibitors() == 0; }));

    logind.prepareForSleep(true);
    logind.prepareForSleep(false);
    ASSERT_TRUE(list.waitFor(2));
    EXPECT_TRUE(waitUntil([&] { return logind.inhibitors() == 1; }));
    EXPECT_THAT(list.events, ElementsAre(SystemEvent::willSleep, SystemEvent::didWake)) << "repeats are dropped";
}

TEST_F(SystemEventsTest, LockAndUnlockArriveOnceFromWhoeverReportsThemAndALockAtTheStartCounts) {
    logind.setLockedHint(true);
    LinuxDesktop desktop(runLoop);
    EXPECT_THAT(reasonFor(desktop, "lock and unlock"), IsEmpty());
    EXPECT_EQ(desktop.foreground().frontmostApplication()->bundleIdentifier, loginWindowBundleId);
    EventList atTheStart(desktop);
    logind.setLockedHint(false);
    ASSERT_TRUE(atTheStart.waitFor(1));
    EXPECT_THAT(atTheStart.events, ElementsAre(SystemEvent::screenUnlocked));

    std::vector<std::function<void(bool)>> ways{[&](bool on) { logind.setLockedHint(on); },
                                                [&](bool on) { logind.requestLock(on); }};
    for (const char* name : {"freedesktop", "gnome", "mate", "cinnamon", "xfce"})
        ways.emplace_back([name](bool on) { announceScreenSaver(std::string("org.") + name + ".ScreenSaver", on); });
    ways.emplace_back([all = ways](bool on) {
        for (const auto way : {1, 0, 3})
            all[static_cast<std::size_t>(way)](on);
    });
    for (const auto& announce : ways) {
        SCOPED_TRACE(&announce - ways.data());
        EventList list(desktop);
        announce(true);
        ASSERT_TRUE(list.waitFor(1));
        EXPECT_TRUE(staysTrue([&] { return list.events.size() == 1; }, 0.1s));
        announce(false);
        ASSERT_TRUE(list.waitFor(2));
        EXPECT_THAT(list.events, ElementsAre(SystemEvent::screenLocked, SystemEvent::screenUnlocked));
    }
}

TEST_F(SystemEventsTest, WhileAnotherSessionIsInFrontNothingIs) {
    logind.setActive(false);
    LinuxDesktop desktop(runLoop);
    EventList list(desktop);
    const auto isHidden = [&] {
        const auto front = desktop.foreground().frontmostApplication();
        const auto worker = desktop.runningApplications().frontmost();
        EXPECT_EQ(front && front->bundleIdentifier == loginWindowBundleId,
                  worker && worker->bundleIdentifier == loginWindowBundleId);
        return front.has_value();
    };
    EXPECT_TRUE(isHidden());
    logind.setActive(true);
    ASSERT_TRUE(list.waitFor(1));
    EXPECT_FALSE(isHidden());
    logind.setActive(false);
    ASSERT_TRUE(list.waitFor(2));
    desktop.systemEvents().noteInput();
    EXPECT_TRUE(isHidden()) << "the keys that switched";
    runLoop.ahead = 10s;
    desktop.systemEvents().noteInput();
    EXPECT_THAT(list.events, ElementsAre(SystemEvent::sessionDidReturn, SystemEvent::sessionDidLeave,
                                         SystemEvent::sessionDidReturn));
}

TEST_F(SystemEventsTest, ALockEndsWithItsLockerOrWhenNobodyAnswersForItAndSomebodyTypes) {
    const auto say = [](BusMock& locker) { locker.emitSignal("ActiveChanged", "b", {true}); };
    const auto activate = [&](BusMock& locker) {
        locker.setAnswer("GetActive", "", "b", "ret = True");
        say(locker);
    };
    using Step = std::function<void(BusMock&)>;
    const std::tuple<const char*, Step, Step, Seconds, bool> rows[] = {
        {"dies", activate, [](auto& locker) { locker.kill(); }, 0s, true},
        {"is there", activate, [](auto&) {}, 60s, false},
        {"hangs", activate, [](auto& locker) { locker.hang(); }, 10s, true},
        {"has forgotten", say, [](auto&) {}, 10s, true},
        {"has forgotten just now", say, [](auto&) {}, 9s, false},
        {"told logind and nobody else", [&](auto&) { logind.setLockedHint(true); }, [](auto&) {}, 10s, true},
    };
    for (const auto& [name, lock, then, inputAfter, isOver] : rows) {
        SCOPED_TRACE(name);
        BusMock locker("org.gnome.ScreenSaver");
        locker.setAnswer("GetActive", "", "b", "ret = False");
        LinuxDesktop desktop(runLoop);
        EventList list(desktop);
        lock(locker);
        ASSERT_TRUE(list.waitFor(1));
        then(locker);
        runLoop.ahead += inputAfter;
        desktop.systemEvents().noteInput();
        EXPECT_TRUE(isOver ? list.waitFor(2) : staysTrue([&] { return list.events.size() == 1; }));
    }
}

TEST(ScreensAsleepTest, DarkScreensAreReportedByTheServer) {
    QtRunLoop runLoop;
    const DesktopSession session({.windowManager = false, .buses = false});
    LinuxDesktop desktop(runLoop);
    EXPECT_THAT(reasonFor(desktop, "screens asleep"), IsEmpty());
    EventList list(desktop);
    for (const char* state : {"activate", "activate", "reset", "reset"})
        ASSERT_EQ(run({"xset", "s", state}), 0);
    ASSERT_TRUE(list.waitFor(2));
    EXPECT_TRUE(staysTrue([&] { return list.events.size() == 2; }, 0.1s));
    EXPECT_THAT(list.events, ElementsAre(SystemEvent::screensDidSleep, SystemEvent::screensDidWake));
}

TEST(MissingSystemEventsTest, WhatIsMissingIsNamed) {
    QtRunLoop runLoop;
    {
        const DesktopSession session({.display = false, .buses = false});
        LinuxDesktop desktop(runLoop);
        EXPECT_EQ(reasonFor(desktop, "sleep and wake"), "no system bus");
        EXPECT_EQ(reasonFor(desktop, "lock and unlock"), "no system bus; no session bus");
        EXPECT_THAT(reasonFor(desktop, "screens asleep"), HasSubstr("no display"));
    }
    const DesktopSession session({.windowManager = false, .serverArguments = {"-extension", "MIT-SCREEN-SAVER"}});
    LinuxDesktop desktop(runLoop);
    EXPECT_THAT(reasonFor(desktop, "sleep and wake"), HasSubstr("logind"));
    EXPECT_THAT(reasonFor(desktop, "lock and unlock"), HasSubstr("no screen saver"));
    EXPECT_THAT(reasonFor(desktop, "screens asleep"), HasSubstr("MIT-SCREEN-SAVER"));
}

TEST_F(SystemEventsTest, AHangingLogindHoldsTheStartUpForLessThanASecond) {
    logind.hang();
    const auto before = uptime();
    const LinuxDesktop desktop(runLoop);
    EXPECT_THAT((uptime() - before).count(), Lt(1));
}

}  // namespace
}  // namespace quorvane::platform
