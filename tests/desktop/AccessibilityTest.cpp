#include "desktop/support/AccessibilityService.h"
#include "desktop/support/BoundSocket.h"
#include "desktop/support/DesktopSession.h"
#include "desktop/support/PrivateBus.h"
#include "desktop/support/TestWindow.h"
#include "desktop/support/Waiting.h"
#include "platform/linux/accessibility/AccessibilityToplevels.h"
#include "platform/linux/accessibility/AtspiAccessibility.h"
#include "platform/linux/loop/QtRunLoop.h"
#include "support/Matching.h"

#include <QDBusConnection>
#include <csignal>
#include <future>
#include <unistd.h>

namespace quorvane::platform {
namespace {

constexpr double shortly = 0.1;     ///< seconds in which what is not asked has to be answered
constexpr double aQuestion = 0.45;  ///< the same for one question of 300 ms, on a busy machine

constexpr std::string_view allAttributes[] = {
    AccessibleName::focusedWindow, AccessibleName::mainWindow, AccessibleName::windows,  AccessibleName::focusedElement,
    AccessibleName::role,          AccessibleName::parent,     AccessibleName::children, AccessibleName::url,
    AccessibleName::document,      AccessibleName::value,      AccessibleName::title,    AccessibleName::description};

double secondsFor(const std::function<void()>& work) {
    const auto before = uptime();
    work();
    return (uptime() - before).count();
}

class AccessibilityTest : public testing::Test {
protected:
    /// An editor with a file, once its window is active.
    std::unique_ptr<ChildProcess> startEditor(const std::string& content) {
        const auto file = session.dataHome() / "notes.txt";
        writeFile(file, content);
        auto editor =
            std::make_unique<ChildProcess>(std::vector<std::string>{"mousepad", "--disable-server", file.string()});
        const auto isReady = [&] {
            const auto window = elementAt(tree, tree.application(editor->pid()), AccessibleName::focusedWindow);
            return elementAt(tree, window, AccessibleName::focusedElement).has_value();
        };
        if (!waitUntil(isReady, 20s)) throw std::runtime_error("mousepad is not on the accessibility bus");
        return editor;
    }

    QtRunLoop runLoop;
    DesktopSession session;
    AccessibilityService service{session};
    AtspiAccessibility tree;
};

TEST_F(AccessibilityTest, AWindowIsReadWithWhatIsInIt) {
    const auto editor = startEditor("Buy milk\nand \u00e9clairs" + std::string(3000, 'x'));
    const auto read = [&] {
        const auto application = tree.application(editor->pid());
        const auto window = elementAt(tree, application, AccessibleName::focusedWindow);
        EXPECT_THAT(textAt(tree, window, AccessibleName::title).value_or(""), HasSubstr("notes.txt - Mousepad"));
        EXPECT_EQ(textAt(tree, window, AccessibleName::role), AccessibleName::windowRole);
        EXPECT_EQ(elementAt(tree, application, AccessibleName::mainWindow), window);
        EXPECT_THAT(elementsAt(tree, application, AccessibleName::windows), ElementsAre(*window));
        EXPECT_EQ(elementAt(tree, window, AccessibleName::parent), application);
        EXPECT_EQ(elementAt(tree, application, AccessibleName::parent), std::nullopt);
        for (const auto name : {AccessibleName::url, AccessibleName::document, AccessibleName::value})
            EXPECT_EQ(textAt(tree, window, name), std::nullopt) << name;

        const auto text = elementAt(tree, application, AccessibleName::focusedElement);
        EXPECT_EQ(textAt(tree, text, AccessibleName::role), "text");
        EXPECT_EQ(textAt(tree, text, AccessibleName::value),
                  "Buy milk\nand \u00e9clairs" + std::string(2000 - 20, 'x'));
        auto above = text;
        for (int i = 0; i < 8 && textAt(tree, above, AccessibleName::role) != AccessibleName::windowRole; ++i) {
            const auto parent = elementAt(tree, above, AccessibleName::parent);
            EXPECT_THAT(elementsAt(tree, parent, AccessibleName::children), Contains(*above));
            above = parent;
        }
        EXPECT_EQ(above, window);
    };
    read();
    std::async(std::launch::async, read).get();
}

TEST_F(AccessibilityTest, WindowsAreKnownAsFarAsTheirApplicationsTell) {
    AccessibilityToplevels windows(runLoop);
    auto editor = startEditor("text");
    const auto isEditor = [&](const AccessibilityToplevels& of, const char* title) {
        const auto window = of.active();
        return window && window->appId == "mousepad" && window->title.starts_with(title) &&
               window->processIdentifier == editor->pid();
    };
    ASSERT_TRUE(waitUntil([&] { return isEditor(windows, "/"); }));
    const AccessibilityToplevels later(runLoop);
    EXPECT_TRUE(waitUntil([&] { return isEditor(later, "/"); })) << "it is active already";
    ASSERT_EQ(run({"xdotool", "type", "a"}), 0);
    EXPECT_TRUE(waitUntil([&] { return isEditor(windows, "*"); }));
    {
        TestWindow silent({.instance = "silent", .wmClass = "Silent"});
        silent.activate();
        EXPECT_TRUE(waitUntil([&] { return !windows.active(); })) << "the editor has been left";
        EXPECT_EQ(windows.all().size(), 1U);
    }
    EXPECT_TRUE(waitUntil([&] { return isEditor(windows, "*") && isEditor(later, "*"); }));
    editor.reset();
    EXPECT_TRUE(waitUntil([&] { return !windows.active() && windows.all().empty(); }));
    const auto channel = windows.channel();
    EXPECT_TRUE(channel.isAvailable);
    EXPECT_THAT(channel.name + channel.reason + channel.remedy,
                AllOf(HasSubstr("partial"), HasSubstr("terminals"), HasSubstr("browsers")));
    EXPECT_FALSE(tree.isProcessTrusted()) << "nothing was switched on";
    service.restart();
    EXPECT_TRUE(waitUntil([&] { return !windows.channel().isAvailable; })) << "there is nobody";
    editor = startEditor("text");
    EXPECT_TRUE(waitUntil([&] { return isEditor(windows, "/"); }));
}

/// Windows of an application of that name with these titles; the first is the active one.
constexpr const char* windowsOf = R"(
import gi, os, sys
gi.require_version('Gtk', '3.0')
from gi.repository import Gtk, GLib
GLib.set_prgname(sys.argv[2])
for title in reversed(sys.argv[3:]):
    window = Gtk.Window(title=title)
    window.show_all()
    while Gtk.events_pending(): Gtk.main_iteration()
os.write(int(sys.argv[1]), b'ready\n')
Gtk.main()
)";

TEST_F(AccessibilityTest, TheWindowInFrontIsTheOneWithItsTitle) {
    ChildProcess two({"/usr/bin/python3", "-c", windowsOf, "{ready}", "Two", "One - Two", "Other - Two"});
    ASSERT_TRUE(two.readyLine(20s));
    std::optional<AccessibleElement> application;
    ASSERT_TRUE(waitUntil([&] {
        application = tree.application(two.pid());
        return elementsAt(tree, application, AccessibleName::windows).size() == 2;
    }));
    const auto frontTitle = [&](const FrontWindow& front, std::string_view name) {
        tree.setFront([front] { return front; });
        return textAt(tree, elementAt(tree, tree.application(front.processIdentifier), name), AccessibleName::title);
    };
    const std::pair<FrontWindow, std::optional<std::string>> rows[] = {
        {{two.pid(), "One - Two", {}}, "One - Two"},   {{two.pid(), "Other - Two", {}}, "Other - Two"},
        {{0, "Other - Two", {"two"}}, "Other - Two"},  {{0, "Other - Two", {"two esr"}}, "Other - Two"},
        {{0, "Other - Two", {"three"}}, std::nullopt}, {{0, "Gone - Two", {"two"}}, std::nullopt},
    };
    for (const auto& [front, expected] : rows)
        for (const auto name : {AccessibleName::focusedWindow, AccessibleName::mainWindow})
            EXPECT_EQ(frontTitle(front, name), expected) << front.title << " " << name;
}

TEST_F(AccessibilityTest, AShellThatHasTheFocusIsNoApplication) {
    const AccessibilityToplevels windows(runLoop);
    ChildProcess shell({"/usr/bin/python3", "-c", windowsOf, "{ready}", "gnome-shell", "Main stage"});
    const auto isActive = [&] {
        return elementAt(tree, tree.application(shell.pid()), AccessibleName::focusedWindow).has_value();
    };
    ASSERT_TRUE(waitUntil(isActive, 20s));
    EXPECT_TRUE(staysTrue([&] { return !windows.active() && windows.all().empty(); }));
}

TEST_F(AccessibilityTest, AFrozenApplicationCostsOneWait) {
    const auto editor = startEditor("text");
    const auto window = elementAt(tree, tree.application(editor->pid()), AccessibleName::focusedWindow);
    editor->send(SIGSTOP);
    double seconds = secondsFor([&] { EXPECT_EQ(tree.attribute(*window, AccessibleName::title), std::nullopt); });
    EXPECT_THAT(seconds, Lt(aQuestion));
    seconds = secondsFor([&] {
        const auto application = tree.application(editor->pid());
        EXPECT_TRUE(application);
        for (const auto name : allAttributes)
            EXPECT_EQ(tree.attribute(*application, name), std::nullopt) << name;
    });
    EXPECT_THAT(seconds, Lt(shortly));
    editor->send(SIGCONT);
    EXPECT_EQ(tree.attribute(*window, AccessibleName::title), std::nullopt) << "it is left alone for a while";
    EXPECT_TRUE(waitUntil([&] { return tree.attribute(*window, AccessibleName::title).has_value(); }));
}

TEST_F(AccessibilityTest, AccessibilityIsSwitchedOnOnRequestAndABusThatComesBackIsFoundAgain) {
    EXPECT_FALSE(tree.isProcessTrusted());
    EXPECT_THAT(tree.channel().reason, HasSubstr("switched off"));
    EXPECT_TRUE(tree.requestTrust());
    EXPECT_TRUE(tree.isProcessTrusted());
    EXPECT_EQ(tree.channel(),
              (Channel{.question = "accessibility tree", .name = "AT-SPI", .isAvailable = true, .reason = ""}));
    startEditor("text");
    service.restart();
    startEditor("text");
    EXPECT_TRUE(waitUntil([&] { return !tree.isProcessTrusted(); }, 10s)) << "the new service has it off";
}

TEST_F(AccessibilityTest, ThisProcessIsNotAsked) {
    EXPECT_EQ(tree.application(getpid()), std::nullopt);
    auto own = QDBusConnection::connectToBus(service.address(), QStringLiteral("test-own"));
    ASSERT_TRUE(own.isConnected());
    const AccessibleElement element{own.baseService().toStdString() + "/org/a11y/atspi/accessible/1"};
    EXPECT_THAT(secondsFor([&] {
                    for (const auto name : allAttributes)
                        EXPECT_EQ(tree.attribute(element, name), std::nullopt) << name;
                }),
                Lt(shortly));
    QDBusConnection::disconnectFromBus(QStringLiteral("test-own"));
}

/// Answers calls on the bus that the first argument names, by the path: too little, another type, or nothing at all.
constexpr const char* liar = R"(
import dbus, dbus.lowlevel, dbus.mainloop.glib, os, sys
from gi.repository import GLib
dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
bus = dbus.bus.BusConnection(sys.argv[1])
me, null = bus.get_unique_name(), dbus.ObjectPath('/org/a11y/atspi/null')
me_above = dbus.Struct((me, dbus.ObjectPath('/loop')), signature='so')
lies = {
    '/empty': {},
    '/number': {'': ('u', [7])},
    '/text': {'GetChildren': ('s', ['x']), '': ('i', [-1])},
    '/variant': {'': ('v', [dbus.Struct((1, 'a', 2.0), variant_level=3)])},
    '/list': {'': ('au', [[]])},
    '/strangers': {'': ('a(ss)', [[('a', 'b')] * 5000])},
    '/nobody': {'': ('a(so)', [[(me, null), ('', null), ('nobody', dbus.ObjectPath('/x'))]])},
    '/loop': {'GetRole': ('u', [95]), 'Get': ('v', [me_above]), 'GetState': ('au', [[0xffffffff] * 2]),
              'GetRoleName': ('u', [1])},
}
def answer(connection, message):
    if message.get_type() != 1: return 1  # no call
    if message.get_path() not in lies: return 0
    replies = lies[message.get_path()]
    signature, values = replies.get(message.get_member(), replies.get('', ('', [])))
    reply = dbus.lowlevel.MethodReturnMessage(message)
    if signature: reply.append(*values, signature=signature)
    connection.send_message(reply)
    return 0
bus.add_message_filter(answer)
os.write(int(sys.argv[2]), (me + '\n').encode())
GLib.MainLoop().run()
)";

TEST_F(AccessibilityTest, AnswersOfAnotherShapeAreNone) {
    ChildProcess peer({"/usr/bin/python3", "-c", liar, service.address().toStdString(), "{ready}"});
    const auto name = peer.readyLine();
    ASSERT_TRUE(name);
    for (const std::string_view path :
         {"/empty", "/number", "/text", "/variant", "/list", "/strangers", "/nobody", "/loop", ""})
        for (const auto attribute : allAttributes)
            if (path != "/loop" || (attribute != AccessibleName::parent && attribute != AccessibleName::role)) {
                EXPECT_EQ(tree.attribute({*name + std::string(path)}, attribute), std::nullopt) << path << attribute;
            }
    const AccessibleElement loop{*name + "/loop"};
    EXPECT_EQ(elementAt(tree, loop, AccessibleName::parent), loop) << "the liar is heard, and tells lies";
    EXPECT_EQ(tree.attribute(loop, "AXUnheardOf"), std::nullopt);
    EXPECT_THAT(secondsFor([&] { EXPECT_EQ(tree.attribute({*name + "/never"}, "AXTitle"), std::nullopt); }),
                Lt(aQuestion));
}

/// An application whose window says at a wrong moment that it is active, and takes it back, as some toolkits do.
constexpr const char* hasty = R"(
import dbus, dbus.lowlevel, dbus.mainloop.glib, sys
from gi.repository import GLib
dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
bus = dbus.bus.BusConnection(sys.argv[1])
def answer(connection, message):
    if message.get_type() != 1: return 1  # no call
    reply = dbus.lowlevel.MethodReturnMessage(message)
    if message.get_member() == 'GetRole': reply.append(23, signature='u')
    else: reply.append(dbus.String('hasty', variant_level=1), signature='v')
    connection.send_message(reply)
    return 0
bus.add_message_filter(answer)
def say(member, *values, signature='siiv(so)'):
    signal = dbus.lowlevel.SignalMessage('/window', 'org.a11y.atspi.Event.Window', member)
    signal.append(*values, signature=signature)
    bus.send_message(signal)
def tell(member):
    for garbage in ('garbage',), (1, 2): say(member, *garbage, signature='s' if len(garbage) == 1 else 'ii')
    say(member, '', 0, 0, dbus.Int32(0), ('', '/'))
tell('Activate')
GLib.timeout_add(500, tell, 'Deactivate')
GLib.MainLoop().run()
)";

TEST_F(AccessibilityTest, TheWindowThatSaidLastThatItIsActiveIsUntilItTakesThatBack) {
    const AccessibilityToplevels windows(runLoop);
    const auto editor = startEditor("text");
    const auto isActive = [&](const char* name) {
        return waitUntil([&] { return windows.active() && windows.active()->appId == name; });
    };
    ASSERT_TRUE(isActive("mousepad"));
    const ChildProcess peer({"/usr/bin/python3", "-c", hasty, service.address().toStdString()});
    EXPECT_TRUE(isActive("hasty"));
    EXPECT_TRUE(isActive("mousepad"));
}

TEST(AbsentAccessibilityTest, NobodyWaitsForASessionBusThatHangsAndItIsLookedForAgain) {
    QtRunLoop runLoop;
    DesktopSession session({.display = false, .buses = false});
    const auto path = session.runtimeDirectory() / "hanging";
    auto hanging = std::make_unique<BoundSocket>(path, SOCK_STREAM, true);
    session.environment().set("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + path.string());
    std::optional<AccessibilityToplevels> windows;
    EXPECT_THAT(secondsFor([&] { windows.emplace(runLoop); }), Lt(aQuestion));
    EXPECT_EQ(windows->channel().reason, "no session bus");
    hanging.reset();
    std::filesystem::remove(path);
    const PrivateBus bus(path);
    EXPECT_TRUE(waitUntil([&] { return windows->channel().reason.starts_with("no accessibility bus"); }));
}

TEST(AbsentAccessibilityTest, WithoutABusNothingIsKnownAndTheReasonIsNamed) {
    QtRunLoop runLoop;
    for (const bool hasBuses : {false, true}) {
        const DesktopSession session({.display = false, .buses = hasBuses});
        AtspiAccessibility tree;
        EXPECT_FALSE(tree.isProcessTrusted());
        EXPECT_FALSE(tree.requestTrust());
        EXPECT_EQ(tree.application(1), std::nullopt);
        EXPECT_EQ(tree.attribute({":1.1/org/a11y/atspi/accessible/root"}, AccessibleName::title), std::nullopt);
        EXPECT_THAT(tree.channel().reason, MatchesRegex(hasBuses ? ".*no accessibility bus.*" : "no session bus"));
        if (hasBuses) {
            EXPECT_THAT(tree.channel().remedy, Not(IsEmpty()));
        }
    }
    DesktopSession session({.display = false, .buses = false});
    const auto path = session.runtimeDirectory() / "hanging-bus";
    const BoundSocket hanging(path, SOCK_STREAM, true);
    session.environment().set("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + path.string());
    AtspiAccessibility tree;
    EXPECT_THAT(secondsFor([&] { EXPECT_EQ(tree.application(1), std::nullopt); }), Lt(aQuestion));
    EXPECT_THAT(secondsFor([&] { EXPECT_EQ(tree.application(1), std::nullopt); }), Lt(shortly));
}

}  // namespace
}  // namespace quorvane::platform
