#include "desktop/support/BusService.h"
#include "desktop/support/DesktopSession.h"
#include "desktop/support/LogindMock.h"
#include "desktop/support/OfWindow.h"
#include "desktop/support/TestWindow.h"
#include "desktop/support/Waiting.h"
#include "platform/linux/documents/LinuxAutomation.h"
#include "platform/linux/loop/QtRunLoop.h"
#include "platform/linux/system/XdgPaths.h"
#include "platform/linux/x11/X11RunningApplications.h"
#include "support/Matching.h"

#include <future>
#include <memory>
#include <unistd.h>

namespace quorvane::platform {
namespace {

using testing::Field;
using testing::VariantWith;

auto fails(int number) {
    return VariantWith<ScriptError>(
        AllOf(Field(&ScriptError::number, number), Field(&ScriptError::message, Not(IsEmpty()))));
}
auto says(const std::string& text) {
    return VariantWith<std::string>(text);
}

constexpr const char* playerPath = "/org/mpris/MediaPlayer2";

std::string playing(const std::string& status, const std::string& title, const std::string& desktopEntry) {
    return "{'org.mpris.MediaPlayer2': {'DesktopEntry': '" + desktopEntry +
           "'}, 'org.mpris.MediaPlayer2.Player': {'PlaybackStatus': '" + status +
           "', 'Metadata': dbus.Dictionary({'xesam:title': '" + title + "'}, signature='sv')}}";
}

class AutomationTest : public testing::Test {
protected:
    [[nodiscard]] ScriptResult ask(ScriptFamily family, const std::string& bundleIdentifier = {}) {
        return automation.run(
            {.family = family, .applicationName = "Application", .bundleIdentifier = bundleIdentifier});
    }
    /// Waits until the front window's title says so.
    [[nodiscard]] bool waitForTitle(const std::string& part, Seconds timeout = 20s) {
        return waitUntil(
            [&] {
                const auto front = applications.frontmost();
                return front && front->windowTitle.find(part) != std::string::npos;
            },
            timeout);
    }
    /// Opens a window and waits until it is in front. It stays, since one that goes may take the focus of the next with
    /// it for a moment.
    [[nodiscard]] bool show(const TestWindow::Properties& properties) {
        windows.push_back(std::make_unique<TestWindow>(properties));
        return waitForTitle(properties.title);
    }
    std::filesystem::path folder(const std::string& name) const {
        const auto path = XdgPaths::home() / name;
        std::filesystem::create_directories(path);
        return path;
    }

    QtRunLoop runLoop;
    DesktopSession session;
    X11Connection x11;
    DesktopEntries entries{XdgPaths::dataDirectories()};
    ApplicationIdentity identity{entries, IdentityTable::builtIn()};
    SessionEvents sessionEvents{runLoop};
    X11RunningApplications applications{std::make_unique<X11Connection>(X11Connection::Reader::nobody), identity,
                                        sessionEvents};
    LinuxAutomation automation{applications, identity};
    /// The same of a window that another program has made.
    [[nodiscard]] bool show(const std::string& wmClass, const std::string& title, std::vector<std::string> command) {
        owners.push_back(std::make_unique<ChildProcess>(ofWindow(wmClass, title, std::move(command))));
        return waitForTitle(title);
    }

    std::vector<std::unique_ptr<TestWindow>> windows;
    std::vector<std::unique_ptr<ChildProcess>> owners;
};

TEST_F(AutomationTest, TheFrontApplicationIsKnownToAnyThread) {
    ASSERT_TRUE(show({.instance = "vlc", .wmClass = "vlc", .title = "film.mkv - VLC", .pid = getpid()}));
    const auto front = std::async(std::launch::async, [&] { return applications.frontmost(); }).get();
    EXPECT_EQ(front, (RunningApplication{.processIdentifier = getpid(),
                                         .bundleIdentifier = "org.videolan.vlc",
                                         .localizedName = "vlc",
                                         .windowTitle = "film.mkv - VLC"}));
    ASSERT_TRUE(show({.instance = "other", .wmClass = "Other", .title = "above"}));
    EXPECT_TRUE(applications.isRunning("org.videolan.vlc"));
    EXPECT_TRUE(applications.isRunning("other"));
    EXPECT_FALSE(applications.isRunning("Other"));
}

TEST_F(AutomationTest, AProcessHasEndedBeforeItsParentNotices) {
    ChildProcess child({"sleep", "60"});
    const auto pid = child.pid();
    EXPECT_FALSE(applications.isTerminated(pid));
    EXPECT_FALSE(applications.isTerminated(0));
    child.send(SIGKILL);
    EXPECT_TRUE(waitUntil([&] { return applications.isTerminated(pid); }));
    child.wait();
    EXPECT_TRUE(applications.isTerminated(pid));
}

TEST_F(AutomationTest, AGrabbedServerIsNotWaitedFor) {
    ASSERT_TRUE(show({.instance = "a", .wmClass = "A", .title = "a"}));
    xcb_grab_server(x11.xcb());
    ASSERT_TRUE(x11.reply(xcb_get_input_focus_reply, xcb_get_input_focus(x11.xcb())));
    const auto asked = uptime();
    EXPECT_EQ(applications.frontmost(), std::nullopt);
    EXPECT_THAT((uptime() - asked).count(), Lt(0.3));
    xcb_ungrab_server(x11.xcb());
    xcb_flush(x11.xcb());
    EXPECT_TRUE(waitForTitle("a"));
}

TEST_F(AutomationTest, WhileTheSessionIsLockedTheLoginWindowIsInFront) {
    ASSERT_TRUE(show({.instance = "a", .wmClass = "A", .title = "a", .pid = getpid()}));
    announceScreenSaver("org.freedesktop.ScreenSaver", true);
    ASSERT_TRUE(waitUntil([&] { return sessionEvents.isOutOfReach(); }));
    EXPECT_EQ(applications.frontmost(),
              (RunningApplication{.bundleIdentifier = loginWindowBundleId, .localizedName = "LoginWindow"}));
    EXPECT_THAT(ask(ScriptFamily::frontDocumentPath), fails(-600));
    announceScreenSaver("org.freedesktop.ScreenSaver", false);
    EXPECT_TRUE(waitForTitle("a"));
}

TEST_F(AutomationTest, ATerminalStandsWhereItsForegroundProgramWorks) {
    const auto outer = folder("outer");
    const auto inner = folder("inner");
    const ChildProcess terminal({"xterm", "-T", "shell", "-e", "bash", "--norc", "-ic",
                                 "cd " + outer.string() + "; (cd " + inner.string() + "; sleep 60)"});
    ASSERT_TRUE(waitForTitle("shell"));
    EXPECT_TRUE(waitUntil([&] { return ask(ScriptFamily::frontDocumentPath) == ScriptResult(inner.string()); }, 10s));
}

TEST_F(AutomationTest, EditorsTellTheirDocument) {
    const auto file = folder("letters") / "März notes.txt";
    writeFile(file, "x");
    for (const char* editor : {"mousepad", "geany"}) {
        SCOPED_TRACE(editor);
        const ChildProcess process({editor, file.string()});
        ASSERT_TRUE(waitForTitle("März notes.txt"));
        EXPECT_THAT(ask(ScriptFamily::frontDocumentPath), says(file.string()));
        EXPECT_THAT(ask(ScriptFamily::frontDocumentName), says(file.filename().string()));
    }
}

TEST_F(AutomationTest, WhereTheTitleHasNoPathOpenFilesRecentDocumentsAndArgumentsTell) {
    for (const char* name : {"open.txt", "recent.txt", "argument.txt", "gone.txt"})
        writeFile(folder("files") / name, "x");
    const auto files = folder("files");
    std::filesystem::remove(files / "gone.txt");
    writeFile(
        XdgPaths::dataHome() / "recently-used.xbel",
        "<xbel xmlns:bookmark=\"b\"><bookmark href=\"file://" + (files / "recent.txt").string() +
            "\"><bookmark:application exec=\"&apos;tail %u&apos;\" modified=\"2026-01-01T00:00:00Z\"/></bookmark>");
    const std::vector<std::string> opener{"tail", "-f", (files / "open.txt").string()};
    const std::vector<std::string> reader{"tail", "-f", "/dev/null", (files / "argument.txt").string()};
    const std::tuple<const char*, std::vector<std::string>, ScriptResult> rows[] = {
        {"open.txt - Viewer", opener, (files / "open.txt").string()},
        {"recent.txt - Viewer", opener, (files / "recent.txt").string()},
        {"The Viewer", reader, (files / "argument.txt").string()},
        {"gone.txt - Viewer", opener, "gone.txt"},
    };
    for (const auto& [title, command, expected] : rows) {
        ASSERT_TRUE(show("Viewer", title, command));
        EXPECT_TRUE(waitUntil([&, &wanted = expected] { return ask(ScriptFamily::officeDocument) == wanted; }))
            << title;
    }
    ASSERT_TRUE(show({.instance = "viewer", .wmClass = "Viewer", .title = "Untold", .pid = getpid()}));
    EXPECT_THAT(ask(ScriptFamily::developmentDocument), fails(-1728));
    EXPECT_THAT(ask(ScriptFamily::frontDocumentName), fails(-1728));
}

TEST_F(AutomationTest, TheProcessIsTheOneThatMadeTheWindowWhateverTheWindowSays) {
    const auto told = folder("told");
    const auto real = folder("real");
    const ChildProcess inner({"sh", "-c", "cd " + told.string() + "; exec sleep 60"});
    const ChildProcess sandboxed(
        ofWindow("Sandboxed", "sandboxed", {"sh", "-c", "cd " + real.string() + "; exec sleep 60"}));
    ASSERT_TRUE(waitForTitle("sandboxed"));
    EXPECT_EQ(applications.frontmost()->processIdentifier, sandboxed.pid());
    ASSERT_TRUE(show({.instance = "a", .wmClass = "A", .title = "inner", .pid = inner.pid()}));
    EXPECT_EQ(applications.frontmost()->processIdentifier, getpid());
    ASSERT_TRUE(show({.instance = "a", .wmClass = "A", .title = "/etc/passwd - far", .machine = "elsewhere"}));
    EXPECT_THAT(applications.frontmost()->processIdentifier, Lt(0));
    EXPECT_THAT(ask(ScriptFamily::frontDocumentPath), fails(-600)) << "a path of another machine";
}

/// A desktop that tells titles and no processes.
struct TitlesAlone : WindowApplications {
    using WindowApplications::WindowApplications;
    std::optional<Window> frontWindow() override { return window; }
    std::vector<WindowProperties> windows() override { return {window.properties}; }
    Window window;
};

TEST_F(AutomationTest, WithoutAProcessTheTitleAndWhatIsRecentTell) {
    TitlesAlone titles(identity, sessionEvents);
    LinuxAutomation withoutProcess(titles, identity);
    const auto files = folder("files");
    writeFile(files / "Letter.odt", "x");
    writeFile(XdgPaths::dataHome() / "recently-used.xbel",
              "<xbel xmlns:bookmark=\"b\"><bookmark href=\"file://" + (files / "Letter.odt").string() +
                  "\"><bookmark:application exec=\"&apos;soffice %u&apos;\" modified=\"2026-01-01T00:00:00Z\"/>"
                  "</bookmark></xbel>");
    const std::tuple<const char*, std::string, ScriptFamily, std::string> rows[] = {
        {"mousepad", "~/files/Letter.odt - Mousepad", ScriptFamily::frontDocumentPath, (files / "Letter.odt").string()},
        {"libreoffice-writer", "Letter.odt - LibreOffice Writer", ScriptFamily::officeDocument,
         (files / "Letter.odt").string()},
        {"foot", "me@host: ~/files", ScriptFamily::frontDocumentPath, files.string()},
        {"mousepad", "other.txt - Mousepad", ScriptFamily::frontDocumentPath, "other.txt"},
        {"thunar", "~/files - Thunar", ScriptFamily::frontFolder, files.string()},
    };
    for (const auto& [wmClass, title, family, expected] : rows) {
        titles.window = {{.wmClass = wmClass}, title};
        EXPECT_THAT(withoutProcess.run({.family = family}), says(expected)) << title;
    }
}

TEST_F(AutomationTest, ATrackIsThatOfTheWindowsPlayer) {
    const BusService first("org.mpris.MediaPlayer2.first", playerPath, playing("Playing", "One", "vlc"));
    const BusService second("org.mpris.MediaPlayer2.second", playerPath, playing("Paused", "Two", ""), "second");
    ASSERT_TRUE(waitForTitle("second"));
    EXPECT_THAT(ask(ScriptFamily::currentTrack, "second"), says("Two"));
    ASSERT_TRUE(show({.instance = "vlc", .wmClass = "vlc", .title = "vlc", .pid = getpid()}));
    EXPECT_THAT(ask(ScriptFamily::currentTrack), says("One"));
    ASSERT_TRUE(show({.instance = "other", .wmClass = "Other", .title = "above", .pid = getpid()}));
    EXPECT_THAT(ask(ScriptFamily::currentTrack), fails(-1728));
    EXPECT_THAT(ask(ScriptFamily::currentTrack, "org.videolan.vlc"), says("One"));
    EXPECT_THAT(ask(ScriptFamily::frontDocumentPath, "org.videolan.vlc"), fails(-1728));
    EXPECT_THAT(ask(ScriptFamily::currentTrack, "com.spotify.client"), fails(-600));
}

TEST_F(AutomationTest, PlayersThatLieOrHangAreNoAnswerAndCostLessThanASecond) {
    const BusService liar("org.mpris.MediaPlayer2.liar", playerPath,
                          "{'org.mpris.MediaPlayer2': {'DesktopEntry': 7}, 'org.mpris.MediaPlayer2.Player': "
                          "{'PlaybackStatus': 'Playing', 'Metadata': dbus.Array(['x'], signature='s')}}",
                          "liar");
    ASSERT_TRUE(waitForTitle("liar"));
    EXPECT_THAT(ask(ScriptFamily::currentTrack), fails(-1728));
    std::vector<std::unique_ptr<BusService>> hanging;
    for (const char* name : {"a", "b", "c", "d", "e"}) {
        hanging.push_back(std::make_unique<BusService>(std::string("org.mpris.MediaPlayer2.") + name, playerPath,
                                                       playing("Playing", "Never", "vlc")));
        hanging.back()->hang();
    }
    ASSERT_TRUE(show({.instance = "vlc", .wmClass = "vlc", .title = "vlc", .pid = getpid()}));
    const auto asked = uptime();
    EXPECT_THAT(ask(ScriptFamily::currentTrack), fails(-1728));
    EXPECT_THAT((uptime() - asked).count(), Lt(1.0));
}

TEST_F(AutomationTest, AFolderIsWhatTheWindowsFileManagerPublishesElseWhatTheTitleNames) {
    const auto home = XdgPaths::home();
    const auto work = folder("projects/work");
    const auto plans = folder("projects/plans");
    const BusService manager("org.freedesktop.FileManager1", "/org/freedesktop/FileManager1",
                             "{'org.freedesktop.FileManager1': {'OpenWindowsWithLocations': dbus.Dictionary({'/w/1': "
                             "['file://" +
                                 work.string() + "'], '/w/2': ['file://" + plans.string() + "']}, signature='sas')}}",
                             "plans");
    folder("Music");
    ASSERT_TRUE(waitForTitle("plans"));
    EXPECT_THAT(ask(ScriptFamily::frontFolder), says(plans.string()));
    const std::pair<const char*, std::string> rows[] = {
        {"~/projects/work - Files", work.string()},
        {"Music - Files", (home / "Music").string()},
        {"home - Files", home.string()},
    };
    for (const auto& [title, expected] : rows) {
        ASSERT_TRUE(show({.instance = "files", .wmClass = "Files", .title = title}));
        EXPECT_THAT(ask(ScriptFamily::frontFolder), says(expected)) << title;
    }
    ASSERT_TRUE(show({.instance = "files", .wmClass = "Files", .title = "plans - Files"}));
    EXPECT_THAT(ask(ScriptFamily::frontFolder), fails(-1728)) << "published by another process";
}

TEST_F(AutomationTest, ABrowserIsAskedOnceSomebodyKnowsHow) {
    EXPECT_THAT(ask(ScriptFamily::browserURL), fails(-600));
    ASSERT_TRUE(show({.instance = "web", .wmClass = "Web", .title = "Page", .pid = getpid()}));
    EXPECT_THAT(ask(ScriptFamily::browserURL), fails(-1728));
    automation.setBrowserAnswer([](std::int64_t pid, const std::string& title) -> std::optional<std::string> {
        return title + "/" + std::to_string(pid == getpid());
    });
    EXPECT_THAT(ask(ScriptFamily::browserURL), says("Page/1"));
    automation.setBrowserAnswer({});
    EXPECT_THAT(ask(ScriptFamily::browserURL), fails(-1728));
}

TEST_F(AutomationTest, PermissionIsABusThatAnswers) {
    EXPECT_THAT(ask(ScriptFamily::permissionTest), says(""));
    EXPECT_TRUE(automation.channel().isAvailable);
    session.environment().set("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    EXPECT_THAT(ask(ScriptFamily::permissionTest), fails(-600));
    EXPECT_FALSE(automation.channel().isAvailable);
    EXPECT_THAT(automation.channel().reason, HasSubstr("does not answer"));
}

}  // namespace
}  // namespace quorvane::platform
