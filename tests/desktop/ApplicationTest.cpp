#include "desktop/support/ApplicationScreen.h"
#include "desktop/support/TestWindow.h"
#include "desktop/support/TrayHost.h"
#include "desktop/support/Waiting.h"
#include "platform/linux/bus/DBusConnection.h"
#include "platform/linux/x11/X11Windows.h"
#include "store/AppSettings.h"
#include "support/Matchers.h"
#include "support/Matching.h"

#include <QDBusMessage>
#include <csignal>

namespace quorvane {
namespace {

constexpr const char* started = "ActivityTracker: Starting tracking with modelContext: true\n";

/// The application as people meet it, on a desktop of its own.
class ApplicationTest : public ApplicationScreen {
protected:
    [[nodiscard]] std::unique_ptr<ProgramRun> launch(const std::vector<std::string>& arguments = {}) const {
        auto application = std::make_unique<ProgramRun>(QUORVANE, arguments, setting_);
        EXPECT_TRUE(application->hasWritten(started));
        return application;
    }

    void storeSettings(const std::function<void(AppSettings&)>& edit) const {
        auto store = openStore();
        const auto settings = std::make_shared<AppSettings>();
        edit(*settings);
        store.mainContext().insert(settings);
        store.mainContext().save();
    }

    [[nodiscard]] bool hasWindow() { return window() != XCB_WINDOW_NONE; }
    [[nodiscard]] bool isInFront() { return hasWindow() && platform::X11Windows::active(x11_) == window(); }
    [[nodiscard]] bool skipsTaskbarAndPager() {
        if (!hasWindow()) return false;
        const auto state = [&] { return x11_.property(x11_.askProperty(window(), "_NET_WM_STATE")); };
        return platform::X11Windows::lists(state(), x11_.atom("_NET_WM_STATE_SKIP_TASKBAR")) &&
               platform::X11Windows::lists(state(), x11_.atom("_NET_WM_STATE_SKIP_PAGER"));
    }

    /// As the user does with the frame's button.
    void closeWindow() {
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = window();
        message.type = x11_.atom("_NET_CLOSE_WINDOW");
        xcb_send_event(x11_.xcb(), 0, x11_.root(),
                       XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                       reinterpret_cast<const char*>(&message));
        xcb_flush(x11_.xcb());
        ASSERT_TRUE(waitUntil([&] { return !hasWindow(); }));
    }

    /// What a launcher asks of org.freedesktop.Application; "" is to activate it.
    static void ask(const QString& action) {
        const bool isAction = !action.isEmpty();
        auto call = QDBusMessage::createMethodCall(
            QStringLiteral("org.zelkor.Quorvane"), QStringLiteral("/org/zelkor/Quorvane"),
            QStringLiteral("org.freedesktop.Application"),
            isAction ? QStringLiteral("ActivateAction") : QStringLiteral("Activate"));
        if (isAction) call << action << QVariantList();
        call << QVariantMap();
        auto bus = platform::DBusConnection::toSession();
        EXPECT_EQ(bus.bus().call(call, QDBus::Block, 5000).type(), QDBusMessage::ReplyMessage);
    }
};

TEST_F(ApplicationTest, ASessionBusThatHangsKeepsNobodyFromRecording) {
    const PrivateBus bus(session_.runtimeDirectory() / "hanging");
    setting_.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.address();
    bus.send(SIGSTOP);
    const auto application = launch();
    EXPECT_TRUE(waitUntil([&] { return hasWindow(); }));
    const TestWindow editor({.instance = "editor", .wmClass = "Editor"});
    EXPECT_TRUE(waitUntil([&] { return !records().empty(); }));
    bus.send(SIGCONT);  // so that it can be ended
}

TEST_F(ApplicationTest, TheTraysMenuPausesStartsAndQuits) {
    TrayHost tray;
    const auto application = launch();
    ASSERT_TRUE(waitUntil([&] { return tray.hasItem(); }));
    EXPECT_THAT(tray.labels(), IsSupersetOf({"(Recording)", "-", "Open Quorvane", "Input monitoring"}));
    EXPECT_TRUE(tray.choose("Pause Recording"));
    EXPECT_TRUE(waitUntil([&] { return tray.labels()[0].starts_with("(Paused since "); }));
    EXPECT_TRUE(tray.choose("Start Recording"));
    EXPECT_TRUE(waitUntil([&] { return tray.labels()[0] == "(Recording)"; }));
    EXPECT_TRUE(tray.choose("Quit Quorvane"));
    EXPECT_EQ(application->wait().status, 0);
}

TEST_F(ApplicationTest, ATrayThatComesAfterTheApplicationGetsItsIcon) {
    const auto application = launch({"--background"});
    TrayHost tray;
    EXPECT_TRUE(waitUntil([&] { return tray.hasItem(); }));
}

TEST_F(ApplicationTest, AClosedWindowLeavesTrackingAndTrayAndComesBackFromThere) {
    TrayHost tray;
    const auto application = launch();
    ASSERT_TRUE(waitUntil([&] { return tray.hasItem() && isInFront(); }));
    closeWindow();
    EXPECT_EQ(tray.labels()[0], "(Recording)");
    EXPECT_TRUE(tray.choose("Open Quorvane"));
    EXPECT_TRUE(waitUntil([&] { return isInFront(); }));
    closeWindow();
    ask({});
    EXPECT_TRUE(waitUntil([&] { return isInFront(); }));
    EXPECT_TRUE(application->hasWritten("已发 quorvaneReopenMain 通知请求重建"));
}

TEST_F(ApplicationTest, ASecondStartBringsTheWindowToTheFrontAndEnds) {
    const auto application = launch();
    ASSERT_TRUE(waitUntil([&] { return isInFront(); }));
    TestWindow other({.instance = "other", .wmClass = "Other", .title = "other"});
    // The start may still be bringing its window to the front.
    ASSERT_TRUE(waitUntil([&] {
        other.activate();
        return staysTrue([&] { return other.hasFocus(); });
    }));
    const auto silent = ProgramRun(QUORVANE, {"--background"}, setting_).wait();
    EXPECT_EQ(silent.status, 0);
    EXPECT_TRUE(staysTrue([&] { return other.hasFocus(); }));
    const auto second = ProgramRun(QUORVANE, {}, setting_).wait();
    EXPECT_EQ(second.status, 0);
    EXPECT_EQ(second.out + second.err, "");
    EXPECT_TRUE(waitUntil([&] { return isInFront(); }));
}

TEST_F(ApplicationTest, InTheBackgroundItTracksWithoutAWindowUntilOneIsAskedFor) {
    TestWindow editor({.instance = "editor", .wmClass = "Editor", .title = "chapter one"});
    ASSERT_TRUE(waitUntil([&] { return editor.hasFocus(); }));
    const auto application = launch({"--background"});
    EXPECT_TRUE(application->hasWritten("ActivityTracker: Created new record for Editor"));
    EXPECT_FALSE(hasWindow());
    ask(QStringLiteral("pause"));
    EXPECT_TRUE(application->hasWritten("ActivityTracker: ❌ 已注销"));
    ask(QStringLiteral("show"));
    EXPECT_TRUE(waitUntil([&] { return isInFront(); }));
    ask(QStringLiteral("quit"));
    EXPECT_EQ(application->wait().status, 0);
    ProgramRun next(QUORVANE, {"--background"}, setting_);
    EXPECT_TRUE(next.hasWritten("ActivityTracker: Paused by the user since "));
}

TEST_F(ApplicationTest, TheCompanionPausesItStartsItAndShowsItsWindowAndSaysWhatHolds) {
    const auto cli = [&](const char* command) {
        return ProgramRun(QUORVANE_CLI, {command, "--json"}, setting_).wait();
    };
    for (const char* command : {"pause", "start", "show"})
        EXPECT_EQ(cli(command).err, "quorvane-cli: Quorvane is not running\n");
    storeSettings([](AppSettings& settings) {
        settings.onlyTrackWorkHours = true;
        settings.workDays = "";
    });
    const auto application = launch({"--background"});
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(cli("pause").out, "{\"tracking\":false,\"hindrance\":null}\n");
    EXPECT_TRUE(application->hasWritten("ActivityTracker: ❌ 已注销"));
    EXPECT_EQ(cli("start").out, "{\"tracking\":true,\"hindrance\":\"this is outside the work hours\"}\n");
    EXPECT_EQ(cli("show").status, 0);
    EXPECT_TRUE(waitUntil([&] { return isInFront(); }));
    application->sendSignal(SIGSTOP);
    EXPECT_EQ(cli("pause").err, "quorvane-cli: Quorvane is running and does not answer\n");
    application->sendSignal(SIGCONT);
}

TEST_F(ApplicationTest, HoweverItEndsButByAKillTheOpenRecordIsClosedAndSavedAtOnce) {
    TestWindow editor({.instance = "editor", .wmClass = "Editor", .title = "chapter one"});
    ASSERT_TRUE(waitUntil([&] { return editor.hasFocus(); }));
    std::vector<std::string> expected;
    for (const int number : {0, SIGTERM, SIGINT, SIGHUP, SIGKILL}) {
        SCOPED_TRACE(number);
        const auto application = launch({"--background"});
        ASSERT_TRUE(application->hasWritten("ActivityTracker: Created new record for Editor"));
        if (number == 0)
            ask(QStringLiteral("quit"));
        else
            application->sendSignal(number);
        EXPECT_EQ(application->wait().status, number == SIGKILL ? 128 + SIGKILL : 0);
        expected.emplace_back(number == SIGKILL ? "Editor open" : "Editor");
        EXPECT_EQ(records(), expected);
    }
}

TEST_F(ApplicationTest, AHiddenDockIconKeepsEveryWindowOutOfTheTaskbar) {
    storeSettings([](AppSettings& settings) { settings.hideDockIcon = true; });
    const auto application = launch();
    EXPECT_TRUE(waitUntil([&] { return skipsTaskbarAndPager(); }));
    closeWindow();
    ask({});
    EXPECT_TRUE(waitUntil([&] { return skipsTaskbarAndPager(); }));
}

TEST_F(ApplicationTest, WithoutADisplayItSaysWhatElseThereIs) {
    for (const char* display : {"", ":64999"}) {
        setting_.environment["DISPLAY"] = display;
        const auto result = ProgramRun(QUORVANE, {}, setting_).wait();
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.err, MatchesRegex("quorvane: .*display.*; quorvane-cli track needs none\n"));
        EXPECT_EQ(result.out, "");
    }
}

}  // namespace
}  // namespace quorvane
